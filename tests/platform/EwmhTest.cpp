#include "WindowManager.hpp"
#include "XvfbServer.hpp"
#include "foundation/Log.hpp"
#include "platform/linux/EwmhProcessWindows.hpp"
#include "platform/linux/PollRunLoop.hpp"
#include "platform/linux/ProcProcessList.hpp"
#include "platform/linux/X11DesktopWatcher.hpp"
#include "system/ProcessPlatform.hpp"
#include "system/QLVXProcess.hpp"

#include <gtest/gtest.h>

#include <csignal>
#include <memory>
#include <sys/wait.h>

// After GoogleTest: Xlib's macros (None, Bool, Status) would break its headers.
#include <X11/Xatom.h>
#include <X11/Xlib.h>

namespace vexto {
namespace {

// A display managed by openbox, and a way to wait for what the window manager does.
class EwmhTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(server.waitUntilReady());
        manager.emplace(server.display());
        windows.emplace(server.display());
        ASSERT_TRUE(waitFor([&] { return windows->hasWindowManager(); }));
    }
    void TearDown() override
    {
        if (client != nullptr) {
            XCloseDisplay(client);
        }
        ProcessPlatform::uninstall();
    }

    template <typename Condition> bool waitFor(Condition condition)
    {
        for (int round = 0; round < 300; ++round) {
            if (condition()) {
                return true;
            }
            loop.runFor(0.01);
        }
        return false;
    }

    // A window that says it belongs to `pid`, as a client of its own.
    void openWindowOf(int pid)
    {
        client = server.connect();
        ASSERT_NE(client, nullptr);
        const Window window =
            XCreateSimpleWindow(client, DefaultRootWindow(client), 10, 10, 100, 80, 0, 0, 0xFFFFFF);
        const unsigned long owner = static_cast<unsigned long>(pid);
        XChangeProperty(client, window, XInternAtom(client, "_NET_WM_PID", False), XA_CARDINAL, 32,
                        PropModeReplace, reinterpret_cast<const unsigned char*>(&owner), 1);
        // openbox names its check window a moment before it takes the windows mapped: a window
        // mapped in between stays unmanaged, so it is mapped again until openbox has it.
        for (int attempt = 0; attempt < 20 && !windows->hasWindows(pid); ++attempt) {
            XUnmapWindow(client, window);
            XMapWindow(client, window);
            XFlush(client);
            for (int round = 0; round < 10 && !windows->hasWindows(pid); ++round) {
                loop.runFor(0.01);
            }
        }
    }

    test::XvfbServer server;
    std::optional<test::WindowManager> manager;
    std::optional<EwmhProcessWindows> windows;
    PollRunLoop loop;
    Display* client = nullptr;
};

TEST_F(EwmhTest, AProcessIsHiddenShownAndBroughtToTheFrontThroughItsWindows)
{
    const pid_t owner = ::fork();
    if (owner == 0) {
        ::pause();
        ::_exit(0);
    }
    const std::shared_ptr<void> endOwner(nullptr, [owner](void*) {
        ::kill(owner, SIGKILL);
        ::waitpid(owner, nullptr, 0);
    });
    openWindowOf(owner);
    ASSERT_TRUE(waitFor([&] { return windows->hasWindows(owner); }));
    ProcProcessList list(&*windows);
    ProcessPlatform::install(&list, &list, &loop);
    QLVXProcess process(ProcProcessList::serialNumberForPID(owner));
    EXPECT_FALSE(process.isHidden());

    process.setHidden(true);
    EXPECT_TRUE(waitFor([&] { return process.isHidden(); }));
    process.setHidden(false);
    EXPECT_TRUE(waitFor([&] { return !process.isHidden(); }));
    EXPECT_TRUE(waitFor([&] { return process.isFrontProcess(); }));
    ASSERT_NE(QLVXProcess::frontProcess(), nullptr);
    EXPECT_EQ(QLVXProcess::frontProcess()->PID(), owner);

    // A stopped process is woken for it, and stopped again once its windows are hidden.
    ASSERT_TRUE(process.setStopped(true));
    process.setHidden(true);
    EXPECT_TRUE(process.isHidden());
    EXPECT_TRUE(process.isStopped());
}

TEST_F(EwmhTest, AProcessWithoutWindowsCannotBeShownOrHidden)
{
    ProcProcessList list(&*windows);
    ProcessPlatform::install(&list, &list, &loop);
    std::vector<std::string> logged;
    Log::setSink([&](const std::string& line) { logged.push_back(line); });
    QLVXProcess::currentProcess()->setHidden(true);
    Log::clearSink();
    ASSERT_EQ(logged.size(), 1u);
    EXPECT_NE(logged[0].find("error -606"), std::string::npos) << logged[0];
    EXPECT_FALSE(QLVXProcess::currentProcess()->makeFrontProcess());
}

TEST_F(EwmhTest, AMoveToAnotherDesktopIsTold)
{
    int moves = 0;
    X11DesktopWatcher watcher(
        loop, [&] { ++moves; }, server.display());
    ASSERT_TRUE(watcher.isWatching());
    client = server.connect();
    // As a pager asks; again until openbox, which may still be starting, has moved.
    for (int desktop = 1; desktop < 30 && moves == 0; ++desktop) {
        XEvent event{};
        event.xclient.type = ClientMessage;
        event.xclient.window = DefaultRootWindow(client);
        event.xclient.message_type = XInternAtom(client, "_NET_CURRENT_DESKTOP", False);
        event.xclient.format = 32;
        event.xclient.data.l[0] = desktop % 2;
        XSendEvent(client, DefaultRootWindow(client), False,
                   SubstructureRedirectMask | SubstructureNotifyMask, &event);
        XFlush(client);
        for (int round = 0; round < 10 && moves == 0; ++round) {
            loop.runFor(0.01);
        }
    }
    EXPECT_TRUE(waitFor([&] { return moves > 0; }));
}

TEST_F(EwmhTest, AWindowManagerThatHasGoneIsNoLongerAsked)
{
    manager->stop();
    // Its check window is gone, though the root may still name it.
    EXPECT_TRUE(waitFor([&] { return !windows->hasWindowManager(); }));
    EXPECT_EQ(windows->activeWindowPID(), -1);
    EXPECT_FALSE(windows->hasWindows(::getpid()));
}

} // namespace
} // namespace vexto
