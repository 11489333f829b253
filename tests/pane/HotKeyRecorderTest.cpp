#include "PaneTestFixture.hpp"
#include "foundation/DictionaryExtensions.hpp"
#include "foundation/Log.hpp"
#include "hotkeys/KRVXHotKeyClearButton.hpp"
#include "hotkeys/KRVXHotKeyTextView.hpp"
#include "hotkeys/KeyLabels.hpp"
#include "platform/fake/FakeAlerts.hpp"
#include "ports/HotKeyRegistrar.hpp"
#include "toolkit/Window.hpp"

namespace vexto {
namespace {

using test::PaneTest;

constexpr std::uint16_t tabKey = 48;
constexpr std::uint16_t spaceKey = 49;
constexpr std::uint16_t escapeKey = 53;
constexpr std::uint16_t f5Key = 96;
constexpr unsigned alt = ShortcutOwners::alt;
constexpr unsigned control = ShortcutOwners::control;

struct FreeKeys : HotKeyRegistrar {
    bool registerHotKey(std::uint16_t, std::uint32_t, std::uint32_t) override { return true; }
    void unregisterHotKey(std::uint32_t) override {}
};

// Another program holds Option-F5.
struct F5IsHeld : HotKeyRegistrar {
    bool registerHotKey(std::uint16_t keyCode, std::uint32_t modifiers, std::uint32_t) override
    {
        constexpr std::uint32_t carbonOptionKey = 0x0800;
        return keyCode != f5Key || modifiers != carbonOptionKey;
    }
    void unregisterHotKey(std::uint32_t) override {}
};

// The desktop's own shortcuts, as a window manager's settings name them: Option-F5 and
// Control-Option-Space are taken; with `unknown`, nothing can be asked.
struct DesktopShortcuts : ShortcutOwners {
    bool unknown = false;
    std::vector<std::pair<std::uint16_t, unsigned>> asked;
    ShortcutOwner ownerOf(std::uint16_t keyCode, unsigned modifiers) override
    {
        asked.emplace_back(keyCode, modifiers);
        if (unknown) {
            return {ShortcutOwner::Answer::Unknown, {}, {}, {}};
        }
        if (keyCode == f5Key && modifiers == alt) {
            return {ShortcutOwner::Answer::Taken, "Openbox", "NextWindow", "rc.xml"};
        }
        if (keyCode == spaceKey && modifiers == (control | alt)) {
            return {ShortcutOwner::Answer::Taken, "GNOME", "", "gsettings"};
        }
        return {};
    }
};

class HotKeyRecorderTest : public PaneTest {
protected:
    HotKeyRecorderTest()
    {
        Application::shared().setAlerts(&answers);
        writeDefaults(PlistDictionary{{"Cycle All Windows", PlistDictionary{}}});
        load();
        paneWindow.setContentView(main->shared_from_this());
        paneWindow.makeKeyAndOrderFront();
        Log::setSink([this](const std::string& line) { logged.push_back(line); });
    }
    ~HotKeyRecorderTest() override { Log::clearSink(); }

    KRVXHotKeyTextView& field() const { return *o().allForwardTextView; }
    void focus() { clickInto(&field()); }
    // The focus moves as a click moves it: the current event is a mouse press.
    void clickInto(View* view)
    {
        Application::shared().setCurrentEvent(Event::mouse(Event::Type::LeftMouseDown, Point{}));
        ASSERT_TRUE(paneWindow.makeFirstResponder(view));
    }
    void press(std::uint16_t keyCode, std::uint64_t flags, std::string characters = "x")
    {
        paneWindow.sendEvent(
            Event::key(Event::Type::KeyDown, keyCode, flags, characters, characters));
    }
    const PlistValue* stored(const char* direction = "Forward")
    {
        const PlistValue* table = pane->valueForSetting("Cycle All Windows");
        return table != nullptr && table->isDictionary()
                   ? objectForKey(*table->asDictionary(), direction)
                   : nullptr;
    }

