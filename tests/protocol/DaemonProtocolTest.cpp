// The pane and the real reference daemon, talking over a private D-Bus session as they do on a
// desktop: real processes, real signals, real files in a home folder of the test's own.
#include "../foundation/TestSupport.hpp"
#include "../support/DBusSession.hpp"
#include "foundation/DictionaryExtensions.hpp"
#include "foundation/HomeDirectory.hpp"
#include "pane/KRVXPreferencePane.hpp"
#include "platform/fake/FakeAccessibilityStatus.hpp"
#include "platform/fake/FakeAlerts.hpp"
#include "platform/linux/DBusDistributedNotificationCenter.hpp"
#include "platform/linux/LinuxDesktop.hpp"
#include "platform/linux/PollRunLoop.hpp"
#include "platform/linux/PreferencesFolder.hpp"
#include "platform/linux/ProcProcessList.hpp"
#include "system/DaemonControl.hpp"
#include "system/ProcessPlatform.hpp"
#include "system/QLVXProcess.hpp"
#include "toolkit/Application.hpp"
#include "toolkit/Button.hpp"
#include "toolkit/ColorWell.hpp"
#include "toolkit/TextField.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace vexto {
namespace {

class DaemonProtocolTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        // As the host has it: the daemon found through the process register, its end watched.
        processes.setRegisteredNames({"vextodaemon"});
        ProcessPlatform::install(&processes, &processes, &loop);
        if (!daemonPIDs().empty()) {
            GTEST_SKIP() << "a vextodaemon of this machine runs; the test leaves it alone";
        }
        ASSERT_TRUE(session.isRunning());
        ::setenv("HOME", home.path().c_str(), 1);
        // The daemons started here show no sample panels on the desktop the tests run in.
        ::unsetenv("DISPLAY");
        ::unsetenv("WAYLAND_DISPLAY");
        HomeDirectory::setOverride(home.path());
        Application::resetForTesting();
        Application::shared().setAlerts(&alerts);
        KRVXPreferencePane::resetSingletonForTesting();
        DaemonControl::resetRestartOnceForTesting();
        center.emplace(loop);
    }

    void TearDown() override
    {
        pane.reset();
        // Every daemon now running was started by this test.
        for (const QLVXProcess& daemon : QLVXProcess::everyProcessNamed("vextodaemon")) {
            ::kill(daemon.PID(), SIGKILL);
        }
        runUntil([this] { return daemonPIDs().empty(); }, 5.0);
        center.reset();
        ProcessPlatform::uninstall();
        HomeDirectory::clearOverride();
        Application::resetForTesting();
    }

    void open()
    {
        if (!pane) {
            PaneEnvironment environment{loop, *center, desktop, desktop, desktop};
            environment.processes = &processes;
            environment.processSignals = &processes;
            environment.foreignPreferences = &preferences;
            environment.accessibility = &access;
            pane = std::make_unique<KRVXPreferencePane>(bundle(), environment);
            ASSERT_NE(pane->loadMainView(), nullptr);
        }
        pane->willSelect();
        pane->didSelect();
    }

    static std::string bundle() { return VEXTO_PANE_BUNDLE; }
    std::string daemonBundle() const { return bundle() + "/Contents/Resources/vextodaemon.app"; }
    const PaneOutlets& o() const { return pane->outlets(); }

    std::vector<int> daemonPIDs()
    {
        std::vector<int> pids;
        for (const QLVXProcess& daemon : QLVXProcess::everyProcessNamed("vextodaemon")) {
            pids.push_back(daemon.PID());
        }
        return pids;
    }

    // Runs the pane's loop until the condition holds; false after `seconds`.
    template <typename Condition> bool runUntil(Condition condition, double seconds)
    {
        const double end = loop.now() + seconds;
        while (!condition()) {
            if (loop.now() > end) {
                return false;
            }
            loop.runFor(0.02);
        }
        return true;
    }

    std::string daemonLog() const
    {
        std::ifstream file(home.file("Library/Logs/vextodaemon.log"));
        std::stringstream text;
        text << file.rdbuf();
        return text.str();
    }
    std::size_t logged(const std::string& line) const
    {
        const std::string log = daemonLog();
        std::size_t count = 0;
        for (auto at = log.find(line); at != std::string::npos; at = log.find(line, at + 1)) {
            ++count;
        }
        return count;
    }

    test::DBusSession session;
    test::TemporaryFolder home;
    PollRunLoop loop;
    std::optional<DBusDistributedNotificationCenter> center;
    LinuxDesktop desktop{&loop};
    ProcProcessList processes{nullptr, &loop};
    PreferencesFolder preferences;
    FakeAccessibilityStatus access;
    FakeAlerts alerts;
    std::unique_ptr<KRVXPreferencePane> pane;
};

