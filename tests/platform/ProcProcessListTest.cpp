#include "platform/linux/ProcProcessList.hpp"

#include "platform/linux/PollRunLoop.hpp"
#include "system/ProcessPlatform.hpp"
#include "system/QLVXProcess.hpp"
#include "system/QLVXProcessSignals.hpp"
#include "system/QLVXProcessesEnumerator.hpp"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <grp.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vexto {
namespace {

// A child process of this test, ended and collected when the test ends.
class Child {
public:
    // A copy of this process that names itself and waits.
    static Child named(const char* name)
    {
        const pid_t pid = ::fork();
        if (pid == 0) {
            ::prctl(PR_SET_NAME, name);
            for (;;) {
                ::pause();
            }
        }
        return Child(pid);
    }
    // A program run from the given path, waiting long enough for the test.
    static Child running(const std::string& path)
    {
        const pid_t pid = ::fork();
        if (pid == 0) {
            ::execl(path.c_str(), path.c_str(), "600", nullptr);
            ::_exit(127);
        }
        return Child(pid);
    }
    // A program run as another user (this test must then run as root).
    static Child runningAs(uid_t user, const std::string& path)
    {
        const pid_t pid = ::fork();
        if (pid == 0) {
            if (::setgroups(0, nullptr) == 0 && ::setgid(user) == 0 && ::setuid(user) == 0) {
                ::execl(path.c_str(), path.c_str(), "600", nullptr);
            }
            ::_exit(127);
        }
        return Child(pid);
    }
    // A child that ended at once and was not collected.
    static Child zombie()
    {
        const pid_t pid = ::fork();
        if (pid == 0) {
            ::_exit(0);
        }
        siginfo_t info{};
        ::waitid(P_PID, static_cast<id_t>(pid), &info, WEXITED | WNOWAIT);
        return Child(pid);
    }

    Child(Child&& other) noexcept : pid_(std::exchange(other.pid_, -1)) {}
    ~Child()
    {
        if (pid_ > 0) {
            ::kill(pid_, SIGKILL);
            ::waitpid(pid_, nullptr, 0);
        }
    }
    pid_t pid() const { return pid_; }
    ProcessSerialNumber psn() const { return ProcProcessList::serialNumberForPID(pid_); }
    // Waits until the name is set (the child runs on its own after the fork).
    void waitForName(const std::string& name) const
    {
        for (int tries = 0; tries < 2000; ++tries) {
            QLVXProcess process(psn());
            if (process.name() != nullptr && *process.name() == name) {
                return;
            }
            ::usleep(1000);
        }
    }
    int waitForEnd()
    {
        int status = 0;
        ::waitpid(std::exchange(pid_, -1), &status, 0);
        return status;
    }

private:
    explicit Child(pid_t pid) : pid_(pid) {}
    pid_t pid_;
};

class ProcProcessListTest : public ::testing::Test {
protected:
    void SetUp() override { ProcessPlatform::install(&list, &list, nullptr); }
    void TearDown() override { ProcessPlatform::uninstall(); }

    ProcProcessList list;
};

TEST_F(ProcProcessListTest, NamesAreReadWhole)
{
    Child paren = Child::named("name ) paren");
    paren.waitForName("name ) paren");
    EXPECT_EQ(*QLVXProcess(paren.psn()).name(), "name ) paren");

    // The kernel keeps 15 bytes of a program's name; the executable's own name is whole.
    const auto folder =
        std::filesystem::temp_directory_path() / ("vexto-proc-" + std::to_string(::getpid()));
    std::filesystem::create_directories(folder);
    const auto program = folder / "vexto-long-name-process";
    std::filesystem::copy_file("/bin/sleep", program);
    Child longName = Child::running(program.string());
    longName.waitForName("vexto-long-name-process");
    EXPECT_EQ(*QLVXProcess(longName.psn()).name(), "vexto-long-name-process");
    const auto found = QLVXProcess::everyProcessNamed("vexto-long-name-process");
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0].PID(), longName.pid());
    // An update that replaces the program's file while it runs changes nothing of its name.
    std::filesystem::remove_all(folder);
    EXPECT_EQ(*QLVXProcess(longName.psn()).name(), "vexto-long-name-process");
}

