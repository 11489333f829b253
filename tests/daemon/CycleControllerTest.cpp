#include "cycling/CycleController.hpp"

#include "cycling/CyclePanel.hpp"
#include "cycling/CycleSettings.hpp"
#include "cycling/HotKeyBindings.hpp"
#include "cycling/WindowActions.hpp"
#include "cycling/WindowSystem.hpp"
#include "foundation/DictionaryExtensions.hpp"
#include "platform/fake/FakeRunLoop.hpp"
#include "ports/KeyboardLayout.hpp"
#include "settings/LayeredSettings.hpp"
#include "settings/SettingKeys.hpp"
#include "toolkit/Event.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace vexto {
namespace {

namespace keys = settingkeys;

constexpr std::uint16_t tabKey = 0x30;
constexpr std::uint16_t escapeKey = 0x35;
constexpr std::uint16_t returnKey = 0x24;
constexpr std::uint16_t leftKey = 0x7B;
constexpr std::uint16_t rightKey = 0x7C;
constexpr std::uint16_t endKey = 0x77;
constexpr std::uint16_t f9Key = 0x65;
constexpr std::uint64_t option = Event::optionKeyMask;
constexpr std::uint64_t shift = Event::shiftKeyMask;
constexpr std::uint64_t control = Event::controlKeyMask;

class ScriptedWindows final : public WindowSystem {
public:
    std::vector<CycleWindow> windows = {{1, "a", "A", "one", false, 0, nullptr},
                                        {2, "b", "B", "two", false, 0, nullptr},
                                        {3, "c", "C", "three", false, 0, nullptr}};
    bool keyboardFree = true;
    bool grabbed = false;
    std::vector<std::uint64_t> activated;

    std::vector<CycleWindow> windowsInRecentOrder() const override { return windows; }
    std::optional<std::uint64_t> activeWindow() const override { return windows.front().id; }
    std::optional<std::uint32_t> currentDesktop() const override { return desktop; }
    std::uint32_t desktop = 0;
    bool grabKeyboard(std::uint32_t) override { return grabbed = keyboardFree; }
    void ungrabKeyboard(std::uint32_t) override { grabbed = false; }
    void activate(const CycleWindow& window, std::uint32_t) override
    {
        activated.push_back(window.id);
    }
    void toggleZoom(const CycleWindow& window, std::uint32_t) override
    {
        acted.push_back("zoom " + std::to_string(window.id));
    }
    void minimize(const CycleWindow& window) override
    {
        acted.push_back("minimize " + std::to_string(window.id));
    }
    void close(const CycleWindow& window, std::uint32_t) override
    {
        acted.push_back("close " + std::to_string(window.id));
    }
    std::shared_ptr<const Bitmap> pictureOf(const CycleWindow& window, int) const override
    {
        pictured.push_back(window.id);
        return window.minimized ? nullptr : std::make_shared<const Bitmap>(Bitmap{1, 1, {}});
    }
    std::vector<std::string> acted;
    mutable std::vector<std::uint64_t> pictured;
};

class ScriptedPanel final : public CyclePanel {
public:
    bool shown = false;
    int draws = 0;
    std::uint64_t selectedId = 0;
    std::function<void(std::size_t)> clicked;

    bool showCycle(const WindowCycle& cycle) override
    {
        shown = true;
        ++draws;
        selectedId = cycle.selected() != nullptr ? cycle.selected()->id : 0;
        return true;
    }
    void hideCycle() override { shown = false; }
    void showPreview(const Bitmap&) override { previewShown = true; }
    void hidePreview() override { previewShown = false; }
    bool previewShown = false;
    void setItemClickedHandler(std::function<void(std::size_t)> handler) override
    {
        clicked = std::move(handler);
    }
};

HotKeyBinding key(std::uint16_t code, std::uint64_t modifiers,
                  StepDirection direction = StepDirection::Forward)
{
    HotKeyBinding binding;
    binding.keyCode = code;
    binding.modifiers = modifiers;
    binding.direction = direction;
    return binding;
}

class CycleControllerTest : public ::testing::Test {
protected:
    CycleControllerTest()
    {
        settings.panelDelaySeconds = 0.2;
        cycles.setSettings(settings);
        cycles.setBindings({altTab, altShiftTab});
    }

