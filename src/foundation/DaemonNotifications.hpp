#pragma once

#include "foundation/ProductInfo.hpp"

#include <string>
#include <string_view>

// The distributed notifications exchanged with the daemon: the bundle identifier followed by
// one of these suffixes. Each text stands here once.
namespace vexto::daemonnotifications {

inline constexpr std::string_view quitDaemon = ": Quit Daemon";
inline constexpr std::string_view updateDaemon = ": Update Daemon";
inline constexpr std::string_view updatePane = ": Update Pane";
inline constexpr std::string_view updatePaneSoon = ": Update Pane Soon";
inline constexpr std::string_view prefPaneToDaemonSparkleInstruction =
    ": PrefPane->Daemon Sparkle Instruction";
inline constexpr std::string_view daemonToPrefPaneSparkleInstruction =
    ": Daemon->PrefPane Sparkle Instruction";

// The object of ": Update Daemon" that asks for a sample panel with the new look.
inline constexpr std::string_view dummyObject = "Dummy";

inline std::string named(std::string_view suffix)
{
    return std::string(product::bundleIdentifier) + std::string(suffix);
}

} // namespace vexto::daemonnotifications
