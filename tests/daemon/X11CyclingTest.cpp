#include "../platform/WindowManager.hpp"
#include "../platform/XvfbServer.hpp"
#include "cycling/CycleController.hpp"
#include "cycling/CyclePanel.hpp"
#include "cycling/HotKeyBindings.hpp"
#include "foundation/Log.hpp"
#include "platform/linux/PollRunLoop.hpp"
#include "platform/linux/XkbKeyboardLayout.hpp"
#include "settings/LayeredSettings.hpp"
#include "toolkit/Event.hpp"
#include "xserver/X11WindowSystem.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>
#include <xcb/composite.h>
#include <xcb/xcb.h>
#include <xcb/xcb_ewmh.h>
#include <xcb/xtest.h>

namespace vexto {
namespace {

// X key codes of the keys the tests press (evdev + 8).
constexpr xcb_keycode_t tabKey = 23;
constexpr xcb_keycode_t escapeKey = 9;
constexpr xcb_keycode_t superKey = 133;
constexpr xcb_keycode_t altKey = 64;
constexpr xcb_keycode_t shiftKey = 50;
constexpr xcb_keycode_t f9Key = 75;
constexpr xcb_keycode_t zKey = 52;
constexpr xcb_keycode_t mKey = 58;
constexpr xcb_keycode_t wKey = 25;
constexpr xcb_keycode_t minusKey = 20;
constexpr xcb_keycode_t equalKey = 21;
constexpr xcb_keycode_t deleteKey = 119;
constexpr xcb_keycode_t capsLockKey = 66;
constexpr xcb_keycode_t numLockKey = 77;
constexpr std::uint16_t virtualTab = 0x30;
constexpr std::uint16_t virtualF9 = 0x65;

class CountingPanel final : public CyclePanel {
public:
    int shows = 0;
    bool shown = false;
    bool showCycle(const WindowCycle&) override
    {
        ++shows;
        return shown = true;
    }
    void hideCycle() override { shown = false; }
    void showPreview(const Bitmap&) override {}
    void hidePreview() override {}
    void setItemClickedHandler(std::function<void(std::size_t)>) override {}
};

// A display managed by openbox with windows of the test's own, the daemon's X11 side and its
// cycle in this process, and a second client that presses keys through XTEST and reads what
// the window manager did.
class X11CyclingTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(server.waitUntilReady());
        ::setenv("DISPLAY", server.display().c_str(), 1);
        manager.emplace(server.display());
        observer = xcb_connect(server.display().c_str(), nullptr);
        ASSERT_EQ(xcb_connection_has_error(observer), 0);
        xcb_ewmh_init_atoms_replies(&ewmh, xcb_ewmh_init_atoms(observer, &ewmh), nullptr);
        ASSERT_TRUE(waitFor([&] { return windowManagerRuns(); }));
        Log::setSink([this](const std::string& line) { logged.push_back(line); });
    }
    void TearDown() override
    {
        Log::clearSink();
        controller.reset();
        windows.reset();
        clients.clear();
        if (observer != nullptr) {
            xcb_ewmh_connection_wipe(&ewmh);
            xcb_disconnect(observer);
        }
    }

    // openbox names itself on the root before it manages windows; windows mapped meanwhile are
    // never managed. Its client list, written once it manages all there are, says it is ready.
    bool windowManagerRuns()
    {
        auto* reply = xcb_get_property_reply(
            observer,
            xcb_get_property(observer, 0, root(), ewmh._NET_CLIENT_LIST, XCB_ATOM_WINDOW, 0, 0),
            nullptr);
        const bool listed = reply != nullptr && reply->type == XCB_ATOM_WINDOW;
        std::free(reply);
        return listed;
    }

    template <typename Condition> bool waitFor(Condition condition, double seconds = 3.0)
    {
        const double end = loop.now() + seconds;
        while (!condition()) {
            if (loop.now() > end) {
                return false;
            }
            loop.runFor(0.01);
        }
        return true;
    }

