#pragma once

#include <ctime>
#include <optional>
#include <string>
#include <string_view>

namespace vexto {

// What happens to settings files that a save or a damaged disk left behind: temporary files of
// saves cut short are removed, and a settings file the pane cannot use is kept aside, under a
// name that says why and when, before the defaults replace it.
class SettingsFileRecovery {
public:
    static constexpr std::size_t keptDamagedFiles = 5;

    // Removes "<settings file>.XXXXXX" files beside the settings file: what an interrupted save
    // leaves. Nothing else in the folder is touched.
    static void removeLeftoversOfInterruptedSaves(const std::string& settingsPath);

    // Renames the file to "<name>.damaged-YYYYMMDD-HHMMSS" (local time `now`), keeps only the
    // newest few of those, and logs the reason. The new name, or none when it could not be moved.
    static std::optional<std::string> keepAside(const std::string& settingsPath,
                                                std::string_view reason, std::time_t now);
};

} // namespace vexto