    FakeRunLoop loop;
    ScriptedWindows windows;
    ScriptedPanel panel;
    CycleController cycles{loop, windows, &panel};
    CycleSettings settings;
    HotKeyBinding altTab = key(tabKey, option);
    HotKeyBinding altShiftTab = key(tabKey, option | shift, StepDirection::Backward);
};

TEST_F(CycleControllerTest, AQuickPressAndReleaseSwitchesBackWithoutEverShowingThePanel)
{
    cycles.hotKeyPressed(altTab, 10);
    EXPECT_TRUE(windows.grabbed);
    loop.advance(0.19);
    cycles.modifiersReleased(0, 11);
    loop.advance(1);
    EXPECT_EQ(panel.draws, 0);
    EXPECT_EQ(windows.activated, std::vector<std::uint64_t>{2});
    EXPECT_FALSE(windows.grabbed);
    EXPECT_FALSE(cycles.isCycling());
}

TEST_F(CycleControllerTest, HoldingShowsThePanelAfterTheDelayAndFurtherPressesMoveTheSelection)
{
    cycles.hotKeyPressed(altTab, 10);
    loop.advance(0.21);
    ASSERT_TRUE(panel.shown);
    EXPECT_EQ(panel.selectedId, 2u);
    cycles.keyPressed(tabKey, option, 11);
    EXPECT_EQ(panel.selectedId, 3u);
    cycles.keyPressed(tabKey, option | shift, 12); // the backward key
    cycles.keyPressed(tabKey, option | shift, 13);
    EXPECT_EQ(panel.selectedId, 1u);
    cycles.keyPressed(endKey, option, 14);
    EXPECT_EQ(panel.selectedId, 3u);
    cycles.keyPressed(0x00, option, 15); // a key the cycle does not know moves nothing
    EXPECT_EQ(panel.selectedId, 3u);
    // Letting go of Shift alone keeps the cycle; letting go of the hot key's Option ends it.
    cycles.modifiersReleased(option, 16);
    EXPECT_TRUE(cycles.isCycling());
    cycles.modifiersReleased(control, 17);
    EXPECT_FALSE(panel.shown);
    EXPECT_EQ(windows.activated, std::vector<std::uint64_t>{3});
}

TEST_F(CycleControllerTest, EscapeCancelsAndAClickOrReturnActivates)
{
    cycles.hotKeyPressed(altTab, 10);
    cycles.keyPressed(escapeKey, option, 11);
    loop.advance(1);
    EXPECT_FALSE(cycles.isCycling());
    EXPECT_FALSE(windows.grabbed);
    EXPECT_EQ(panel.draws, 0); // the pending panel was withdrawn too
    EXPECT_TRUE(windows.activated.empty());

    cycles.hotKeyPressed(altShiftTab, 20);
    loop.advance(1);
    ASSERT_TRUE(panel.clicked);
    panel.clicked(0);
    EXPECT_EQ(windows.activated, std::vector<std::uint64_t>{1});

    cycles.hotKeyPressed(altTab, 30);
    cycles.keyPressed(rightKey, option, 31);
    cycles.keyPressed(returnKey, option, 32);
    EXPECT_EQ(windows.activated, (std::vector<std::uint64_t>{1, 3}));
}

TEST_F(CycleControllerTest, AHotKeyWithoutModifiersLeavesThePanelUpUnlessActivateOnNoModifiers)
{
    const HotKeyBinding f9 = key(f9Key, 0);
    cycles.setBindings({f9});
    cycles.hotKeyPressed(f9, 10);
    cycles.keyReleased(f9Key, 0, 11);
    cycles.modifiersReleased(0, 11);
    EXPECT_TRUE(cycles.isCycling());
    cycles.keyPressed(f9Key, 0, 12);
    cycles.keyPressed(returnKey, 0, 13);
    EXPECT_EQ(windows.activated, std::vector<std::uint64_t>{3});

    settings.activateOnNoModifiers = true;
    cycles.setSettings(settings);
    cycles.hotKeyPressed(f9, 20);
    cycles.keyReleased(f9Key, 0, 21);
    EXPECT_EQ(windows.activated, (std::vector<std::uint64_t>{3, 2}));

    // With modifiers, it waits until every modifier is up, not only the hot key's.
    cycles.setBindings({altTab});
    cycles.hotKeyPressed(altTab, 30);
    cycles.modifiersReleased(control, 31);
    EXPECT_TRUE(cycles.isCycling());
    cycles.modifiersReleased(0, 32);
    EXPECT_EQ(windows.activated.size(), 3u);
}

// Keys type their US letters and digits, as a layout would tell.
class UsLetters final : public KeyboardLayout {
public:
    std::optional<char16_t> characterForKeyCode(std::uint16_t keyCode) const override
    {
        switch (keyCode) {
        case 0x12:
            return u'1';
        case 0x13:
            return u'2';
        case 0x00:
            return u'a';
        case 0x18:
            return u'=';
        case 0x1B:
            return u'-';
        default:
            return std::nullopt;
        }
    }
};

TEST_F(CycleControllerTest, TypingABadgeActivatesItsApplicationAndOtherDesktopsCanBeLeftOut)
{
    UsLetters layout;
    cycles.setKeyboardLayout(&layout);
    windows.windows = {{1, "a", "A", "one", false, 0, nullptr},
                       {2, "b", "B", "two", false, 1, nullptr},
                       {3, "a", "A", "three", false, 0, nullptr},
                       {4, "c", "C", "four", false, std::nullopt, nullptr}};
    cycles.hotKeyPressed(altTab, 10);
    cycles.keyPressed(0x13, option, 11); // "2": the second application, B
    EXPECT_EQ(windows.activated, std::vector<std::uint64_t>{2});
    EXPECT_FALSE(cycles.isCycling());
    cycles.hotKeyPressed(altTab, 12);
    cycles.keyPressed(0x00, option, 13); // "a": the tenth, which is not there
    EXPECT_TRUE(cycles.isCycling());
    cycles.cancel(14);

    settings.shortcutBadges = false;
    cycles.setSettings(settings);
    cycles.hotKeyPressed(altTab, 20);
    cycles.keyPressed(0x12, option, 21);
    EXPECT_TRUE(cycles.isCycling()) << "badges that are not shown cannot be typed";
    cycles.cancel(22);

    // Not across desktops: desktop 0's windows and those on every desktop.
    settings.switchAcrossSpaces = false;
    cycles.setSettings(settings);
    cycles.hotKeyPressed(altTab, 30);
    ASSERT_TRUE(cycles.cycle());
    std::vector<std::uint64_t> offered;
    for (const CycleWindow& window : cycles.cycle()->items()) {
        offered.push_back(window.id);
    }
    EXPECT_EQ(offered, (std::vector<std::uint64_t>{1, 3, 4}));
    cycles.cancel(31);
}

TEST_F(CycleControllerTest, KeysActOnTheSelectedWindowAtOnceOrWhenTheCycleEndsWithASwitch)
{
    constexpr std::uint16_t equalsKey = 0x18, minusKey = 0x1B, deleteKey = 0x75, wKey = 0x0D;
    UsLetters layout;
    cycles.setKeyboardLayout(&layout);
    HotKeyBinding closeFrontmost = key(wKey, option | control);
    closeFrontmost.action = DaemonAction::CloseFrontmostWindow;
    cycles.setBindings({altTab, altShiftTab, closeFrontmost});

    // At once, each followed by its own rule: zoom and minimise go on, close goes back.
    cycles.hotKeyPressed(altTab, 10);
    cycles.keyPressed(equalsKey, option, 11);
    cycles.keyPressed(minusKey, option, 12);
    cycles.keyPressed(deleteKey, option, 13);
    EXPECT_EQ(windows.acted, (std::vector<std::string>{"zoom 2", "minimize 3", "close 1"}));
    EXPECT_EQ(cycles.cycle()->selected()->id, 3u);
    cycles.keyPressed(wKey, option, 14); // the frontmost-window key, on the selection
    EXPECT_EQ(windows.acted.back(), "close 3");
    cycles.modifiersReleased(0, 15);
    EXPECT_EQ(windows.activated, std::vector<std::uint64_t>{2});

    // Put off until the switch: zooming twice is no zoom, and Escape drops all of it.
    windows.acted.clear();
    settings.processWindowsWhenDone = true;
    settings.afterZoom = WindowCycle::FollowUp::Nothing;
    cycles.setSettings(settings);
    cycles.hotKeyPressed(altTab, 20);
    cycles.keyPressed(minusKey, option, 21);
    cycles.keyPressed(escapeKey, option, 22);
    EXPECT_TRUE(windows.acted.empty());
    cycles.hotKeyPressed(altTab, 30);
    cycles.keyPressed(equalsKey, option, 31);
    EXPECT_EQ(cycles.cycle()->selected(), nullptr) << "after zooming, nothing";
    cycles.keyPressed(rightKey, option, 32);
    cycles.keyPressed(leftKey, option, 34);
    cycles.keyPressed(equalsKey, option, 35);
    cycles.keyPressed(rightKey, option, 36);
    cycles.keyPressed(minusKey, option, 37);
    EXPECT_TRUE(windows.acted.empty());
    cycles.modifiersReleased(0, 38);
    EXPECT_EQ(windows.acted, (std::vector<std::string>{"minimize 3"}));
    EXPECT_EQ(windows.activated, (std::vector<std::uint64_t>{2, 1}));

    // The last window closed ends the cycle without a switch, after what was put off.
    windows.acted.clear();
    windows.windows.resize(1);
    cycles.hotKeyPressed(altTab, 40);
    cycles.keyPressed(minusKey, option, 41);
    cycles.keyPressed(deleteKey, option, 42);
    EXPECT_FALSE(cycles.isCycling());
    EXPECT_FALSE(windows.grabbed);
    EXPECT_EQ(windows.acted, (std::vector<std::string>{"close 1"}));
    EXPECT_EQ(windows.activated.size(), 2u);
}

TEST_F(CycleControllerTest, TheActivationItemSwitchesAndTheCancellationItemLeavesAsItWas)
{
    settings.options.activationItem = WindowCycle::ItemPlace::Top;
    settings.options.cancellationItem = WindowCycle::ItemPlace::Bottom;
    settings.processWindowsWhenDone = true;
    cycles.setSettings(settings);
    cycles.hotKeyPressed(altTab, 10);
    loop.advance(1);
    panel.clicked(0);
    EXPECT_EQ(windows.activated, std::vector<std::uint64_t>{2});

    cycles.hotKeyPressed(altTab, 20);
    loop.advance(1);
    panel.clicked(4);
    EXPECT_FALSE(cycles.isCycling());
    EXPECT_EQ(windows.activated.size(), 1u);

    // Stepped onto with the keys, the release leaves everything as it was.
    cycles.hotKeyPressed(altTab, 30);
    loop.advance(1);
    cycles.keyPressed(0x75, option, 31);
    cycles.keyPressed(endKey, option, 32);
    EXPECT_EQ(panel.selectedId, 0u);
    cycles.modifiersReleased(0, 33);
    EXPECT_FALSE(cycles.isCycling());
    EXPECT_EQ(windows.activated.size(), 1u);
    EXPECT_TRUE(windows.acted.empty());
}

TEST_F(CycleControllerTest, APreviewShowsOnceTheSelectionRestsAndNeverOfAnotherWindow)
{
    settings.previewDelaySeconds = 1.0;
    cycles.setSettings(settings);
    // A quick switch shows no panel, so no picture is taken.
    cycles.hotKeyPressed(altTab, 1);
    cycles.modifiersReleased(0, 2);
    loop.advance(5);
    EXPECT_TRUE(windows.pictured.empty());

    windows.windows[2].minimized = true; // it gives no picture
    cycles.hotKeyPressed(altTab, 10);
    loop.advance(0.2 + 0.9);
    EXPECT_FALSE(panel.previewShown) << "not before the delay";
    loop.advance(0.2);
    EXPECT_TRUE(panel.previewShown);
    EXPECT_EQ(windows.pictured, std::vector<std::uint64_t>{2});
    cycles.keyPressed(tabKey, option, 11);
    EXPECT_FALSE(panel.previewShown) << "the moved selection takes it away at once";
    loop.advance(1.5);
    EXPECT_FALSE(panel.previewShown);
    EXPECT_EQ(windows.pictured, (std::vector<std::uint64_t>{2, 3}));
    cycles.keyPressed(tabKey, option, 12);
    cycles.keyPressed(tabKey, option, 13); // around to 2
    loop.advance(0.5);
    cycles.keyPressed(rightKey, option, 14);
    cycles.keyPressed(leftKey, option, 14); // away and back
    loop.advance(0.5);
    EXPECT_FALSE(panel.previewShown) << "each move starts the delay again";
    loop.advance(0.6);
    EXPECT_TRUE(panel.previewShown);
    EXPECT_EQ(windows.pictured, (std::vector<std::uint64_t>{2, 3, 2}));
    // Zoomed, the window stays selected but its picture is out of date: a new one follows.
    UsLetters layout;
    cycles.setKeyboardLayout(&layout);
    settings.afterZoom = WindowCycle::FollowUp::SameApplication;
    cycles.setSettings(settings);
    cycles.keyPressed(0x18, option, 15);
    EXPECT_EQ(cycles.cycle()->selected()->id, 2u);
    EXPECT_FALSE(panel.previewShown);
    loop.advance(1.1);
    EXPECT_TRUE(panel.previewShown);
    EXPECT_EQ(windows.pictured, (std::vector<std::uint64_t>{2, 3, 2, 2}));
    cycles.modifiersReleased(0, 15);
    EXPECT_FALSE(panel.previewShown);

    settings.showPreviews = false;
    cycles.setSettings(settings);
    cycles.hotKeyPressed(altTab, 20);
    loop.advance(5);
    EXPECT_FALSE(panel.previewShown);
    EXPECT_EQ(windows.pictured.size(), 4u);
    cycles.cancel(21);
}

TEST_F(CycleControllerTest, WindowsGoingAwayAndAKeyboardHeldElsewhereNeverLeaveACycleBehind)
{
    cycles.hotKeyPressed(altTab, 10);
    loop.advance(1);
    cycles.windowClosed(2);
    EXPECT_EQ(panel.selectedId, 3u);
    cycles.windowClosed(3);
    cycles.windowClosed(1);
    EXPECT_FALSE(cycles.isCycling());
    EXPECT_FALSE(panel.shown);
    EXPECT_FALSE(windows.grabbed);

    windows.windows.clear();
    cycles.hotKeyPressed(altTab, 20);
    EXPECT_FALSE(cycles.isCycling());
    EXPECT_FALSE(windows.grabbed);

    // Without the keyboard the press alone switches, as the release could never be seen.
    windows.windows = {{1, "a", "A", "one", false, 0, nullptr},
                       {2, "b", "B", "two", false, 0, nullptr}};
    windows.keyboardFree = false;
    cycles.hotKeyPressed(altTab, 30);
    EXPECT_FALSE(cycles.isCycling());
    EXPECT_EQ(windows.activated, std::vector<std::uint64_t>{2});
}

TEST(WindowActionsTest, EachActionActsOnItsOwnWindowsAndNoneWithoutThem)
{
    ScriptedWindows windows;
    windows.windows = {{1, "a", "A", "front", false, 0, nullptr},
                       {2, "b", "B", "other", true, 0, nullptr},
                       {3, "a", "A", "old", true, 0, nullptr},
                       {4, "a", "A", "older", true, 0, nullptr}};
    WindowActions actions(windows);
    using A = DaemonAction;
    for (const A action :
         {A::ZoomFrontmostWindow, A::MinimizeFrontmostWindow, A::CloseFrontmostWindow,
          A::CloseMinimizedWindowsOfFrontmostApplication, A::CloseAllMinimizedWindows}) {
        EXPECT_TRUE(actions.perform(action, 5));
    }
    EXPECT_EQ(windows.acted,
              (std::vector<std::string>{"zoom 1", "minimize 1", "close 1", "close 4", "close 3",
                                        "close 4", "close 3", "close 2"}));
    // Restored least recently used first, so that the most recent ends on top.
    EXPECT_TRUE(actions.perform(A::DeminimizeMinimizedWindowsOfFrontmostApplication, 6));
    EXPECT_EQ(windows.activated, (std::vector<std::uint64_t>{4, 3}));
    EXPECT_TRUE(actions.perform(A::DeminimizeAllMinimizedWindows, 7));
    EXPECT_EQ(windows.activated, (std::vector<std::uint64_t>{4, 3, 4, 3, 2}));
    EXPECT_FALSE(actions.perform(A::CycleAllWindows, 8));

    windows.windows = {{1, "a", "A", "front", false, 0, nullptr}};
    EXPECT_FALSE(actions.perform(A::DeminimizeAllMinimizedWindows, 9));
    EXPECT_FALSE(actions.perform(A::CloseMinimizedWindowsOfFrontmostApplication, 9));
}

TEST(CycleSettingsTest, TheShippedDefaultsAndTheUsersChoicesAreRead)
{
    const auto shipped = deeplyMutableDictionaryWithContentsOfFile(
        VEXTO_SOURCE_DIR "/resources/KRVXDefaultSettings.plist");
    ASSERT_TRUE(shipped);
    const PlistDictionary none;
    const CycleSettings defaults = CycleSettings::fromSettings(LayeredSettings(none, *shipped));
    EXPECT_TRUE(defaults.options.stepForwardInitially);
    EXPECT_TRUE(defaults.options.wrapAround);
    EXPECT_FALSE(defaults.activateOnNoModifiers);
    EXPECT_DOUBLE_EQ(defaults.panelDelaySeconds, 0.2);

    EXPECT_TRUE(defaults.switchAcrossSpaces);
    EXPECT_TRUE(defaults.shortcutBadges);
    EXPECT_TRUE(defaults.options.leftOutApplications.empty());

    const PlistDictionary chosen = {{std::string(keys::stepForwardInitially), false},
                                    {std::string(keys::switchAcrossSpaces), false},
                                    {std::string(keys::showShortcutBadges), false},
                                    {std::string(keys::applicationExceptions),
                                     PlistArray{"Mail", " Terminal", 7, PlistDictionary{}}},
                                    {std::string(keys::windowExceptions), "not a list"},
                                    {std::string(keys::applicationsSortOrder), 0},
                                    {std::string(keys::invertApplicationsSortOrder), true},
                                    {std::string(keys::wrapAroundScrolling), "NO"},
                                    {std::string(keys::activateOnNoModifiers), true},
                                    {std::string(keys::panelDelay), 999999}};
    const CycleSettings user = CycleSettings::fromSettings(LayeredSettings(chosen, *shipped));
    EXPECT_FALSE(user.options.stepForwardInitially);
    EXPECT_FALSE(user.options.wrapAround);
    EXPECT_TRUE(user.activateOnNoModifiers);
    EXPECT_DOUBLE_EQ(user.panelDelaySeconds, 5.0);
    EXPECT_FALSE(user.switchAcrossSpaces);
    EXPECT_FALSE(user.shortcutBadges);
    EXPECT_EQ(user.options.leftOutApplications, (std::vector<std::string>{"Mail", " Terminal"}));
    EXPECT_TRUE(user.options.leftOutTitles.empty());
    EXPECT_EQ(user.options.applicationOrder, WindowCycle::ApplicationOrder::Name);
    EXPECT_TRUE(user.options.invertApplicationOrder);
    EXPECT_EQ(defaults.options.applicationOrder, WindowCycle::ApplicationOrder::RecentUse);
    EXPECT_FALSE(defaults.options.invertApplicationOrder);
    // Each tag of the pane's pop-up, and one it does not have.
    const std::pair<int, WindowCycle::ApplicationOrder> tags[] = {
        {0, WindowCycle::ApplicationOrder::Name},
        {1, WindowCycle::ApplicationOrder::LaunchDate},
        {2, WindowCycle::ApplicationOrder::WindowCount},
        {3, WindowCycle::ApplicationOrder::RecentUse},
        {9, WindowCycle::ApplicationOrder::RecentUse}};
    for (const auto& [tag, order] : tags) {
        const PlistDictionary sorted = {{std::string(keys::applicationsSortOrder), tag}};
        EXPECT_EQ(
            CycleSettings::fromSettings(LayeredSettings(sorted, *shipped)).options.applicationOrder,
            order)
            << tag;
    }

    // The panel's own items and what follows an action on a window, by the pop-ups' indices.
    using F = WindowCycle::FollowUp;
    using P = WindowCycle::ItemPlace;
    EXPECT_EQ(defaults.options.activationItem, std::nullopt);
    EXPECT_EQ(defaults.options.cancellationItem, std::nullopt);
    EXPECT_EQ(defaults.afterZoom, F::NextWindow);
    EXPECT_EQ(defaults.afterMinimize, F::NextWindow);
    EXPECT_EQ(defaults.afterClose, F::PreviousWindow);
    EXPECT_FALSE(defaults.processWindowsWhenDone);
    EXPECT_TRUE(defaults.showPreviews);
    EXPECT_DOUBLE_EQ(defaults.previewDelaySeconds, 2.0);
    const PlistDictionary acting = {{std::string(keys::activateItem), true},
                                    {std::string(keys::cancelItem), true},
                                    {std::string(keys::cancelItemMode), 0},
                                    {std::string(keys::afterZoomSelection), 0},
                                    {std::string(keys::afterMinimizeSelection), 1},
                                    {std::string(keys::afterCloseSelection), 7},
                                    {std::string(keys::processWindowsWhenDone), true},
                                    {std::string(keys::showPreviews), false},
                                    {std::string(keys::previewDelay), 500}};
    const CycleSettings actor = CycleSettings::fromSettings(LayeredSettings(acting, *shipped));
    EXPECT_EQ(actor.options.activationItem, P::Top);
    EXPECT_EQ(actor.options.cancellationItem, P::Top);
    EXPECT_EQ(actor.afterZoom, F::Nothing);
    EXPECT_EQ(actor.afterMinimize, F::SameApplication);
    EXPECT_EQ(actor.afterClose, F::PreviousWindow) << "an index the pop-up lacks: the default";
    EXPECT_TRUE(actor.processWindowsWhenDone);
    EXPECT_FALSE(actor.showPreviews);
    EXPECT_DOUBLE_EQ(actor.previewDelaySeconds, 0.5);
    const PlistDictionary atBottom = {{std::string(keys::activateItem), true},
                                      {std::string(keys::activateItemMode), 1},
                                      {std::string(keys::cancelItem), true},
                                      {std::string(keys::afterCloseSelection), 2},
                                      {std::string(keys::previewDelay), 1e9}};
    const CycleSettings bottom = CycleSettings::fromSettings(LayeredSettings(atBottom, *shipped));
    EXPECT_EQ(bottom.options.activationItem, P::Bottom);
    EXPECT_EQ(bottom.options.cancellationItem, P::Bottom);
    EXPECT_EQ(bottom.afterClose, F::NextWindow);
    EXPECT_DOUBLE_EQ(bottom.previewDelaySeconds, 10.0);

    // With neither file the code's own defaults hold.
    const CycleSettings bare = CycleSettings::fromSettings(LayeredSettings(none, none));
    EXPECT_FALSE(bare.options.stepForwardInitially);
    EXPECT_DOUBLE_EQ(bare.panelDelaySeconds, 0.2);
}

PlistDictionary record(const std::string& code, const std::string& modifiers)
{
    return {{"Key Code", code}, {"Modifiers", modifiers}, {"Visual Representation", "x"}};
}

TEST(HotKeyBindingsTest, EachTableBindsItsOwnActionAndUnusableRecordsAreLeftOut)
{
    // Each table gets a key code of its own: a swapped row shows as a wrong action.
    PlistDictionary settings;
    int code = 1;
    for (const HotKeyBindings::Row& row : HotKeyBindings::table()) {
        PlistDictionary table;
        if (startsCycle(row.action)) {
            table["Forward"] = record(std::to_string(code), "524288");
            table["Backward"] = record(std::to_string(code), "655360");
        } else {
            table["Any"] = record(std::to_string(code), "1048576");
        }
        settings[std::string(row.settingKey)] = table;
        ++code;
    }
    const std::vector<std::pair<std::string_view, DaemonAction>> expected = {
        {keys::cycleAllWindows, DaemonAction::CycleAllWindows},
        {keys::cycleNonMinimizedWindows, DaemonAction::CycleNonMinimizedWindows},
        {keys::cycleMinimizedWindows, DaemonAction::CycleMinimizedWindows},
        {keys::cycleAllWindowsOfFrontmostApplication,
         DaemonAction::CycleAllWindowsOfFrontmostApplication},
        {keys::cycleNonMinimizedWindowsOfFrontmostApplication,
         DaemonAction::CycleNonMinimizedWindowsOfFrontmostApplication},
        {keys::cycleMinimizedWindowsOfFrontmostApplication,
         DaemonAction::CycleMinimizedWindowsOfFrontmostApplication},
        {keys::additionalZoomFrontmostWindow, DaemonAction::ZoomFrontmostWindow},
        {keys::additionalMinimizeFrontmostWindow, DaemonAction::MinimizeFrontmostWindow},
        {keys::additionalCloseFrontmostWindow, DaemonAction::CloseFrontmostWindow},
        {keys::additionalDeminimizeAllMinimizedWindows,
         DaemonAction::DeminimizeAllMinimizedWindows},
        {keys::additionalDeminimizeMinimizedWindowsOfFrontmostApplication,
         DaemonAction::DeminimizeMinimizedWindowsOfFrontmostApplication},
        {keys::additionalCloseAllMinimizedWindows, DaemonAction::CloseAllMinimizedWindows},
        {keys::additionalCloseMinimizedWindowsOfFrontmostApplication,
         DaemonAction::CloseMinimizedWindowsOfFrontmostApplication},
    };
    const PlistDictionary none;
    const auto bindings = HotKeyBindings::fromSettings(LayeredSettings(settings, none));
    ASSERT_EQ(bindings.size(), 6u * 2 + 7u);
    for (const HotKeyBinding& binding : bindings) {
        const auto& [key, action] = expected.at(binding.keyCode - 1);
        EXPECT_EQ(binding.action, action) << key;
        if (startsCycle(action)) {
            EXPECT_EQ(binding.modifiers, binding.direction == StepDirection::Forward
                                             ? Event::optionKeyMask
                                             : Event::optionKeyMask | Event::shiftKeyMask)
                << key;
        }
    }

    // A user's table replaces the default one whole; records the daemon cannot use are skipped.
    const PlistDictionary defaults = {
        {std::string(keys::cycleAllWindows), PlistDictionary{{"Forward", record("48", "524288")}}}};
    const PlistDictionary damaged = {
        {std::string(keys::cycleAllWindows),
         PlistDictionary{{"Forward", PlistDictionary{{"Modifiers", "524288"}}},
                         {"Backward", record("48", "655360")}}},
        {std::string(keys::cycleMinimizedWindows),
         PlistDictionary{
             {"Forward", PlistDictionary{{"Key Code", PlistData{}}, {"Modifiers", "0"}}},
             {"Backward", "not a record"}}},
        {std::string(keys::cycleNonMinimizedWindows), "not a table"},
        {std::string(keys::additionalZoomFrontmostWindow),
         PlistDictionary{{"Forward", record("6", "0")}}},
        {std::string(keys::additionalCloseFrontmostWindow),
         PlistDictionary{{"Any", record("65549", "1048576")}}}};
    const auto read = HotKeyBindings::fromSettings(LayeredSettings(damaged, defaults));
    ASSERT_EQ(read.size(), 2u);
    EXPECT_EQ(read[0].action, DaemonAction::CycleAllWindows);
    EXPECT_EQ(read[0].direction, StepDirection::Backward);
    EXPECT_EQ(read[1].action, DaemonAction::CloseFrontmostWindow);
    EXPECT_EQ(read[1].keyCode, 13); // only the low 16 bits name the key
}

} // namespace
} // namespace vexto