TEST_F(DaemonProtocolTest, EnableStartsTheDaemonAndAClickMoreStopsIt)
{
    open();
    EXPECT_EQ(o().aboutTextField->stringValue(), "Vexto 3.1 (310/311)");
    EXPECT_TRUE(daemonPIDs().empty());
    o().enableButton->performClick();
    // The daemon says it runs as soon as it does.
    ASSERT_TRUE(runUntil([&] { return o().enableButton->title() == "Disable Vexto"; }, 3.0));
    EXPECT_EQ(daemonPIDs().size(), 1u);
    EXPECT_EQ(o().enableButton->state(), Button::onState);

    o().enableButton->performClick();
    ASSERT_TRUE(runUntil([&] { return daemonPIDs().empty(); }, 3.0));
    // The title follows the daemon's exit, not the refresh three seconds after the click.
    EXPECT_TRUE(runUntil([&] { return o().enableButton->title() == "Enable Vexto"; }, 0.5));
    EXPECT_EQ(logged("vextodaemon quits: the pane asked"), 1u);

    // A daemon that dies unasked is seen at once too, and so soon after its start, said why.
    EXPECT_TRUE(alerts.shown.empty());
    o().enableButton->performClick();
    ASSERT_TRUE(runUntil([&] { return o().enableButton->title() == "Disable Vexto"; }, 3.0));
    ASSERT_EQ(daemonPIDs().size(), 1u);
    ::kill(daemonPIDs()[0], SIGKILL);
    EXPECT_TRUE(runUntil([&] { return o().enableButton->title() == "Enable Vexto"; }, 0.5));
    EXPECT_FALSE(o().checkNowButton->isEnabled());
    ASSERT_EQ(alerts.shown.size(), 1u);
    EXPECT_EQ(alerts.shown[0].message, "vextodaemon stopped right after starting (SIGKILL); see "
                                       "~/Library/Logs/vextodaemon.log");
}

TEST_F(DaemonProtocolTest, DaemonsFromBeforeAreReplacedOnceAtTheFirstLook)
{
    ASSERT_TRUE(desktop.openFile(daemonBundle(), std::nullopt, false));
    ASSERT_TRUE(desktop.openFile(daemonBundle(), std::nullopt, false));
    // Both running, and far enough to say so (a daemon still starting dies of SIGTERM silently).
    ASSERT_TRUE(runUntil([&] { return logged(" started") == 2; }, 5.0));
    ASSERT_EQ(daemonPIDs().size(), 2u);
    const std::vector<int> old = daemonPIDs();
    open();
    EXPECT_EQ(o().enableButton->state(), Button::onState);
    ASSERT_TRUE(runUntil(
        [&] {
            const auto now = daemonPIDs();
            return now.size() == 1 && std::find(old.begin(), old.end(), now[0]) == old.end();
        },
        5.0));
    EXPECT_EQ(logged("vextodaemon quits: SIGTERM"), 2u);

    // Another pane in the same process leaves the new daemon be.
    const std::vector<int> replaced = daemonPIDs();
    pane->didUnselect();
    pane.reset();
    open();
    loop.runFor(1.5);
    EXPECT_EQ(daemonPIDs(), replaced);
}