    // Windows made by a client of their own; their ids in the order given.
    std::vector<std::uint32_t> openWindows(std::vector<std::string> wanted)
    {
        std::vector<std::string> arguments = {VEXTO_TEST_WINDOWS, "--ready-fd", "{fd}"};
        arguments.insert(arguments.end(), wanted.begin(), wanted.end());
        clients.push_back(std::make_unique<test::ChildProcess>(
            arguments, test::ChildProcess::Environment{{"DISPLAY", server.display()}}));
        std::istringstream line(clients.back()->firstLine());
        std::vector<std::uint32_t> ids;
        for (std::uint32_t id = 0; line >> id;) {
            ids.push_back(id);
        }
        return ids;
    }

    void startDaemon(const PlistDictionary& settings)
    {
        std::string problem;
        windows = X11WindowSystem::open(loop, loop, server.display(), problem);
        ASSERT_TRUE(windows) << problem;
        controller = std::make_unique<CycleController>(loop, *windows, &panel);
        keyboard = XkbKeyboardLayout::fromXServer(server.display());
        controller->setKeyboardLayout(keyboard.get());
        windows->setController(controller.get());
        useSettings(settings);
    }

    void useSettings(const PlistDictionary& settings)
    {
        const PlistDictionary none;
        const LayeredSettings layered(settings, none);
        const auto bindings = HotKeyBindings::fromSettings(layered);
        controller->setSettings(CycleSettings::fromSettings(layered));
        controller->setBindings(bindings);
        windows->useBindings(bindings, X11KeyGrabs::Options::fromSettings(layered));
    }

    std::uint32_t active()
    {
        xcb_window_t window = XCB_NONE;
        xcb_ewmh_get_active_window_reply(&ewmh, xcb_ewmh_get_active_window(&ewmh, 0), &window,
                                         nullptr);
        return window;
    }

    bool becomesActive(std::uint32_t window)
    {
        return waitFor([&] { return active() == window; });
    }

    void focus(std::uint32_t window)
    {
        xcb_ewmh_request_change_active_window(&ewmh, 0, window, XCB_EWMH_CLIENT_SOURCE_TYPE_OTHER,
                                              XCB_CURRENT_TIME, XCB_NONE);
        xcb_flush(observer);
        ASSERT_TRUE(becomesActive(window));
    }