TEST_F(ProcProcessListTest, AWalkFindsChildrenAndKeepsOnlyWhatIsCopied)
{
    Child first = Child::named("vexto-walk-a");
    Child second = Child::named("vexto-walk-a");
    first.waitForName("vexto-walk-a");
    second.waitForName("vexto-walk-a");
    auto both = QLVXProcess::everyProcessNamed("vexto-walk-a");
    ASSERT_EQ(both.size(), 2u);
    EXPECT_EQ(both[0].PID(), std::min(first.pid(), second.pid()));
    EXPECT_EQ(both[1].PID(), std::max(first.pid(), second.pid()));
    ASSERT_NE(both[0].launcher(), std::nullopt);
    EXPECT_EQ(both[0].launcher()->PID(), ::getpid());
    EXPECT_GT(both[0].launchTime(), 0.0);

    QLVXProcessesEnumerator enumerator;
    QLVXProcess* one = enumerator.nextObject();
    const QLVXProcess kept = *one;
    QLVXProcess* two = enumerator.nextObject();
    ASSERT_NE(two, nullptr);
    EXPECT_EQ(one, two);
    EXPECT_LT(kept.PID(), two->PID());

    EXPECT_TRUE(QLVXProcess::everyProcessNamed("vexto-no-such-process").empty());
    EXPECT_TRUE(QLVXProcess::currentProcess()->isCurrentProcess());
    EXPECT_EQ(QLVXProcess::currentProcess()->PID(), ::getpid());
}

TEST_F(ProcProcessListTest, StoppedContinuedQuitAndEnded)
{
    Child child = Child::named("vexto-stopped");
    child.waitForName("vexto-stopped");
    ASSERT_TRUE(QLVXProcessSetStopped(child.pid(), true));
    int status = 0;
    ::waitpid(child.pid(), &status, WUNTRACED);
    EXPECT_TRUE(QLVXProcessIsStopped(child.pid()));
    ASSERT_TRUE(QLVXProcessSetStopped(child.pid(), false));
    ::waitpid(child.pid(), &status, WCONTINUED);
    EXPECT_FALSE(QLVXProcessIsStopped(child.pid()));

    // Quitting a stopped process continues it, then asks it to end.
    QLVXProcessSetStopped(child.pid(), true);
    ::waitpid(child.pid(), &status, WUNTRACED);
    QLVXProcess process(child.psn());
    EXPECT_TRUE(process.quit());
    status = child.waitForEnd();
    EXPECT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(WTERMSIG(status), SIGTERM);
    EXPECT_FALSE(process.isValid());
    EXPECT_EQ(process.PID(), -1);
    EXPECT_FALSE(QLVXProcessIsStopped(process.PID()));
}

TEST_F(ProcProcessListTest, AZombieIsNoLongerAProcess)
{
    Child zombie = Child::zombie();
    QLVXProcess process(zombie.psn());
    EXPECT_FALSE(process.isValid());
    EXPECT_EQ(process.name(), nullptr);
    EXPECT_EQ(process.PID(), -1);
    EXPECT_FALSE(process.quit());
}

TEST_F(ProcProcessListTest, TheWalkListsProgramsNotTheKernelsThreads)
{
    std::vector<int> listed;
    QLVXProcessesEnumerator enumerator;
    while (QLVXProcess* each = enumerator.nextObject()) {
        listed.push_back(each->PID());
    }
    const auto isListed = [&listed](int pid) {
        return std::find(listed.begin(), listed.end(), pid) != listed.end();
    };
    EXPECT_TRUE(isListed(::getpid()));
    // Where the kernel's threads are visible at all, kthreadd is pid 2 and spawns every other.
    std::string spawner;
    std::ifstream("/proc/2/comm") >> spawner;
    if (spawner != "kthreadd") {
        GTEST_SKIP() << "the kernel's threads are not visible here";
    }
    std::ifstream children("/proc/2/task/2/children");
    std::vector<int> kernelThreads{2};
    for (int pid = 0; children >> pid;) {
        kernelThreads.push_back(pid);
    }
    for (const int pid : kernelThreads) {
        EXPECT_FALSE(isListed(pid)) << pid;
    }
}