TEST_F(DaemonProtocolTest, TheFirstStartHappensOnceAndOnlyWithAccess)
{
    open();
    loop.runFor(0.3);
    EXPECT_TRUE(daemonPIDs().empty()) << "no access, no start";
    pane->didUnselect();

    access.enabled = true;
    open();
    ASSERT_TRUE(runUntil([&] { return daemonPIDs().size() == 1; }, 3.0));
    const std::string settings = home.file("Library/Application Support/Vexto/Settings.plist");
    const auto saved = deeplyMutableDictionaryWithContentsOfFile(settings);
    ASSERT_TRUE(saved);
    EXPECT_EQ(saved->at("Auto-Enabled Once"), PlistValue(true));

    // Stopped by the user once it says it runs, it stays stopped the next time the pane opens.
    ASSERT_TRUE(runUntil([&] { return o().enableButton->title() == "Disable Vexto"; }, 3.0));
    o().enableButton->performClick();
    ASSERT_TRUE(runUntil([&] { return daemonPIDs().empty(); }, 3.0));
    pane->didUnselect();
    open();
    loop.runFor(0.5);
    EXPECT_TRUE(daemonPIDs().empty());
}

TEST_F(DaemonProtocolTest, ChangesOfLookAskForASamplePanelButTheQuickLookBorderDoesNot)
{
    open();
    o().enableButton->performClick();
    ASSERT_TRUE(runUntil([&] { return o().enableButton->title() == "Disable Vexto"; }, 3.0));

    o().selectionColorWell->setColor(Color::calibratedRGB(0.1, 0.5, 0.9, 1.0));
    o().selectionColorWell->sendAction();
    ASSERT_TRUE(runUntil([&] { return logged("a sample panel is due") == 1; }, 3.0));
    const std::size_t reads = logged("settings from ");

    o().quickLookBorderColorWell->setColor(Color::calibratedRGB(0.9, 0.1, 0.1, 1.0));
    o().quickLookBorderColorWell->sendAction();
    ASSERT_TRUE(runUntil([&] { return logged("settings from ") == reads + 1; }, 3.0));
    EXPECT_EQ(logged("a sample panel is due"), 1u);
}

TEST_F(DaemonProtocolTest, UpdateRequestsReachTheDaemonAndItsAnswerIsShown)
{
    open();
    o().enableButton->performClick();
    ASSERT_TRUE(runUntil([&] { return o().checkNowButton->isEnabled(); }, 3.0));
    EXPECT_EQ(o().autoUpdateCheckingSwitch->state(), Button::onState);

    o().checkNowButton->performClick();
    ASSERT_TRUE(
        runUntil([&] { return o().statusTextField->stringValue() == "Vexto is up to date"; }, 3.0));
    EXPECT_EQ(o().statusDateTextField->stringValue().rfind("Last check: ", 0), 0u);

    test::writeText(home.file("Library/Application Support/Vexto/UpdateFeed.plist"),
                    "<?xml version=\"1.0\"?><plist version=\"1.0\"><dict><key>Latest "
                    "Version</key><string>3.10</string></dict></plist>");
    o().checkNowButton->performClick();
    ASSERT_TRUE(runUntil(
        [&] { return o().statusTextField->stringValue() == "Vexto 3.10 is now available"; }, 3.0));

    // A feed nobody can read finds nothing: the last check stands, and the log says why.
    const std::string feed = home.file("Library/Application Support/Vexto/UpdateFeed.plist");
    for (const char* damaged : {"<plist><dict>", "<plist><dict/></plist>"}) {
        test::writeText(feed, damaged);
        o().checkNowButton->performClick();
        ASSERT_TRUE(runUntil([&] { return logged("could not use " + feed) > 0; }, 3.0));
    }
    ASSERT_TRUE(runUntil([&] { return logged("could not use " + feed) == 2; }, 3.0));
    EXPECT_EQ(logged("(no \"Latest Version\" text): no check was made"), 1u);
    loop.runFor(0.2);
    EXPECT_EQ(o().statusTextField->stringValue(), "Vexto 3.10 is now available");

    o().autoUpdateCheckingSwitch->performClick();
    ASSERT_TRUE(
        runUntil([&] { return o().autoUpdateCheckingSwitch->state() == Button::offState; }, 3.0));
    loop.runFor(0.2);
    EXPECT_EQ(o().autoUpdateCheckingSwitch->state(), Button::offState);
}

