#include "platform/linux/X11HotKeyRegistrar.hpp"

#include "XvfbServer.hpp"

#include <gtest/gtest.h>

#include <X11/Xlib.h>
#include <csignal>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace vexto {
namespace {

constexpr std::uint16_t kKey = 0x28;            // K
constexpr std::uint32_t controlOption = 0x1800; // in the hot-key service's bits
constexpr std::uint32_t command = 0x0100;

bool grabRefused = false;

TEST(X11HotKeyRegistrarTest, AGrabHeldByAnotherClientRefusesTheCombinationWithEveryLockState)
{
    test::XvfbServer server;
    if (server.display().empty()) {
        GTEST_SKIP() << "no Xvfb to start (package xvfb)";
    }
    // Another client holds Control+Option+K, and only without Caps Lock or Num Lock.
    Display* holder = server.connect();
    ASSERT_NE(holder, nullptr);
    const int keyK = 37 + 8;
    XGrabKey(holder, keyK, ControlMask | Mod1Mask, DefaultRootWindow(holder), False, GrabModeAsync,
             GrabModeAsync);
    XSync(holder, False);

    X11HotKeyRegistrar registrar(server.display());
    ASSERT_TRUE(registrar.hasDisplay());
    EXPECT_FALSE(registrar.registerHotKey(kKey, controlOption, 1));
    EXPECT_TRUE(registrar.registerHotKey(kKey, command, 2)) << "Command+K is free";
    registrar.unregisterHotKey(2);

    // Unregistered means free again: the other client can take Command+K now.
    grabRefused = false;
    const auto previous = XSetErrorHandler([](Display*, XErrorEvent* error) {
        grabRefused = grabRefused || error->error_code == BadAccess;
        return 0;
    });
    XGrabKey(holder, keyK, Mod4Mask, DefaultRootWindow(holder), False, GrabModeAsync,
             GrabModeAsync);
    XSync(holder, False);
    XSetErrorHandler(previous);
    EXPECT_FALSE(grabRefused);
    // The refused probe left none of its partial grabs behind: the holder keeps working alone.
    EXPECT_TRUE(registrar.registerHotKey(kKey, 0x0200 /* Shift */, 3));
    XCloseDisplay(holder);
}

TEST(X11HotKeyRegistrarTest, WithoutADisplayEveryCombinationIsFree)
{
    X11HotKeyRegistrar registrar(":987");
    EXPECT_FALSE(registrar.hasDisplay());
    EXPECT_TRUE(registrar.registerHotKey(kKey, controlOption, 1));
}

} // namespace
} // namespace vexto
