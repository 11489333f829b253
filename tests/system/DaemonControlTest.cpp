#include "system/DaemonControl.hpp"

#include "foundation/Log.hpp"
#include "platform/fake/FakeDesktop.hpp"
#include "platform/fake/FakeDistributedNotificationCenter.hpp"
#include "platform/fake/FakeProcessList.hpp"
#include "platform/fake/FakeRunLoop.hpp"
#include "system/ProcessPlatform.hpp"

#include <gtest/gtest.h>

namespace vexto {
namespace {

using Posted = FakeDistributedNotificationCenter::Posted;

class DaemonControlTest : public ::testing::Test {
protected:
    DaemonControlTest()
    {
        DaemonControl::resetRestartOnceForTesting();
        ProcessPlatform::install(&processes, &processes, &loop);
        Log::setSink([this](const std::string& line) { logged.push_back(line); });
        desktop.openFileHandler = [this](const std::string&) {
            if (!launches) {
                return false;
            }
            processes.add({.pid = nextPID++, .name = "vextodaemon", .quitsWhenAsked = true});
            return true;
        };
    }
    ~DaemonControlTest() override
    {
        ProcessPlatform::uninstall();
        Log::clearSink();
    }

    std::size_t countLogged(const std::string& line) const
    {
        return static_cast<std::size_t>(std::count(logged.begin(), logged.end(), line));
    }

    FakeDistributedNotificationCenter center;
    FakeRunLoop loop;
    FakeDesktop desktop;
    FakeProcessList processes;
    int refreshes = 0;
    DaemonControl daemon{center, loop, desktop,
                         DaemonControl::Hooks{[] { return std::string("/pane/vextodaemon.app"); },
                                              [this] { ++refreshes; },
                                              [this](const std::string& why) {
                                                  reports.push_back(why);
                                              }}};
    std::vector<std::string> reports;
    std::vector<std::string> logged;
    bool launches = true;
    int nextPID = 700;
};

TEST_F(DaemonControlTest, ASamplePanelIsAskedForOnceAfterALookChange)
{
    daemon.updateDaemon();
    daemon.setUpdateDaemonWithDummyDisplay(true);
    daemon.updateDaemon();
    daemon.updateDaemon();
    const std::string name = "app.vexto.preferences: Update Daemon";
    EXPECT_EQ(center.posted(),
              (std::vector<Posted>{{name, std::nullopt}, {name, "Dummy"}, {name, std::nullopt}}));
    EXPECT_FALSE(daemon.updateDaemonWithDummyDisplay());
}

TEST_F(DaemonControlTest, LaunchingTriesTenTimesASecondApart)
{
    launches = false;
    EXPECT_FALSE(daemon.launchDaemon());
    EXPECT_EQ(desktop.openedFiles.size(), 10u);
    EXPECT_EQ(desktop.openedFiles.front(), "/pane/vextodaemon.app");
    EXPECT_DOUBLE_EQ(loop.totalSlept(), 10.0);

    launches = true;
    EXPECT_TRUE(daemon.launchDaemon());
    EXPECT_EQ(desktop.openedFiles.size(), 11u);
    EXPECT_DOUBLE_EQ(loop.totalSlept(), 10.0);
}

TEST_F(DaemonControlTest, TheFirstLookReplacesEveryRunningDaemonOnce)
{
    processes.add({.pid = 20, .name = "vextodaemon", .quitsWhenAsked = true});
    processes.add({.pid = 30, .name = "vextodaemon"}); // slow to quit
    EXPECT_TRUE(daemon.isEnabled());
    EXPECT_EQ(processes.quitRequests, (std::vector<int>{20, 30}));
    EXPECT_TRUE(desktop.openedFiles.empty());

    // Each second it looks again, and waits for as long as a daemon is left.
    loop.advance(1.0);
    loop.advance(1.0);
    EXPECT_EQ(countLogged("[Vexto] waiting for vextodaemon to quit..."), 2u);
    processes.remove(30);
    loop.advance(1.0);
    EXPECT_EQ(desktop.openedFiles.size(), 1u);
    EXPECT_EQ(countLogged("[Vexto] restarting vextodaemon..."), 1u);

    // Later looks only ask.
    EXPECT_TRUE(daemon.isEnabled());
    EXPECT_EQ(processes.quitRequests.size(), 2u);
    loop.advance(5.0);
    EXPECT_EQ(desktop.openedFiles.size(), 1u);
}

TEST_F(DaemonControlTest, NothingRunningAtTheFirstLookIsLeftAlone)
{
    EXPECT_FALSE(daemon.isEnabled());
    processes.add({.pid = 40, .name = "vextodaemon"});
    EXPECT_TRUE(daemon.isEnabled());
    EXPECT_TRUE(processes.quitRequests.empty());
}

TEST_F(DaemonControlTest, AFailedRestartRefreshesAndSaysSo)
{
    processes.add({.pid = 20, .name = "vextodaemon", .quitsWhenAsked = true});
    launches = false;
    EXPECT_TRUE(daemon.isEnabled());
    loop.advance(1.0);
    EXPECT_EQ(refreshes, 1);
    EXPECT_EQ(countLogged("[Vexto] could not restart vextodaemon"), 1u);
    EXPECT_FALSE(daemon.isEnabled());
}

TEST_F(DaemonControlTest, ADaemonEndingRightAfterItsStartIsReportedWithItsCause)
{
    const std::string bundle = "/pane/vextodaemon.app";
    const std::string why = "vextodaemon stopped right after starting (SIGSEGV); see "
                            "~/Library/Logs/vextodaemon.log";
    ASSERT_TRUE(daemon.launchDaemon());
    loop.advance(9.0);
    desktop.endApplication({"/elsewhere/other.app", 1, "exit status 1"});
    EXPECT_TRUE(reports.empty()) << "another program's end is not the daemon's";
    desktop.endApplication({bundle, 700, "SIGSEGV"});
    EXPECT_EQ(reports, std::vector<std::string>{why});
    EXPECT_EQ(countLogged("[Vexto] " + why), 1u);
    EXPECT_EQ(refreshes, 1) << "the button shows it at once, not three seconds later";

    // Ends the daemon chose itself, the pane asked for, or long after the start, are no
    // surprise: nothing is said.
    ASSERT_TRUE(daemon.launchDaemon());
    desktop.endApplication({bundle, 701, "exit status 0", true});
    ASSERT_TRUE(daemon.launchDaemon());
    daemon.quitDaemon();
    desktop.endApplication({bundle, 701, "SIGTERM"});
    ASSERT_TRUE(daemon.launchDaemon());
    loop.advance(DaemonControl::startingPeriod + 1);
    desktop.endApplication({bundle, 702, "SIGKILL"});
    EXPECT_EQ(reports.size(), 1u);
}

} // namespace
} // namespace vexto
