#include "foundation/Log.hpp"
#include "platform/fake/FakeProcessList.hpp"
#include "platform/fake/FakeRunLoop.hpp"
#include "system/ProcessPlatform.hpp"
#include "system/QLVXProcess.hpp"
#include "system/QLVXProcessSignals.hpp"
#include "system/QLVXProcessesEnumerator.hpp"

#include <gtest/gtest.h>

namespace vexto {
namespace {

class ProcessModelTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        processes.add({.pid = 10, .name = "Finder", .launchDate = 600, .launcherPID = 1});
        processes.add({.pid = 20, .name = "vextodaemon", .launchDate = 1200});
        processes.add({.pid = 30, .name = "vextodaemon", .launchDate = 1800});
        ProcessPlatform::install(&processes, &processes, &loop);
        Log::setSink([this](const std::string& line) { logged.push_back(line); });
    }
    void TearDown() override
    {
        ProcessPlatform::uninstall();
        Log::clearSink();
    }

    FakeProcessList processes;
    FakeRunLoop loop;
    std::vector<std::string> logged;
};

TEST_F(ProcessModelTest, TheWalkHandsOutOneReusedInstanceUnlessItIsKept)
{
    QLVXProcessesEnumerator enumerator;
    QLVXProcess* first = enumerator.nextObject();
    const QLVXProcess kept = *first;
    QLVXProcess* second = enumerator.nextObject();
    EXPECT_EQ(first, second);
    EXPECT_EQ(first->PID(), 20);
    EXPECT_EQ(kept.PID(), 10);
    EXPECT_TRUE(second->isReusedInstance());
    EXPECT_FALSE(kept.isReusedInstance());
    EXPECT_NE(enumerator.nextObject(), nullptr);
    EXPECT_EQ(enumerator.nextObject(), nullptr);
}

TEST_F(ProcessModelTest, ProcessesAreFoundByTheirExactName)
{
    const auto daemons = QLVXProcess::everyProcessNamed("vextodaemon");
    ASSERT_EQ(daemons.size(), 2u);
    EXPECT_EQ(daemons[0].PID(), 20);
    EXPECT_EQ(daemons[1].PID(), 30);
    EXPECT_TRUE(QLVXProcess::everyProcessNamed("VextoDaemon").empty());
    EXPECT_TRUE(QLVXProcess::everyProcessNamed("vextodaemo").empty());

    QLVXProcess* first = QLVXProcess::firstProcessNamed("vextodaemon");
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(first->PID(), 20);
    EXPECT_TRUE(first->isReusedInstance());
    EXPECT_EQ(QLVXProcess::firstProcessNamed("nothing"), nullptr);
    EXPECT_EQ(QLVXProcess::everyProcess().size(), 3u);
}

TEST_F(ProcessModelTest, APaneOpenedBeforeTheLastIsGoneKeepsItsProcessList)
{
    FakeProcessList later;
    later.add({.pid = 77, .name = "vextodaemon"});
    ProcessPlatform::uninstall();
    const int first = ProcessPlatform::install(&processes, &processes, &loop);
    const int second = ProcessPlatform::install(&later, &later, &loop);
    ProcessPlatform::uninstall(first);
    ASSERT_NE(QLVXProcess::firstProcessNamed("vextodaemon"), nullptr);
    EXPECT_EQ(QLVXProcess::firstProcessNamed("vextodaemon")->PID(), 77);
    ProcessPlatform::uninstall(second);
    EXPECT_EQ(QLVXProcess::firstProcessNamed("vextodaemon"), nullptr) << "none left: no processes";
}

TEST_F(ProcessModelTest, SpecialNumbersAndEndedProcesses)
{
    QLVXProcess none(kNoProcess);
    ASSERT_NE(none.name(), nullptr);
    EXPECT_EQ(*none.name(), "no process");
    EXPECT_TRUE(none.isNoProcess());
    EXPECT_FALSE(QLVXProcess(kSystemProcess).isNoProcess());
    EXPECT_TRUE(QLVXProcess(kSystemProcess).isSystemProcess());

    QLVXProcess finder({0, 10});
    EXPECT_EQ(finder.launchTime(), 10.0);
    ASSERT_TRUE(finder.launcher().has_value());
    EXPECT_TRUE(finder.launcher()->isSystemProcess());
    processes.remove(10);
    EXPECT_FALSE(finder.isValid());
    EXPECT_EQ(finder.PID(), -1);
    EXPECT_FALSE(QLVXProcessIsStopped(-1));
    EXPECT_FALSE(QLVXProcessSetStopped(-1, true));
    EXPECT_FALSE(finder.quit());
}

TEST_F(ProcessModelTest, APIDTakenOverByALaterProcessIsNotTheSameProcess)
{
    QLVXProcess daemon({0, 20});
    ASSERT_TRUE(daemon.isValid());
    processes.reusePID(20, "bash", 99999);
    EXPECT_FALSE(daemon.isValid());
    EXPECT_TRUE(QLVXProcess({0, 20}).isValid());
}

TEST_F(ProcessModelTest, QuittingAStoppedProcessContinuesItFirst)
{
    processes.find(30)->stopped = true;
    processes.find(30)->quitsWhenAsked = true;
    QLVXProcess daemon({0, 30});
    EXPECT_TRUE(daemon.isStopped());
    EXPECT_TRUE(daemon.quit());
    EXPECT_EQ(processes.quitRequests, std::vector<int>{30});
    EXPECT_EQ(processes.find(30), nullptr);
}

TEST_F(ProcessModelTest, HidingAStoppedProcessWakesItAndStopsItAgain)
{
    processes.find(10)->stopped = true;
    QLVXProcess finder({0, 10});
    finder.setHidden(true);
    EXPECT_FALSE(processes.find(10)->visible);
    EXPECT_TRUE(processes.find(10)->stopped);
    EXPECT_EQ(loop.totalSlept(), 0.0);

    QLVXProcess gone({0, 77});
    gone.setHidden(true);
    ASSERT_EQ(logged.size(), 1u);
    EXPECT_EQ(logged[0], "[Vexto] could not hide/show process \"(null)\" (PID -1): error -600");
}

TEST_F(ProcessModelTest, StoppingIsAskedOnlyWhenTheStateDiffers)
{
    EXPECT_TRUE(QLVXProcessSetStopped(20, true));
    EXPECT_TRUE(QLVXProcessIsStopped(20));
    EXPECT_TRUE(QLVXProcessSetStopped(20, true));
    EXPECT_TRUE(QLVXProcessSetStopped(20, false));
    EXPECT_FALSE(QLVXProcessIsStopped(20));
}

} // namespace
} // namespace vexto
