#pragma once

#include "foundation/PlistValue.hpp"

#include <functional>
#include <optional>
#include <string>

namespace vexto {

class DistributedNotificationCenter;
class FontCatalog;
class PanelPresenter;

// The daemon's side of the notification protocol: it reads the settings at its start and
// again when the pane says they changed, and hands them to whoever cycles the windows; when
// asked for a sample, it shows its panel in the new look where it has a presenter (else it logs
// that one is due). It keeps the update settings in its defaults domain and checks for updates
// against a local feed file instead of the network.
class DaemonService {
public:
    // Without a presenter samples are only logged; fonts are looked up in the catalog.
    DaemonService(DistributedNotificationCenter& center, std::string bundlePath,
                  PanelPresenter* presenter = nullptr, const FontCatalog* fonts = nullptr);
    ~DaemonService();
    DaemonService(const DaemonService&) = delete;
    DaemonService& operator=(const DaemonService&) = delete;

    // Told the user's settings (empty when they cannot be read) and the shipped defaults each
    // time they are read.
    using SettingsHandler =
        std::function<void(const PlistDictionary& settings, const PlistDictionary& defaults)>;
    void setSettingsHandler(SettingsHandler handler) { settingsHandler_ = std::move(handler); }

    // Reads the settings, listens to the pane and tells it that the daemon runs.
    void start();
    bool isRunning() const { return running_; }
    void quit(const std::string& reason);
    // Back on the bus after losing it: what was said meanwhile is lost, so the settings are
    // read again and the pane is told that this daemon runs.
    void catchUp();

    // The feed a check reads: a property list whose "Latest Version" names the newest version.
    static std::string feedPath();
    // The defaults domain shared with the pane, a property list in ~/Library/Preferences.
    static std::string defaultsPath();
    // Negative, zero or positive as `first` is older than, the same as or newer than `second`,
    // comparing dot-separated numbers.
    static int compareVersions(const std::string& first, const std::string& second);

    // The pane's shipped defaults, which lie beside the daemon's bundle; the sample panel is
    // drawn from the settings over them.
    static PlistDictionary shippedDefaults(const std::string& bundlePath);

private:
    void updateDaemon(const std::optional<std::string>& object);
    // The user's settings, none where they cannot be read (the reason is logged).
    std::optional<PlistDictionary> readSettings() const;
    const PlistDictionary& defaults();
    // False where there is nowhere to show it.
    bool showSample(const PlistDictionary& settings);
    void followInstruction(const std::optional<std::string>& object);
    void toggleAutomaticChecks();
    void checkNow();
    static std::optional<std::string> latestVersion(std::string& problem);
    PlistDictionary readDefaults() const;
    bool writeDefaults(const PlistDictionary& defaults) const;
    std::string currentShortVersion() const;

    DistributedNotificationCenter& center_;
    std::string bundlePath_;
    PanelPresenter* presenter_;
    const FontCatalog* fonts_;
    std::optional<PlistDictionary> shippedDefaults_;
    SettingsHandler settingsHandler_;
    bool running_ = false;
};

} // namespace vexto