TEST(ProcProcessListExitTest, AnEndIsSeenThroughTheRunLoopWhileTheWatchIsKept)
{
    PollRunLoop loop;
    ProcProcessList list(nullptr, &loop);
    Child watched = Child::named("vexto-watched");
    Child dropped = Child::named("vexto-dropped");
    int ends = 0;
    auto watch = list.watchForExit(watched.pid(), [&ends] { ++ends; });
    ASSERT_NE(watch, nullptr);
    bool droppedEnded = false;
    list.watchForExit(dropped.pid(), [&droppedEnded] { droppedEnded = true; });
    loop.runFor(0.02);
    EXPECT_EQ(ends, 0);

    ::kill(watched.pid(), SIGKILL);
    ::kill(dropped.pid(), SIGKILL);
    for (int turns = 0; turns < 100 && ends == 0; ++turns) {
        loop.runFor(0.01);
    }
    EXPECT_EQ(ends, 1);
    EXPECT_FALSE(droppedEnded) << "a watch let go of tells nothing";
    loop.runFor(0.02);
    EXPECT_EQ(ends, 1) << "an end is told once";
    EXPECT_EQ(list.watchForExit(0, [] {}), nullptr);
    EXPECT_EQ(ProcProcessList().watchForExit(::getpid(), [] {}), nullptr) << "no run loop";
}

// Another user's daemon is not the pane's to see, count or end, even for root.
TEST_F(ProcProcessListTest, AnotherUsersProcessIsNeitherListedNorSignalled)
{
    if (::getuid() != 0) {
        GTEST_SKIP() << "only root can start a process of another user";
    }
    const auto folder =
        std::filesystem::temp_directory_path() / ("vexto-foreign-" + std::to_string(::getpid()));
    std::filesystem::create_directories(folder);
    std::filesystem::permissions(folder, std::filesystem::perms::all);
    const auto program = folder / "vextodaemon";
    std::filesystem::copy_file("/bin/sleep", program);
    constexpr uid_t nobody = 65534;
    Child foreign = Child::runningAs(nobody, program.string());
    std::string comm;
    for (int tries = 0; tries < 2000 && comm != "vextodaemon"; ++tries) {
        ::usleep(1000);
        comm.clear();
        std::ifstream("/proc/" + std::to_string(foreign.pid()) + "/comm") >> comm;
    }
    ASSERT_EQ(comm, "vextodaemon");

    for (const QLVXProcess& each : QLVXProcess::everyProcessNamed("vextodaemon")) {
        EXPECT_NE(each.PID(), foreign.pid());
    }
    QLVXProcess process(foreign.psn());
    EXPECT_FALSE(process.isValid());
    EXPECT_EQ(process.name(), nullptr);
    EXPECT_FALSE(process.quit());
    EXPECT_FALSE(QLVXProcessSetStopped(foreign.pid(), true));
    EXPECT_EQ(::kill(foreign.pid(), 0), 0) << "the foreign process must still run";
    std::string state;
    std::ifstream stat("/proc/" + std::to_string(foreign.pid()) + "/stat");
    std::getline(stat, state);
    EXPECT_NE(state.substr(state.rfind(')') + 2, 1), "T") << "it must not have been stopped";
    PollRunLoop loop;
    EXPECT_EQ(ProcProcessList(nullptr, &loop).watchForExit(foreign.pid(), [] {}), nullptr);
    std::filesystem::remove_all(folder);
}

TEST(ProcProcessListNumbersTest, SpecialNumbersComeFirst)
{
    EXPECT_EQ(ProcProcessList::pidForSerialNumber(kNoProcess), std::nullopt);
    EXPECT_EQ(ProcProcessList::pidForSerialNumber(kSystemProcess), 1);
    EXPECT_EQ(ProcProcessList::pidForSerialNumber(kCurrentProcess), ::getpid());
    EXPECT_EQ(ProcProcessList::serialNumberForPID(2), (ProcessSerialNumber{1, 2}));
    EXPECT_EQ(ProcProcessList::pidForSerialNumber({1, 2}), 2);
    EXPECT_EQ(ProcProcessList::pidForSerialNumber({1, 7}), std::nullopt);
    EXPECT_EQ(ProcProcessList::serialNumberForPID(4321), (ProcessSerialNumber{0, 4321}));
}

} // namespace
} // namespace vexto
