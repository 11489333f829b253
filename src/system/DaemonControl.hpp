#pragma once

#include "foundation/ProductInfo.hpp"

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace vexto {

struct ApplicationEnd;
class DistributedNotificationCenter;
class RunLoop;
class Workspace;

// Finds, launches, restarts and stops the daemon, and tells it to reread the settings.
class DaemonControl {
public:
    static constexpr std::string_view daemonProcessName = product::daemonProcessName;
    static constexpr int launchAttempts = 10;
    static constexpr double launchRetryDelay = 1.0;
    static constexpr double relaunchPollDelay = 1.0;
    // A daemon this pane started that fails sooner than this, unasked, did not really start.
    static constexpr double startingPeriod = 10.0;

    struct Hooks {
        // The daemon bundle among the pane's resources, looked up afresh each time.
        std::function<std::string()> daemonPath;
        // Refreshes what the pane shows of the daemon's state.
        std::function<void()> updateEnabledStatus;
        // Tells the person, in an alert, why the daemon stopped right after starting.
        std::function<void(const std::string& why)> reportStoppedAtOnce;
    };

    DaemonControl(DistributedNotificationCenter& center, RunLoop& runLoop, Workspace& workspace,
                  Hooks hooks);
    ~DaemonControl();
    DaemonControl(const DaemonControl&) = delete;
    DaemonControl& operator=(const DaemonControl&) = delete;

    // Opens the daemon bundle, trying up to ten times a second apart (this blocks). A daemon that
    // then fails within the starting period, unasked, is reported with its cause, and what the
    // pane shows is refreshed at once.
    bool launchDaemon();
    // Waits, a second at a time and for as long as it takes, until no daemon runs, then launches
    // one.
    void relaunchDaemon();
    // Whether a daemon runs. The first answer in a process also replaces a running daemon (one
    // left from an older installation, say) with this bundle's: every instance is told to quit
    // and a new one is started once they are gone. Until then the daemon counts as running,
    // however quickly the old one went. A daemon found running is watched from then on: when it
    // ends, for whatever reason, what the pane shows is refreshed at once.
    bool isEnabled();
    // Forgets the daemon it watches, until the next look finds it again.
    void stopWatching();
    // While only looking, the daemon is never restarted: the pane is drawn, not used.
    void setLooksOnly(bool looksOnly) { looksOnly_ = looksOnly; }
    // Asks the daemon to quit; it does so by itself.
    void quitDaemon();

    // Set by changes of the panel's look; the next update carries "Dummy" and clears it.
    bool updateDaemonWithDummyDisplay() const { return dummyDisplay_; }
    void setUpdateDaemonWithDummyDisplay(bool dummy) { dummyDisplay_ = dummy; }
    // Posts ": Update Daemon" (object "Dummy" when a sample panel was asked for).
    void updateDaemon();

    // The restart at the first look happens once per process; tests start each process anew.
    static void resetRestartOnceForTesting();

private:
    void scheduleRelaunch();
    void watch(int pid);
    void applicationEnded(const ApplicationEnd& end);

    DistributedNotificationCenter& center_;
    RunLoop& runLoop_;
    Workspace& workspace_;
    Hooks hooks_;
    bool dummyDisplay_ = false;
    bool relaunching_ = false;
    bool looksOnly_ = false;
    int watchedPID_ = -1;
    std::string launchedPath_;
    double launchedAt_ = 0;
    bool quitAsked_ = false;
    std::shared_ptr<void> exitWatch_;
};

} // namespace vexto