// The daemon's own file: a damaged one is kept aside before the daemon writes it anew, and what
// writes cut short left beside it goes when the daemon starts.
TEST_F(DaemonProtocolTest, TheDaemonKeepsADamagedStatusFileAsideAndRemovesLeftovers)
{
    const std::string preferences = home.file("Library/Preferences");
    std::filesystem::create_directories(preferences);
    test::writeText(preferences + "/app.vexto.preferences.plist", "<plist><dict><key>");
    test::writeText(preferences + "/app.vexto.preferences.plist.Ab12Cd", "half a write");
    test::writeText(preferences + "/app.vexto.preferences.plist.notes", "the user's");
    open();
    o().enableButton->performClick();
    ASSERT_TRUE(runUntil([&] { return o().checkNowButton->isEnabled(); }, 3.0));
    o().checkNowButton->performClick();
    ASSERT_TRUE(
        runUntil([&] { return o().statusTextField->stringValue() == "Vexto is up to date"; }, 3.0));
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(preferences)) {
        names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    ASSERT_EQ(names.size(), 3u) << "the new file, the damaged one kept, the user's own";
    EXPECT_EQ(names[0], "app.vexto.preferences.plist");
    EXPECT_EQ(names[1].rfind("app.vexto.preferences.plist.damaged-", 0), 0u);
    EXPECT_EQ(names[2], "app.vexto.preferences.plist.notes");
    EXPECT_EQ(logged("settings file could not be used ("), 1u);
}

// A daemon that cannot hear the pane must not live on as if it could: it finds a bus started
// again at the same place, and without one it quits.
TEST_F(DaemonProtocolTest, ADaemonThatLosesItsBusComesBackToItOrQuits)
{
    center.reset();
    session.stop();
    const std::string socket = home.file("bus");
    std::optional<test::DBusSession> bus(std::in_place, socket);
    ASSERT_TRUE(bus->isRunning());
    center.emplace(loop);
    open();
    o().enableButton->performClick();
    ASSERT_TRUE(runUntil([&] { return o().enableButton->title() == "Disable Vexto"; }, 3.0));

    bus.reset();
    bus.emplace(socket);
    ASSERT_TRUE(runUntil([&] { return logged("reached the session bus again") == 1; }, 5.0))
        << daemonLog();
    DBusDistributedNotificationCenter probe(loop);
    probe.post("app.vexto.preferences: Update Daemon", "Dummy");
    EXPECT_TRUE(runUntil([&] { return logged("a sample panel is due") == 1; }, 3.0))
        << "the daemon hears the new bus";

    bus.reset();
    EXPECT_TRUE(runUntil([&] { return daemonPIDs().empty(); }, 12.0));
    EXPECT_EQ(logged("vextodaemon quits: lost the session bus, and the pane with it"), 1u);
    EXPECT_TRUE(runUntil([&] { return o().enableButton->title() == "Enable Vexto"; }, 0.5));
    EXPECT_TRUE(alerts.shown.empty()) << "the daemon said why itself";
}

TEST_F(DaemonProtocolTest, WithoutASessionBusThePaneStillStartsTheDaemon)
{
    center.reset();
    session.stop();
    ::setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/vexto-bus", 1);
    center.emplace(loop);
    ASSERT_FALSE(center->isConnected());
    open();
    o().enableButton->performClick();
    ASSERT_TRUE(runUntil([&] { return daemonPIDs().size() == 1; }, 3.0));
    // No word from the daemon: the refresh three seconds after the click finds it.
    ASSERT_TRUE(runUntil([&] { return o().enableButton->title() == "Disable Vexto"; }, 4.0));
}

} // namespace
} // namespace vexto
