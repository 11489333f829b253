#include "system/DaemonControl.hpp"

#include "foundation/DaemonNotifications.hpp"
#include "foundation/Log.hpp"
#include "ports/ApplicationEnd.hpp"
#include "ports/DistributedNotificationCenter.hpp"
#include "ports/ProcessSignals.hpp"
#include "ports/RunLoop.hpp"
#include "ports/Workspace.hpp"
#include "system/ProcessPlatform.hpp"
#include "system/QLVXProcess.hpp"

namespace vexto {

namespace {

constexpr const char* relaunchSelector = "relaunchDaemon";

bool& singletonRestartDaemonOnce()
{
    static bool considered = false;
    return considered;
}

} // namespace

DaemonControl::DaemonControl(DistributedNotificationCenter& center, RunLoop& runLoop,
                             Workspace& workspace, Hooks hooks)
    : center_(center), runLoop_(runLoop), workspace_(workspace), hooks_(std::move(hooks))
{
    workspace_.setApplicationEndedHandler(
        [this](const ApplicationEnd& end) { applicationEnded(end); });
}

DaemonControl::~DaemonControl()
{
    workspace_.setApplicationEndedHandler(nullptr);
    runLoop_.cancelPreviousPerformRequests(this);
}

void DaemonControl::resetRestartOnceForTesting()
{
    singletonRestartDaemonOnce() = false;
}

bool DaemonControl::launchDaemon()
{
    const std::string path = hooks_.daemonPath ? hooks_.daemonPath() : std::string();
    for (int attempt = 0; attempt < launchAttempts; ++attempt) {
        if (workspace_.openFile(path, std::nullopt, false)) {
            launchedPath_ = path;
            launchedAt_ = runLoop_.now();
            quitAsked_ = false;
            return true;
        }
        runLoop_.sleep(launchRetryDelay);
    }
    return false;
}

void DaemonControl::scheduleRelaunch()
{
    relaunching_ = true;
    runLoop_.cancelPreviousPerformRequests(this, relaunchSelector, PerformArgument{});
    runLoop_.performAfterDelay(this, relaunchSelector, {}, relaunchPollDelay,
                               RunLoopModes{RunLoopMode::Default}, [this] { relaunchDaemon(); });
}

void DaemonControl::relaunchDaemon()
{
    if (QLVXProcess::firstProcessNamed(daemonProcessName) != nullptr) {
        scheduleRelaunch();
        Log::line("waiting for vextodaemon to quit...");
        return;
    }
    relaunching_ = false;
    if (!launchDaemon()) {
        if (hooks_.updateEnabledStatus) {
            hooks_.updateEnabledStatus();
        }
        Log::line("could not restart vextodaemon");
        return;
    }
    Log::line("restarting vextodaemon...");
}

bool DaemonControl::isEnabled()
{
    if (singletonRestartDaemonOnce() || looksOnly_) {
        if (relaunching_) {
            return true;
        }
        QLVXProcess* daemon = QLVXProcess::firstProcessNamed(daemonProcessName);
        if (daemon == nullptr || !daemon->isValid()) {
            return false;
        }
        watch(daemon->PID());
        return true;
    }
    singletonRestartDaemonOnce() = true;
    std::vector<QLVXProcess> daemons = QLVXProcess::everyProcessNamed(daemonProcessName);
    for (QLVXProcess& daemon : daemons) {
        if (!daemon.isValid()) {
            continue;
        }
        for (QLVXProcess& each : daemons) {
            each.quit();
        }
        scheduleRelaunch();
        return true;
    }
    return false;
}

void DaemonControl::watch(int pid)
{
    if (pid == watchedPID_ && exitWatch_ != nullptr) {
        return;
    }
    watchedPID_ = pid;
    exitWatch_ = ProcessPlatform::signals().watchForExit(pid, [this] {
        exitWatch_.reset();
        watchedPID_ = -1;
        if (hooks_.updateEnabledStatus) {
            hooks_.updateEnabledStatus();
        }
    });
}

void DaemonControl::stopWatching()
{
    exitWatch_.reset();
    watchedPID_ = -1;
}

void DaemonControl::applicationEnded(const ApplicationEnd& end)
{
    if (end.path != launchedPath_ || end.succeeded || quitAsked_ ||
        runLoop_.now() - launchedAt_ > startingPeriod) {
        return;
    }
    launchedPath_.clear();
    const std::string why = std::string(daemonProcessName) + " stopped right after starting (" +
                            end.cause + "); see " + std::string(product::daemonLogFolder) + "/" +
                            std::string(product::daemonLogFileName);
    Log::line(why);
    if (hooks_.updateEnabledStatus) {
        hooks_.updateEnabledStatus();
    }
    if (hooks_.reportStoppedAtOnce) {
        hooks_.reportStoppedAtOnce(why);
    }
}

void DaemonControl::quitDaemon()
{
    quitAsked_ = true;
    namespace names = daemonnotifications;
    center_.post(names::named(names::quitDaemon), std::nullopt);
}

void DaemonControl::updateDaemon()
{
    namespace names = daemonnotifications;
    center_.post(names::named(names::updateDaemon),
                 dummyDisplay_ ? std::optional<std::string>(names::dummyObject) : std::nullopt);
    dummyDisplay_ = false;
}

} // namespace vexto
