#pragma once

#include "foundation/ArchivedObject.hpp"
#include "foundation/PlistValue.hpp"
#include "ports/Alerts.hpp"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace vexto {

class RunLoop;

// The daemon's settings: one dictionary, loaded lazily from "Settings.plist" (or copied from the
// defaults file and written back), read and changed by key, and saved at once or 0.5 s later.
class SettingsStore {
public:
    // What a save leads to outside the store.
    struct Hooks {
        // After every successful write: the daemon is told to reread the file.
        std::function<void()> didSave;
        // The pane's localisation of its texts.
        std::function<std::string(std::string_view)> localized;
        // Runs the modal alert that reports a failed write.
        std::function<void(const AlertRequest&)> runAlert;
    };

    static constexpr double saveDelay = 0.5;
    static constexpr const char* delayedSaveSelector = "saveSettingsAfterDelay";

    SettingsStore(RunLoop& runLoop, std::string defaultSettingsPath, Hooks hooks);
    ~SettingsStore();
    SettingsStore(const SettingsStore&) = delete;
    SettingsStore& operator=(const SettingsStore&) = delete;

    // "~/Library/Application Support/Vexto", created with its parents; none when it cannot be.
    std::optional<std::string> applicationSupportPath() const;
    std::optional<std::string> userDefinedLayoutsPath() const;
    std::optional<std::string> settingsPath() const;
    // Read once from the bundle's defaults file; none when missing or not a dictionary.
    const PlistDictionary* defaultSettings();

    // The settings, loaded on first use. With `revert`, replaced by the defaults (and saved).
    PlistDictionary& revertedSettings(bool revert);
    PlistDictionary& settings() { return revertedSettings(false); }

    const PlistValue* valueForSetting(std::string_view key);
    std::optional<ArchivedObject> unarchivedValueForSetting(std::string_view key);
    // The stored value when it answers, else the default.
    std::int64_t integerForSetting(std::string_view key, std::int64_t defaultValue);
    bool boolForSetting(std::string_view key, bool defaultValue = false);

    // A none key does nothing; a none value removes the key. Saves at once when asked.
    void setValue(const std::optional<PlistValue>& value, std::optional<std::string_view> key,
                  bool saveSettings = true);
    void setBool(bool value, std::string_view key);

    // Writes the file; false (after the fatal-error alert) when it cannot be written, in which
    // case the changes stay in memory.
    bool saveSettings();
    // Saves 0.5 s later; without `reset` a pending delayed save stands and is not postponed.
    void saveSettingsSoonAfterTimerReset(bool reset);
    void saveSettingsAfterDelay() { saveSettings(); }
    // Clears the pending flag. The withdrawal names this store as the request's argument while
    // the request was made with none, so a queued save still fires: at most one extra harmless
    // save, kept on purpose because the daemon relies on nothing else.
    void cancelSaveSettingsSoon();
    bool isSavingScheduled() const { return savingScheduled_; }

private:
    void reportSaveFailure();

    RunLoop& runLoop_;
    std::string defaultSettingsPath_;
    Hooks hooks_;
    std::optional<PlistDictionary> settings_;
    bool defaultsRead_ = false;
    std::optional<PlistDictionary> defaults_;
    bool savingScheduled_ = false;
};

} // namespace vexto