    FakeAlerts answers;
    Window paneWindow{Rect(0, 0, 668, 700)};
    std::vector<std::string> logged;
};

TEST_F(HotKeyRecorderTest, ARecordedCombinationIsStoredSavedShownAndEndsRecording)
{
    EXPECT_EQ(field().string(), "No Shortcut");
    EXPECT_FALSE(field().isOccupied());
    EXPECT_FALSE(field().deleteButton()->isEnabled());
    focus();
    EXPECT_EQ(field().string(), " ") << "an empty field shows a blank while recording";
    center.clearPosted();
    press(tabKey, Event::optionKeyMask | 0x20, "\t");
    ASSERT_NE(stored(), nullptr);
    EXPECT_EQ(*stored(), PlistValue(PlistDictionary{{"Key Code", "48"},
                                                    {"Modifiers", "524320"},
                                                    {"Visual Representation", "\u2325\u21E5"},
                                                    {"Character", "\t"}}));
    EXPECT_NE(test::readText(settingsFile()).find("524320"), std::string::npos) << "saved";
    EXPECT_EQ(daemonUpdates(), 1u);
    EXPECT_EQ(field().string(), "\u2325\u21E5");
    EXPECT_TRUE(field().deleteButton()->isEnabled());
    EXPECT_FALSE(field().isRecording());
    EXPECT_TRUE(answers.shown.empty()) << "Option holds the key for the daemon alone";
}

TEST_F(HotKeyRecorderTest, CombinationsAlreadyHeldBeepAndRecordingGoesOn)
{
    focus();
    press(tabKey, Event::optionKeyMask, "\t");
    focus();
    const int beeps = Application::shared().beepCount();
    press(tabKey, Event::optionKeyMask, "\t"); // the very combination this slot holds
    EXPECT_EQ(Application::shared().beepCount(), beeps + 1);
    EXPECT_TRUE(field().isRecording());
    // Another slot with the same combination: refused too, with Caps Lock or the Fn key down
    // as well, since both are ignored unless the settings say otherwise (here they say nothing).
    clickInto(o().allBackwardTextView);
    press(tabKey, Event::optionKeyMask, "\t");
    press(tabKey, Event::optionKeyMask | Event::capsLockKeyMask, "\t");
    press(tabKey, Event::optionKeyMask | Event::functionKeyMask, "\t");
    EXPECT_EQ(Application::shared().beepCount(), beeps + 4);
    EXPECT_EQ(stored("Backward"), nullptr);
}

// The two lock-like keys follow their own settings: here Caps Lock counts and Fn does not.
TEST_F(HotKeyRecorderTest, CapsLockAndFnEachFollowTheirOwnSetting)
{
    pane->settings()["Ignore Caps Lock"] = PlistValue(false);
    pane->settings()["Ignore Function Key"] = PlistValue(true);
    focus();
    press(tabKey, Event::optionKeyMask, "\t");
    const int beeps = Application::shared().beepCount();
    clickInto(o().allBackwardTextView);
    press(tabKey, Event::optionKeyMask | Event::functionKeyMask, "\t");
    EXPECT_EQ(Application::shared().beepCount(), beeps + 1) << "Fn is ignored: the same keys";
    press(tabKey, Event::optionKeyMask | Event::capsLockKeyMask, "\t");
    EXPECT_EQ(Application::shared().beepCount(), beeps + 1) << "Caps Lock makes it another";
    EXPECT_NE(stored("Backward"), nullptr);
}

// The reason is shown beside the field for a few seconds, naming the slot by its label.
TEST_F(HotKeyRecorderTest, ARefusalSaysWhoHoldsTheCombination)
{
    F5IsHeld held;
    hotKeys = &held;
    pane.reset();
    load();
    paneWindow.setContentView(main->shared_from_this());
    clickInto(o().normalBackwardTextView);
    press(f5Key, Event::controlKeyMask, "x");
    clickInto(o().zoomFrontmostTextView);
    press(tabKey, Event::controlKeyMask, "\t");

    clickInto(o().allForwardTextView);
    press(tabKey, Event::controlKeyMask, "\t");
    EXPECT_EQ(o().allForwardTextView->notice(),
              "\u2303\u21E5 is already used by Zoom the frontmost window");
    loop.advance(1.0);
    press(f5Key, Event::optionKeyMask, "x");
    EXPECT_EQ(o().allForwardTextView->notice(), "\u2325F5 is held by another program");
    loop.advance(KRVXHotKeyTextView::refusalNoticeTime - 0.1);
    EXPECT_FALSE(o().allForwardTextView->notice().empty()) << "each refusal is shown anew";
    loop.advance(0.2);
    EXPECT_EQ(o().allForwardTextView->notice(), "");

    press(f5Key, Event::controlKeyMask, "x");
    EXPECT_EQ(o().allForwardTextView->notice(),
              "\u2303F5 is already used by Non-minimized windows (Backward)");
    press(spaceKey, Event::controlKeyMask, " ");
    EXPECT_EQ(o().allForwardTextView->notice(), "") << "a combination taken clears it";
}

// The desktop names who holds what the display's probe refuses, and refuses what only its
// settings know of; where it cannot be asked, the combination is taken with a quiet note.
TEST_F(HotKeyRecorderTest, TheDesktopNamesTheOwnerOfACombinationItUses)
{
    F5IsHeld held;
    DesktopShortcuts desktop;
    hotKeys = &held;
    shortcutOwners = &desktop;
    pane.reset();
    load();
    paneWindow.setContentView(main->shared_from_this());
    focus();
    const int beeps = Application::shared().beepCount();
    press(f5Key, Event::optionKeyMask, "x");
    EXPECT_EQ(o().allForwardTextView->notice(), "\u2325F5 is used by Openbox: NextWindow");
    ASSERT_FALSE(desktop.asked.empty());
    EXPECT_EQ(desktop.asked.back(),
              (std::pair<std::uint16_t, unsigned>{f5Key, ShortcutOwners::alt}))
        << "Option is the desktop's Alt";
    press(spaceKey, Event::controlKeyMask | Event::optionKeyMask, " ");
    EXPECT_EQ(o().allForwardTextView->notice(), "\u2303\u2325Space is used by GNOME")
        << "free for the probe, taken by the desktop's settings";
    EXPECT_EQ(Application::shared().beepCount(), beeps + 2);
    EXPECT_EQ(stored(), nullptr);
    EXPECT_TRUE(field().isRecording());

    // A clash with the pane's own slots is named as before, without asking the desktop.
    const auto askedBefore = desktop.asked.size();
    press(f5Key, Event::controlKeyMask, "x");
    clickInto(o().allBackwardTextView);
    press(f5Key, Event::controlKeyMask, "x");
    EXPECT_NE(o().allBackwardTextView->notice().find("is already used by"), std::string::npos);
    EXPECT_EQ(desktop.asked.size(), askedBefore + 1) << "asked for the first, free one only";

    desktop.unknown = true;
    press(f5Key, Event::controlKeyMask | Event::shiftKeyMask, "x");
    EXPECT_NE(stored("Backward"), nullptr);
    EXPECT_EQ(o().allBackwardTextView->notice(),
              "\u2303\u21E7F5 is set; the desktop could not be asked whether it uses it too");
    loop.advance(KRVXHotKeyTextView::refusalNoticeTime + 0.1);
    EXPECT_EQ(o().allBackwardTextView->notice(), "");
}

// The first look says where a stored combination is the desktop's own, and changes nothing.
TEST_F(HotKeyRecorderTest, TheFirstLookSaysWhichStoredKeysTheDesktopUses)
{
    DesktopShortcuts desktop;
    shortcutOwners = &desktop;
    pane.reset();
    load();
    pane->settings()["Cycle All Windows"] = PlistDictionary{
        {"Forward", PlistDictionary{{"Key Code", std::to_string(f5Key)},
                                    {"Modifiers", std::to_string(Event::optionKeyMask)},
                                    {"Visual Representation", "\u2325F5"}}},
        {"Backward", PlistDictionary{{"Key Code", std::to_string(f5Key)},
                                     {"Modifiers", std::to_string(Event::controlKeyMask)},
                                     {"Visual Representation", "\u2303F5"}}}};
    pane->willSelect();
    EXPECT_EQ(o().allForwardTextView->notice(), "\u2325F5 is used by Openbox: NextWindow");
    EXPECT_EQ(o().allBackwardTextView->notice(), "") << "a key nobody else uses";
    loop.advance(KRVXHotKeyTextView::refusalNoticeTime * 3);
    EXPECT_NE(o().allForwardTextView->notice(), "") << "it stands until the user acts";
    EXPECT_NE(stored(), nullptr) << "nothing is changed for the user";
    const auto asked = desktop.asked.size();
    pane->didUnselect();
    pane->willSelect();
    EXPECT_EQ(desktop.asked.size(), asked) << "said once";
    pane->didUnselect();
}

TEST_F(HotKeyRecorderTest, KeysWithoutShiftControlOrOptionAskFirst)
{
    focus();
    answers.answer = Alerts::alternateReturn; // Cancel
    press(spaceKey, Event::commandKeyMask, " ");
    ASSERT_EQ(answers.shown.size(), 1u);
    EXPECT_EQ(answers.shown[0].title, "Vexto - Warning");
    EXPECT_EQ(answers.shown[0].defaultButton, "Use \"\u2318Space\"");
    EXPECT_EQ(answers.shown[0].alternateButton, "Cancel");
    EXPECT_NE(answers.shown[0].message.find("\"\u2318Space\" being reserved by Vexto"),
              std::string::npos);
    EXPECT_TRUE(field().isRecording()) << "Cancel keeps recording";
    EXPECT_EQ(stored(), nullptr);

    press(f5Key, 0, "");
    EXPECT_EQ(answers.shown.size(), 2u) << "a plain F5 asks too";
    press(spaceKey, Event::controlKeyMask, " ");
    EXPECT_EQ(answers.shown.size(), 2u) << "Control does not";
    focus();
    press(f5Key, Event::shiftKeyMask, "");
    EXPECT_EQ(answers.shown.size(), 2u) << "nor Shift";

    // Command-Escape is recorded, after asking; plain Escape only ends recording.
    answers.answer = Alerts::defaultReturn;
    clickInto(o().allBackwardTextView);
    press(escapeKey, Event::commandKeyMask, "\x1b");
    EXPECT_EQ(answers.shown.size(), 3u);
    EXPECT_EQ(o().allBackwardTextView->string(), "\u2318Escape");
    clickInto(o().allBackwardTextView);
    press(escapeKey, 0, "\x1b");
    EXPECT_FALSE(o().allBackwardTextView->isRecording());
    EXPECT_EQ(o().allBackwardTextView->string(), "\u2318Escape") << "contents unchanged";
}

TEST_F(HotKeyRecorderTest, RecordingEndsAfterThirtySecondsOrAClickElsewhere)
{
    focus();
    loop.advance(29.9);
    EXPECT_TRUE(field().isRecording());
    loop.advance(0.2);
    EXPECT_FALSE(field().isRecording());
    EXPECT_EQ(field().string(), "No Shortcut");

    focus();
    clickInto(o().allBackwardTextView);
    EXPECT_FALSE(field().isRecording());
    EXPECT_EQ(field().string(), "No Shortcut");
    EXPECT_EQ(field().selectionRangeForProposedRange(TextRange{2, 1}),
              (TextRange{0, field().length()}))
        << "all of it or nothing";
}

TEST_F(HotKeyRecorderTest, ClearingRemovesTheRecordAndAnEmptySlotOnlyLogs)
{
    focus();
    press(tabKey, Event::optionKeyMask, "\t");
    center.clearPosted();
    field().deleteButton()->performClick();
    EXPECT_EQ(stored(), nullptr);
    EXPECT_NE(pane->valueForSetting("Cycle All Windows"), nullptr) << "the table stays";
    EXPECT_EQ(field().string(), "No Shortcut");
    EXPECT_FALSE(field().deleteButton()->isEnabled());
    EXPECT_EQ(daemonUpdates(), 1u);
    field().deleteHotKey();
    EXPECT_EQ(logged, std::vector<std::string>{"[Vexto] superfluous deletion"});
    EXPECT_EQ(daemonUpdates(), 1u) << "nothing saved";
}

TEST_F(HotKeyRecorderTest, AStoredRecordIsRelabelledFromItsModifiersAndKey)
{
    writeSettings(PlistDictionary{
        {"Require Exact Modifier Key Matches", true},
        {"Cycle All Windows",
         PlistDictionary{
             {"Forward", PlistDictionary{{"Key Code", "49"},
                                         {"Modifiers", "1048584"},
                                         {"Visual Representation", "old"}}},
             {"Backward", PlistDictionary{{"Modifiers", "262144"},
                                          {"Visual Representation", "\u2318\u2325^"}}}}}});
    load();
    EXPECT_EQ(o().allForwardTextView->string(), "\u24C1\u2318Space");
    EXPECT_EQ(o().allBackwardTextView->string(), "\u2303^") << "no key code: the trimmed label";
}

TEST_F(HotKeyRecorderTest, TheTapHandsTabOnlyToARecordingFieldOfTheKeyWindow)
{
    pane->didSelect();
    ASSERT_EQ(keyTaps.liveTaps(), 1u);
    const Event optionTab =
        Event::key(Event::Type::KeyDown, tabKey, Event::optionKeyMask, "\t", "\t");
    const Event plainA = Event::key(Event::Type::KeyDown, 0, Event::controlKeyMask, "a", "a");
    EXPECT_FALSE(keyTaps.deliver(optionTab)) << "no field records";
    focus();
    EXPECT_FALSE(keyTaps.deliver(plainA)) << "keys other than Tab always pass";
    Application::shared().setActive(false);
    EXPECT_FALSE(keyTaps.deliver(optionTab)) << "the application is not active";
    Application::shared().setActive(true);
    Window other(Rect(0, 0, 10, 10));
    other.makeKeyAndOrderFront();
    EXPECT_FALSE(keyTaps.deliver(optionTab)) << "the pane's window is not key";
    paneWindow.makeKeyAndOrderFront();
    EXPECT_TRUE(keyTaps.deliver(optionTab)) << "swallowed: straight to the field";
    EXPECT_NE(stored(), nullptr) << "and recorded there";
    EXPECT_EQ(field().string(), "\u2325\u21E5");
}

TEST_F(HotKeyRecorderTest, TheTapComesBackAfterASpaceChangeAndIsReenabled)
{
    pane->didSelect();
    keyTaps.disableAll();
    pane->didSelect(); // registering again only switches the tap on
    EXPECT_EQ(keyTaps.created(), 1);
    EXPECT_TRUE(keyTaps.allEnabled());
    pane->spaceDidChange();
    EXPECT_EQ(keyTaps.liveTaps(), 0u);
    loop.advance(0.1);
    EXPECT_EQ(keyTaps.liveTaps(), 1u);
    EXPECT_EQ(keyTaps.created(), 2);
    pane->spaceDidChange();
    pane->didUnselect();
    loop.advance(1);
    EXPECT_EQ(keyTaps.liveTaps(), 0u) << "leaving withdraws the pending registration too";
}

} // namespace
} // namespace vexto
