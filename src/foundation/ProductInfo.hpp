#pragma once

#include <string_view>

// The product's own names, addresses and file names.
namespace vexto::product {

// Prefixes every distributed notification exchanged with the daemon.
inline constexpr std::string_view bundleIdentifier = "app.vexto.preferences";
inline constexpr std::string_view supportEmailAddress = "support@vexto.app";
inline constexpr std::string_view homePageAddress = "https://vexto.app/";

inline constexpr std::string_view applicationSupportFolder = "~/Library/Application Support";
inline constexpr std::string_view productFolderName = "Vexto";
inline constexpr std::string_view layoutsFolderName = "Layouts";
inline constexpr std::string_view settingsFileName = "Settings.plist";
// The daemon's process name, by which the pane finds it.
inline constexpr std::string_view daemonProcessName = "vextodaemon";
// Where the daemon tells what it does, and why it stopped.
inline constexpr std::string_view daemonLogFolder = "~/Library/Logs";
inline constexpr std::string_view daemonLogFileName = "vextodaemon.log";
inline constexpr std::string_view defaultSettingsFileName = "KRVXDefaultSettings.plist";

} // namespace vexto::product