    void press(xcb_keycode_t key) { fake(XCB_KEY_PRESS, key); }
    void release(xcb_keycode_t key) { fake(XCB_KEY_RELEASE, key); }
    void tap(xcb_keycode_t key)
    {
        press(key);
        release(key);
    }
    void fake(std::uint8_t type, xcb_keycode_t key)
    {
        xcb_test_fake_input(observer, type, key, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
        xcb_flush(observer);
        free(xcb_get_input_focus_reply(observer, xcb_get_input_focus(observer), nullptr));
        loop.runFor(0.02); // the daemon's side serves what the server sent it
    }

    // Whether another client could take the whole keyboard now: nothing was left grabbed.
    bool keyboardIsFree()
    {
        auto* reply =
            xcb_grab_keyboard_reply(observer,
                                    xcb_grab_keyboard(observer, 0, root(), XCB_CURRENT_TIME,
                                                      XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
                                    nullptr);
        const bool free = reply != nullptr && reply->status == XCB_GRAB_STATUS_SUCCESS;
        std::free(reply);
        xcb_ungrab_keyboard(observer, XCB_CURRENT_TIME);
        xcb_flush(observer);
        return free;
    }

    std::vector<xcb_atom_t> stateOf(std::uint32_t window)
    {
        xcb_ewmh_get_atoms_reply_t states{};
        std::vector<xcb_atom_t> found;
        if (xcb_ewmh_get_wm_state_reply(&ewmh, xcb_ewmh_get_wm_state(&ewmh, window), &states,
                                        nullptr) != 0) {
            found.assign(states.atoms, states.atoms + states.atoms_len);
            xcb_ewmh_get_atoms_reply_wipe(&states);
        }
        return found;
    }
    bool hasState(std::uint32_t window, xcb_atom_t state)
    {
        return waitFor([&] {
            const auto states = stateOf(window);
            return std::find(states.begin(), states.end(), state) != states.end();
        });
    }

    bool loggedContaining(const std::string& part) const
    {
        for (const std::string& line : logged) {
            if (line.find(part) != std::string::npos) {
                return true;
            }
        }
        return false;
    }

    xcb_window_t root() const
    {
        return xcb_setup_roots_iterator(xcb_get_setup(observer)).data->root;
    }

    test::XvfbServer server;
    std::optional<test::WindowManager> manager;
    xcb_connection_t* observer = nullptr;
    xcb_ewmh_connection_t ewmh{};
    PollRunLoop loop;
    CountingPanel panel;
    std::unique_ptr<X11WindowSystem> windows;
    std::unique_ptr<XkbKeyboardLayout> keyboard;
    std::unique_ptr<CycleController> controller;
    std::vector<std::unique_ptr<test::ChildProcess>> clients;
    std::vector<std::string> logged;
};

PlistDictionary hotKey(std::uint16_t key, std::uint64_t modifiers)
{
    return {{"Key Code", std::to_string(key)},
            {"Modifiers", std::to_string(modifiers)},
            {"Visual Representation", "key " + std::to_string(key)}};
}

// Super+Tab and Super+Shift+Tab for one mode, with the panel after `delay` milliseconds.
PlistDictionary superTab(const char* mode = "Cycle All Windows", int delay = 200)
{
    return {{mode, PlistDictionary{{"Forward", hotKey(virtualTab, Event::commandKeyMask)},
                                   {"Backward", hotKey(virtualTab, Event::commandKeyMask |
                                                                       Event::shiftKeyMask)}}},
            {"Panel Delay", delay},
            {"Step Forward Initially", true},
            {"Wrap-Around Scrolling", true}};
}

TEST_F(X11CyclingTest, AQuickPressSwitchesBackAndHoldingStepsThroughTheWindowsInTheOrderUsed)
{
    const auto ids = openWindows({"Alpha:one", "Beta:two", "Gamma:three"});
    ASSERT_EQ(ids.size(), 3u);
    focus(ids[0]);
    focus(ids[1]);
    focus(ids[2]); // used last: Gamma, Beta, Alpha
    startDaemon(superTab());

    press(superKey);
    tap(tabKey);
    release(superKey);
    EXPECT_TRUE(becomesActive(ids[1]));
    EXPECT_EQ(panel.shows, 0) << "a quick switch never shows the panel";
    EXPECT_TRUE(keyboardIsFree());

    // Now Beta, Gamma, Alpha: held, two steps reach Alpha, and the panel shows after the delay.
    press(superKey);
    tap(tabKey);
    loop.runFor(0.1);
    EXPECT_EQ(panel.shows, 0);
    ASSERT_TRUE(waitFor([&] { return panel.shown; }));
    tap(tabKey);
    EXPECT_EQ(active(), ids[1]) << "nothing switches while the modifier is held";
    release(superKey);
    EXPECT_TRUE(becomesActive(ids[0]));
    EXPECT_FALSE(panel.shown);

    // Escape cancels; Shift goes back from the least recently used end.
    press(superKey);
    tap(tabKey);
    tap(escapeKey);
    release(superKey);
    loop.runFor(0.2);
    EXPECT_EQ(active(), ids[0]);
    press(superKey);
    press(shiftKey);
    tap(tabKey);
    release(shiftKey);
    release(superKey);
    EXPECT_TRUE(becomesActive(ids[2]));
    EXPECT_TRUE(keyboardIsFree());
}

TEST_F(X11CyclingTest, EachModeOffersItsWindowsAndActivationRestoresAndCrossesDesktops)
{
    const auto ids =
        openWindows({"Term:shell", "Term:logs:minimized", "Web:news", "Web:mail:desktop=1",
                     "Panel:bar:dock", "Tray:hidden:skip-taskbar"});
    ASSERT_EQ(ids.size(), 6u);
    focus(ids[2]);
    focus(ids[0]);
    startDaemon(superTab("Cycle All Windows"));
    std::vector<std::uint64_t> listed;
    for (const CycleWindow& window : windows->windowsInRecentOrder()) {
        listed.push_back(window.id);
    }
    EXPECT_EQ(listed.front(), ids[0]);
    EXPECT_EQ(listed.size(), 4u) << "docks and windows that skip the task bar are left out";
    EXPECT_EQ(std::count(listed.begin(), listed.end(), ids[4]), 0);
    EXPECT_EQ(std::count(listed.begin(), listed.end(), ids[5]), 0);
    // Openbox names its desktops "desktop 1" onwards; a window on every desktop names none.
    for (const CycleWindow& window : windows->windowsInRecentOrder()) {
        EXPECT_EQ(window.desktopName, window.id == ids[3] ? "desktop 2" : "desktop 1");
    }

    // The minimised terminal window, restored by the frontmost program's minimised cycle.
    ASSERT_TRUE(hasState(ids[1], ewmh._NET_WM_STATE_HIDDEN));
    useSettings(superTab("Cycle Minimized Windows of Frontmost Application"));
    press(superKey);
    tap(tabKey);
    release(superKey);
    EXPECT_TRUE(becomesActive(ids[1]));

    // The mail window lives on the second desktop: the switch takes the user there.
    useSettings(superTab("Cycle All Windows"));
    ASSERT_TRUE(waitFor([&] {
        const auto all = windows->windowsInRecentOrder();
        return !all.empty() && all.back().id == ids[3];
    }));
    press(superKey);
    press(shiftKey);
    tap(tabKey);
    release(shiftKey);
    release(superKey);
    EXPECT_TRUE(becomesActive(ids[3]));
    std::uint32_t desktop = 0;
    xcb_ewmh_get_current_desktop_reply(&ewmh, xcb_ewmh_get_current_desktop(&ewmh, 0), &desktop,
                                       nullptr);
    EXPECT_EQ(desktop, 1u);
}

TEST_F(X11CyclingTest, NewKeysAreTakenAtOnceAndAKeyHeldByTheWindowManagerIsLoggedAndSkipped)
{
    const auto ids = openWindows({"Alpha:one", "Beta:two"});
    focus(ids[0]);
    focus(ids[1]);
    // openbox holds Alt+Tab: that one is refused and logged, F9 alone works. F9 carries the
    // function-key flag, as keyboards with an Fn key record it: X11 knows no such modifier.
    PlistDictionary settings = {
        {"Cycle All Windows",
         PlistDictionary{{"Forward", hotKey(virtualTab, Event::optionKeyMask)}}},
        {"Cycle Non-Minimized Windows",
         PlistDictionary{{"Forward", hotKey(virtualF9, Event::functionKeyMask)}}},
        {"Activate On No Modifiers", true},
        {"Step Forward Initially", true}};
    startDaemon(settings);
    EXPECT_TRUE(loggedContaining("could not take the hot key key 48: another program holds it"));
    tap(f9Key);
    EXPECT_TRUE(becomesActive(ids[0]));

    // Super+Tab instead of F9: the old key is dead, the new one lives.
    useSettings(superTab());
    tap(f9Key);
    loop.runFor(0.2);
    EXPECT_EQ(active(), ids[0]);
    EXPECT_FALSE(controller->isCycling());
    press(superKey);
    tap(tabKey);
    release(superKey);
    EXPECT_TRUE(becomesActive(ids[1]));
    (void)altKey;
}

TEST_F(X11CyclingTest, WindowsClosingAndTheWindowManagerLeavingMidCycleLeaveNothingGrabbed)
{
    const auto first = openWindows({"Alpha:one"});
    const auto second = openWindows({"Beta:two", "Gamma:three"});
    focus(first[0]);
    focus(second[0]);
    startDaemon(superTab("Cycle All Windows", 0));
    press(superKey);
    tap(tabKey);
    ASSERT_TRUE(panel.shown);
    clients.back()->stop(); // Beta and Gamma go while the panel is up
    ASSERT_TRUE(waitFor([&] { return windows->windowsInRecentOrder().size() == 1; }));
    release(superKey);
    EXPECT_TRUE(becomesActive(first[0]));
    EXPECT_TRUE(keyboardIsFree());

    const auto third = openWindows({"Delta:four"});
    focus(third[0]);
    press(superKey);
    tap(tabKey);
    ASSERT_TRUE(controller->isCycling());
    manager->stop();
    // What the old one left on the root goes, so that the new one is seen arriving.
    xcb_delete_property(observer, root(), ewmh._NET_CLIENT_LIST);
    xcb_flush(observer);
    loop.runFor(0.2);
    release(superKey);
    loop.runFor(0.2);
    EXPECT_FALSE(controller->isCycling());
    EXPECT_TRUE(keyboardIsFree());
    // A new window manager finds the daemon still working.
    manager.emplace(server.display());
    ASSERT_TRUE(waitFor([&] { return windowManagerRuns(); }));
    focus(third[0]);
    press(superKey);
    tap(tabKey);
    release(superKey);
    EXPECT_TRUE(becomesActive(first[0]));
}

TEST_F(X11CyclingTest, IconsComeFromTheWindowsOwnPropertyInTheNearestSizeAndFollowItsChanges)
{
    const auto ids = openWindows({"Painter:canvas:icon", "Plain:text"});
    startDaemon(superTab());
    const auto iconOf = [&](std::uint32_t id) {
        for (const CycleWindow& window : windows->windowsInRecentOrder()) {
            if (window.id == id) {
                return window.icon;
            }
        }
        return std::shared_ptr<const Bitmap>();
    };
    windows->setPreferredIconSize(32);
    ASSERT_TRUE(waitFor([&] { return windows->windowsInRecentOrder().size() == 2; }));
    auto icon = iconOf(ids[0]);
    ASSERT_TRUE(icon);
    EXPECT_EQ(icon->width, 48);
    EXPECT_EQ((std::vector<std::uint8_t>(icon->rgba.begin(), icon->rgba.begin() + 4)),
              (std::vector<std::uint8_t>{0, 0, 0xFF, 0x80}));
    // openbox gives a window without an icon its own default one, another picture.
    const auto other = iconOf(ids[1]);
    EXPECT_TRUE(!other || other->rgba != icon->rgba);
    windows->setPreferredIconSize(16);
    EXPECT_EQ(iconOf(ids[0])->width, 16);

    // The program publishes a new icon: the next cycle shows it.
    std::vector<std::uint32_t> green = {8, 8};
    green.insert(green.end(), 64, 0xFF00FF00);
    xcb_ewmh_set_wm_icon(&ewmh, XCB_PROP_MODE_REPLACE, ids[0], std::uint32_t(green.size()),
                         green.data());
    xcb_flush(observer);
    EXPECT_TRUE(waitFor([&] {
        const auto now = iconOf(ids[0]);
        return now && now->width == 8;
    }));
}

TEST_F(X11CyclingTest, WithExactMatchesAKeyRecordedWithTheLeftSuperIgnoresTheRightOne)
{
    const auto ids = openWindows({"Alpha:one", "Beta:two"});
    focus(ids[0]);
    focus(ids[1]);
    PlistDictionary settings = superTab();
    settings["Cycle All Windows"] = PlistDictionary{
        {"Forward", hotKey(virtualTab, Event::commandKeyMask | Event::leftCommandKeyMask)}};
    settings["Require Exact Modifier Key Matches"] = true;
    startDaemon(settings);
    constexpr xcb_keycode_t rightSuperKey = 134;
    press(rightSuperKey);
    tap(tabKey);
    release(rightSuperKey);
    loop.runFor(0.3);
    EXPECT_EQ(active(), ids[1]);
    press(superKey);
    tap(tabKey);
    release(superKey);
    EXPECT_TRUE(becomesActive(ids[0]));

    // Without exact matches either side will do.
    settings["Require Exact Modifier Key Matches"] = false;
    useSettings(settings);
    press(rightSuperKey);
    tap(tabKey);
    release(rightSuperKey);
    EXPECT_TRUE(becomesActive(ids[1]));
}

// The test plays a window manager that keeps only _NET_CLIENT_LIST, and changes the active
// window itself: the order of use follows each change.
TEST_F(X11CyclingTest, TheOrderOfUseFollowsTheActiveWindowWhereOnlyTheClientListIsKept)
{
    manager->stop();
    xcb_delete_property(observer, root(), ewmh._NET_CLIENT_LIST);
    xcb_delete_property(observer, root(), ewmh._NET_CLIENT_LIST_STACKING);
    std::vector<xcb_window_t> made;
    for (const char* name : {"One", "Two", "Three"}) {
        const xcb_window_t window = xcb_generate_id(observer);
        xcb_create_window(observer, XCB_COPY_FROM_PARENT, window, root(), 0, 0, 10, 10, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
        const std::string classes = std::string(name) + '\0' + name + '\0';
        xcb_change_property(observer, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_CLASS,
                            XCB_ATOM_STRING, 8, std::uint32_t(classes.size()), classes.data());
        made.push_back(window);
    }
    xcb_ewmh_set_client_list(&ewmh, 0, std::uint32_t(made.size()), made.data());
    xcb_ewmh_set_active_window(&ewmh, 0, made[2]);
    xcb_flush(observer);
    startDaemon(superTab());
    const auto order = [&] {
        std::vector<std::uint64_t> ids;
        for (const CycleWindow& window : windows->windowsInRecentOrder()) {
            ids.push_back(window.id);
        }
        return ids;
    };
    ASSERT_TRUE(waitFor([&] { return order().size() == 3; }));
    EXPECT_EQ(order().front(), made[2]);
    // The client list's own order is the order the windows were taken on in.
    for (const CycleWindow& window : windows->windowsInRecentOrder()) {
        EXPECT_EQ(made.at(window.mappedOrder), window.id);
    }
    xcb_ewmh_set_active_window(&ewmh, 0, made[0]);
    xcb_flush(observer);
    EXPECT_TRUE(waitFor([&] {
        return order() == std::vector<std::uint64_t>{made[0], made[2], made[1]};
    }));
    xcb_ewmh_set_client_list(&ewmh, 0, 2, made.data());
    xcb_flush(observer);
    EXPECT_TRUE(waitFor([&] { return order() == std::vector<std::uint64_t>{made[0], made[1]}; }));
}

TEST_F(X11CyclingTest, OtherDesktopsAreLeftOutWhenAskedAndATypedBadgeSwitchesAtOnce)
{
    const auto ids = openWindows({"Alpha:one", "Beta:two", "Gamma:three:desktop=1"});
    focus(ids[0]);
    focus(ids[1]);
    PlistDictionary settings = superTab();
    settings["Switch Across Spaces"] = false;
    settings["Show Shortcut Badges"] = true;
    startDaemon(settings);
    press(superKey);
    tap(tabKey);
    ASSERT_TRUE(controller->isCycling());
    std::vector<std::uint64_t> offered;
    for (const CycleWindow& window : controller->cycle()->items()) {
        offered.push_back(window.id);
    }
    EXPECT_EQ(offered, (std::vector<std::uint64_t>{ids[1], ids[0]}));
    // "1" picks the first application, Beta, the active one: typing its badge goes back to it.
    constexpr xcb_keycode_t oneKey = 10;
    tap(oneKey);
    EXPECT_FALSE(controller->isCycling());
    release(superKey);
    loop.runFor(0.2);
    EXPECT_EQ(active(), ids[1]);

    settings["Switch Across Spaces"] = true;
    useSettings(settings);
    press(superKey);
    tap(tabKey);
    ASSERT_TRUE(controller->isCycling());
    EXPECT_EQ(controller->cycle()->items().size(), 3u);
    constexpr xcb_keycode_t threeKey = 12;
    tap(threeKey);
    release(superKey);
    EXPECT_TRUE(becomesActive(ids[2]));
}

// Super moves from Mod4 to Mod3, as a user's xmodmap may move it: the hot keys follow.
TEST_F(X11CyclingTest, AChangedModifierMapIsFollowedByTheGrabs)
{
    const auto ids = openWindows({"Alpha:one", "Beta:two"});
    focus(ids[0]);
    focus(ids[1]);
    startDaemon(superTab());
    auto* map =
        xcb_get_modifier_mapping_reply(observer, xcb_get_modifier_mapping(observer), nullptr);
    ASSERT_NE(map, nullptr);
    const int perModifier = map->keycodes_per_modifier;
    std::vector<xcb_keycode_t> keys(xcb_get_modifier_mapping_keycodes(map),
                                    xcb_get_modifier_mapping_keycodes(map) + 8 * perModifier);
    std::free(map);
    for (int at = 0; at < perModifier; ++at) {
        std::swap(keys[std::size_t(5 * perModifier + at)], keys[std::size_t(6 * perModifier + at)]);
    }
    auto* set = xcb_set_modifier_mapping_reply(
        observer, xcb_set_modifier_mapping(observer, std::uint8_t(perModifier), keys.data()),
        nullptr);
    ASSERT_NE(set, nullptr);
    EXPECT_EQ(set->status, XCB_MAPPING_STATUS_SUCCESS);
    std::free(set);
    loop.runFor(0.3);
    press(superKey);
    tap(tabKey);
    release(superKey);
    EXPECT_TRUE(becomesActive(ids[0]));
}

TEST_F(X11CyclingTest, FrontmostWindowKeysActOnItAndLockKeysMatterOnlyWhereAsked)
{
    const auto ids = openWindows({"Alpha:one", "Beta:two"});
    const auto lone = openWindows({"Gamma:three"});
    focus(ids[1]);
    focus(ids[0]);
    PlistDictionary settings = superTab();
    const auto any = [](std::uint16_t key) {
        return PlistDictionary{{"Any", hotKey(key, Event::commandKeyMask)}};
    };
    settings["Additional Zoom Frontmost Window"] = any(0x06);     // Z
    settings["Additional Minimize Frontmost Window"] = any(0x2E); // M
    settings["Additional Close Frontmost Window"] = any(0x0D);    // W
    settings["Ignore Caps Lock"] = false;
    startDaemon(settings);

    press(superKey);
    tap(zKey);
    release(superKey);
    EXPECT_TRUE(hasState(ids[0], ewmh._NET_WM_STATE_MAXIMIZED_VERT));
    press(superKey);
    tap(mKey);
    release(superKey);
    EXPECT_TRUE(hasState(ids[0], ewmh._NET_WM_STATE_HIDDEN));
    focus(lone[0]);
    press(superKey);
    tap(wKey);
    release(superKey);
    EXPECT_TRUE(waitFor([&] {
        const auto all = windows->windowsInRecentOrder();
        return std::none_of(all.begin(), all.end(),
                            [&](const CycleWindow& w) { return w.id == lone[0]; });
    })) << "the window's program was asked to close it";

    // Num Lock never matters; Caps Lock does unless it is ignored.
    focus(ids[1]);
    tap(numLockKey);
    press(superKey);
    tap(tabKey);
    release(superKey);
    EXPECT_TRUE(becomesActive(ids[0]));
    tap(numLockKey);
    tap(capsLockKey);
    press(superKey);
    tap(tabKey);
    release(superKey);
    loop.runFor(0.3);
    EXPECT_EQ(active(), ids[0]) << "Caps Lock is heeded";
    settings["Ignore Caps Lock"] = true;
    useSettings(settings);
    press(superKey);
    tap(tabKey);
    release(superKey);
    EXPECT_TRUE(becomesActive(ids[1]));
    tap(capsLockKey);
}

TEST_F(X11CyclingTest, KeysWhileACycleIsUpActOnTheSelectedWindowThenOrWhenItEnds)
{
    const auto ids = openWindows({"Alpha:one", "Beta:two"});
    const auto lone = openWindows({"Gamma:three"});
    focus(ids[0]);
    focus(ids[1]);
    focus(lone[0]); // used last: Gamma, Beta, Alpha
    startDaemon(superTab());
    const auto gone = [&](std::uint32_t id) {
        return waitFor([&] {
            const auto all = windows->windowsInRecentOrder();
            return std::none_of(all.begin(), all.end(),
                                [&](const CycleWindow& w) { return w.id == id; });
        });
    };

    // Beta zoomed, then Alpha (the next) minimised, then Gamma (next again, around the end)
    // closed; back from it, Alpha is selected and the release brings it back.
    press(superKey);
    tap(tabKey);
    tap(equalKey);
    EXPECT_TRUE(hasState(ids[1], ewmh._NET_WM_STATE_MAXIMIZED_VERT));
    tap(minusKey);
    EXPECT_TRUE(hasState(ids[0], ewmh._NET_WM_STATE_HIDDEN));
    tap(deleteKey);
    EXPECT_TRUE(gone(lone[0]));
    EXPECT_TRUE(controller->isCycling());
    release(superKey);
    EXPECT_TRUE(becomesActive(ids[0]));

    // Put off until the cycle ends: Escape drops the zoom, a switch carries it out.
    PlistDictionary settings = superTab();
    settings["Process Windows When Done"] = true;
    useSettings(settings);
    press(superKey);
    tap(tabKey);
    tap(equalKey);
    tap(escapeKey);
    release(superKey);
    loop.runFor(0.3);
    EXPECT_TRUE(hasState(ids[1], ewmh._NET_WM_STATE_MAXIMIZED_VERT)) << "still as it was";
    press(superKey);
    tap(tabKey);
    tap(equalKey);
    loop.runFor(0.3);
    const auto states = stateOf(ids[1]);
    EXPECT_NE(std::find(states.begin(), states.end(), ewmh._NET_WM_STATE_MAXIMIZED_VERT),
              states.end())
        << "nothing changes before the switch";
    release(superKey);
    EXPECT_TRUE(waitFor([&] {
        const auto now = stateOf(ids[1]);
        return std::find(now.begin(), now.end(), ewmh._NET_WM_STATE_MAXIMIZED_VERT) == now.end();
    }));
}

// Whether every pixel of the picture is opaque red.
bool allRed(const Bitmap& picture)
{
    for (std::size_t at = 0; at + 3 < picture.rgba.size(); at += 4) {
        if (picture.rgba[at] != 255 || picture.rgba[at + 1] != 0 || picture.rgba[at + 2] != 0 ||
            picture.rgba[at + 3] != 255) {
            return false;
        }
    }
    return !picture.rgba.empty();
}

TEST_F(X11CyclingTest, PicturesAreOfTheWindowsOwnPixelsWholeWhereACompositorKeepsThem)
{
    const auto ids =
        openWindows({"Red:red:colour=ff0000", "Blue:blue:colour=0000ff", "Gone:gone:minimized"});
    ASSERT_EQ(ids.size(), 3u);
    focus(ids[0]);
    focus(ids[1]); // the blue window lies over a corner of the red one
    startDaemon(superTab());
    CycleWindow red;
    red.id = ids[0];
    CycleWindow gone;
    gone.id = ids[2];

    // Without a compositing manager the screen is read: the blue window on top is, the red one
    // it covers is not, as the screen would give blue pixels for it.
    CycleWindow blue;
    blue.id = ids[1];
    const auto full = windows->pictureOf(blue, 800);
    ASSERT_TRUE(full);
    EXPECT_EQ(full->width, 200);
    EXPECT_EQ(full->height, 120);
    EXPECT_EQ((std::vector<std::uint8_t>(full->rgba.begin(), full->rgba.begin() + 4)),
              (std::vector<std::uint8_t>{0, 0, 255, 255}));
    const auto small = windows->pictureOf(blue, 50);
    ASSERT_TRUE(small);
    EXPECT_EQ(small->width, 50);
    EXPECT_EQ(small->height, 30);
    EXPECT_FALSE(windows->pictureOf(red, 800)) << "covered";
    EXPECT_FALSE(windows->pictureOf(gone, 800)) << "a minimised window is not shown";
    EXPECT_FALSE(windows->pictureOf(CycleWindow{}, 800));

    // A compositing manager keeps each frame's contents whole, whatever covers it.
    xcb_composite_redirect_subwindows(observer, root(), XCB_COMPOSITE_REDIRECT_AUTOMATIC);
    xcb_flush(observer);
    loop.runFor(0.3);
    const auto kept = windows->pictureOf(red, 800);
    ASSERT_TRUE(kept);
    EXPECT_EQ(kept->width, 200);
    EXPECT_TRUE(allRed(*kept));
}

} // namespace
} // namespace vexto
