#include "platform/fake/FakeRunLoop.hpp"
#include "platform/linux/PollRunLoop.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace vexto {
namespace {

const RunLoopModes allModes{RunLoopMode::Default, RunLoopMode::ModalPanel,
                            RunLoopMode::EventTracking};

struct Recorder {
    std::vector<std::string> fired;
    std::vector<double> times;
    auto note(RunLoop& loop, std::string name)
    {
        return [this, &loop, name] {
            fired.push_back(name);
            times.push_back(loop.now());
        };
    }
};

TEST(FakeRunLoopTest, FiresInTimeOrderFirstScheduledFirstOnTies)
{
    FakeRunLoop loop;
    Recorder r;
    int target = 0;
    loop.performAfterDelay(&target, "late", {}, 0.5, allModes, r.note(loop, "late"));
    loop.performAfterDelay(&target, "tieA", {}, 0.2, allModes, r.note(loop, "tieA"));
    loop.performAfterDelay(&target, "tieB", {}, 0.2, allModes, r.note(loop, "tieB"));
    loop.performAfterDelay(&target, "early", {}, 0.1, allModes, r.note(loop, "early"));
    loop.advance(0.3);
    EXPECT_EQ(r.fired, (std::vector<std::string>{"early", "tieA", "tieB"}));
    EXPECT_EQ(r.times, (std::vector<double>{0.1, 0.2, 0.2}));
    EXPECT_DOUBLE_EQ(loop.now(), 0.3);
    loop.advance(1.0);
    EXPECT_EQ(r.fired.back(), "late");
    EXPECT_EQ(r.times.back(), 0.5);
}

TEST(FakeRunLoopTest, PerformsScheduledWhileFiringFireInTheSameAdvanceWhenDue)
{
    FakeRunLoop loop;
    Recorder r;
    int target = 0;
    loop.performAfterDelay(&target, "first", {}, 0.1, allModes, [&] {
        r.fired.push_back("first");
        loop.performAfterDelay(&target, "chained", {}, 0.1, allModes, r.note(loop, "chained"));
        loop.performAfterDelay(&target, "tooLate", {}, 5.0, allModes, r.note(loop, "tooLate"));
    });
    loop.advance(0.25);
    EXPECT_EQ(r.fired, (std::vector<std::string>{"first", "chained"}));
    EXPECT_DOUBLE_EQ(r.times.front(), 0.2);
    EXPECT_EQ(loop.pendingCount(), 1u);
}

TEST(FakeRunLoopTest, CancellingMatchesTargetSelectorAndArgument)
{
    FakeRunLoop loop;
    Recorder r;
    int pane = 0;
    int other = 0;
    // Scheduled with no argument; withdrawn naming the pane as argument: the request survives.
    loop.performAfterDelay(&pane, "saveSettingsAfterDelay", {}, 0.5, allModes,
                           r.note(loop, "save"));
    loop.cancelPreviousPerformRequests(&pane, "saveSettingsAfterDelay", PerformArgument(&pane));
    // Values compare by value; other targets and selectors are left alone.
    loop.performAfterDelay(&pane, "refresh", PlistValue("x"), 0.5, allModes, r.note(loop, "x"));
    loop.performAfterDelay(&pane, "refresh", PlistValue("y"), 0.5, allModes, r.note(loop, "y"));
    loop.performAfterDelay(&other, "refresh", PlistValue("x"), 0.5, allModes,
                           r.note(loop, "other"));
    loop.cancelPreviousPerformRequests(&pane, "refresh", PlistValue(std::string("x")));
    loop.advance(1.0);
    EXPECT_EQ(r.fired, (std::vector<std::string>{"save", "y", "other"}));

    loop.performAfterDelay(&pane, "a", {}, 0.5, allModes, r.note(loop, "a"));
    loop.performAfterDelay(&pane, "b", &other, 0.5, allModes, r.note(loop, "b"));
    loop.cancelPreviousPerformRequests(&pane, "a", {});
    loop.cancelPreviousPerformRequests(&pane, "b", PerformArgument(&other));
    loop.performAfterDelay(&pane, "c", {}, 0.5, allModes, r.note(loop, "c"));
    loop.cancelPreviousPerformRequests(&pane);
    loop.advance(1.0);
    EXPECT_EQ(r.fired.size(), 3u);
}

TEST(FakeRunLoopTest, PerformsWaitForALoopRunningInOneOfTheirModes)
{
    FakeRunLoop loop;
    Recorder r;
    int target = 0;
    loop.performAfterDelay(&target, "defaultOnly", {}, 0.1, {RunLoopMode::Default},
                           r.note(loop, "defaultOnly"));
    loop.performAfterDelay(&target, "any", {}, 0.2, allModes, r.note(loop, "any"));
    loop.setMode(RunLoopMode::EventTracking); // a slider is being dragged
    loop.advance(1.0);
    EXPECT_EQ(r.fired, (std::vector<std::string>{"any"}));
    loop.setMode(RunLoopMode::Default);
    loop.advance(0.0);
    EXPECT_EQ(r.fired.back(), "defaultOnly");
    EXPECT_DOUBLE_EQ(r.times.back(), 1.0);
}

TEST(FakeRunLoopTest, SleepingBlocksWithoutFiring)
{
    FakeRunLoop loop;
    Recorder r;
    int target = 0;
    loop.performAfterDelay(&target, "x", {}, 0.1, allModes, r.note(loop, "x"));
    loop.sleep(1.0);
    EXPECT_TRUE(r.fired.empty());
    EXPECT_DOUBLE_EQ(loop.totalSlept(), 1.0);
    loop.advance(0);
    EXPECT_EQ(r.fired.size(), 1u);
}

TEST(PollRunLoopTest, RunsForTheGivenTimeFiringWhatFallsDue)
{
    PollRunLoop loop;
    Recorder r;
    int target = 0;
    const double start = loop.now();
    loop.performAfterDelay(&target, "soon", {}, 0.01, allModes, r.note(loop, "soon"));
    loop.performAfterDelay(&target, "never", {}, 10.0, allModes, r.note(loop, "never"));
    loop.runFor(0.05);
    EXPECT_EQ(r.fired, (std::vector<std::string>{"soon"}));
    EXPECT_GE(r.times.front() - start, 0.01);
    EXPECT_GE(loop.now() - start, 0.05);
    EXPECT_LT(loop.now() - start, 5.0);
}

} // namespace
} // namespace vexto
