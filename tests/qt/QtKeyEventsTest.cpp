// Real Qt key presses, turned into the platform's key codes and modifier words and delivered to
// a mirrored text view: Tab included, which Qt would otherwise use to move the focus.
#include "qt/QtKeyEvents.hpp"

#include "QtTestApplication.hpp"
#include "qt/QtKeyEventTaps.hpp"
#include "qt/QtKeyNames.hpp"
#include "qt/QtTranslations.hpp"
#include "qt/QtViewMirror.hpp"
#include "qt/QtWindowMirror.hpp"
#include "toolkit/Application.hpp"
#include "toolkit/TextView.hpp"
#include "toolkit/View.hpp"
#include "toolkit/Window.hpp"

#include <QKeyEvent>
#include <QTest>
#include <QTranslator>
#include <QWidget>
#include <gtest/gtest.h>

namespace vexto {
namespace {

class KeyLog : public TextView {
public:
    using TextView::TextView;
    std::vector<Event> keys;
    void keyDown(const Event& event) override { keys.push_back(event); }
};

class QtKeyEventsTest : public ::testing::Test {
protected:
    static void SetUpTestSuite() { test::ensureQApplication(); }
    QtKeyEventsTest()
    {
        Application::resetForTesting();
        window.contentView()->addSubview(log);
    }
    ~QtKeyEventsTest() override { Application::resetForTesting(); }

    // The window shown through its mirror, and the log's widget clicked to take the focus.
    static QWidget* showAndClickLog(QtWindowMirror& mirror)
    {
        mirror.widget()->show();
        QApplication::processEvents();
        QWidget* field = mirror.widget()->childAt(QPoint(20, 100 - 20));
        if (field != nullptr) {
            QTest::mouseClick(field, Qt::LeftButton);
        }
        return field;
    }

    Window window{Rect(0, 0, 300, 100)};
    std::shared_ptr<KeyLog> log = std::make_shared<KeyLog>(Rect(10, 10, 120, 22));
};

TEST_F(QtKeyEventsTest, KeysMapByTheirXKeyCodeOrElseByQtsKey)
{
    // X key code 65 is evdev 57, the space bar; 23 is evdev 15, Tab; 75 is evdev 67, F9.
    const std::pair<quint32, std::uint16_t> byScanCode[] = {
        {65, 0x31}, {23, 0x30}, {75, 0x65}, {47, 0x29}, {94, 0x0A}};
    for (const auto& [scanCode, virtualCode] : byScanCode) {
        QKeyEvent press(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, scanCode, 0, 0);
        const auto event = QtKeyEvents::modelEvent(press);
        ASSERT_TRUE(event) << scanCode;
        EXPECT_EQ(event->keyCode(), virtualCode) << scanCode;
    }
    const std::pair<int, std::uint16_t> byKey[] = {{Qt::Key_A, 0x00},       {Qt::Key_Q, 0x0C},
                                                   {Qt::Key_F5, 0x60},      {Qt::Key_Escape, 0x35},
                                                   {Qt::Key_Backtab, 0x30}, {Qt::Key_1, 0x12}};
    for (const auto& [key, virtualCode] : byKey) {
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
        EXPECT_EQ(QtKeyEvents::modelEvent(press)->keyCode(), virtualCode) << key;
    }
    QKeyEvent unknown(QEvent::KeyPress, Qt::Key_MediaPlay, Qt::NoModifier);
    EXPECT_FALSE(QtKeyEvents::modelEvent(unknown));
    // A modifier key pressed on its own is no key: X key code 37 is the left Control key.
    QKeyEvent control(QEvent::KeyPress, Qt::Key_Control, Qt::ControlModifier, 37, 0, 0);
    EXPECT_FALSE(QtKeyEvents::modelEvent(control));
}

TEST_F(QtKeyEventsTest, ModifiersCarryTheirDeviceBitsAndMetaIsCommand)
{
    QKeyEvent press(QEvent::KeyPress, Qt::Key_A,
                    Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier,
                    "A");
    const auto event = QtKeyEvents::modelEvent(press);
    ASSERT_TRUE(event);
    EXPECT_EQ(event->modifierFlags(), 0x1E0000u | 0x2 | 0x1 | 0x20 | 0x8);
    EXPECT_EQ(event->charactersIgnoringModifiers(), "A");
    QKeyEvent release(QEvent::KeyRelease, Qt::Key_Tab, Qt::AltModifier);
    EXPECT_EQ(QtKeyEvents::modelEvent(release)->type(), Event::Type::KeyUp);
    EXPECT_EQ(QtKeyEvents::modelEvent(release)->characters(), "\t");
}

TEST_F(QtKeyEventsTest, TheModifierKeysPressedNameTheSides)
{
    // X key codes 62 and 108 are the right Shift and the right Alt keys; 50 is the left Shift.
    const auto press = [](int key, quint32 scanCode, Qt::KeyboardModifiers held, bool down) {
        QKeyEvent event(down ? QEvent::KeyPress : QEvent::KeyRelease, key, held, scanCode, 0, 0);
        return QtKeyEvents::modelEvent(event);
    };
    const auto typeA = [](Qt::KeyboardModifiers held) {
        QKeyEvent event(QEvent::KeyPress, Qt::Key_A, held, 38, 0, 0, "a");
        return QtKeyEvents::modelEvent(event)->modifierFlags();
    };
    press(Qt::Key_Shift, 62, Qt::NoModifier, true);
    press(Qt::Key_Alt, 108, Qt::ShiftModifier, true);
    EXPECT_EQ(typeA(Qt::ShiftModifier | Qt::AltModifier),
              Event::shiftKeyMask | Event::optionKeyMask | 0x0004 | 0x0040);
    press(Qt::Key_Shift, 50, Qt::ShiftModifier | Qt::AltModifier, true);
    press(Qt::Key_Shift, 62, Qt::ShiftModifier | Qt::AltModifier, false);
    press(Qt::Key_Alt, 108, Qt::ShiftModifier | Qt::AltModifier, false);
    EXPECT_EQ(typeA(Qt::ShiftModifier), Event::shiftKeyMask | 0x0002);
    press(Qt::Key_Shift, 50, Qt::ShiftModifier, false);
    EXPECT_EQ(typeA(Qt::NoModifier), 0u);
}

TEST_F(QtKeyEventsTest, TabReachesTheFocusedFieldInsteadOfMovingTheFocus)
{
    auto other = std::make_shared<KeyLog>(Rect(150, 10, 120, 22));
    window.contentView()->addSubview(other);
    QtWindowMirror mirror(window);
    QWidget* field = showAndClickLog(mirror);
    ASSERT_NE(field, nullptr);
    ASSERT_TRUE(log->isFirstResponder());
    QTest::keyClick(field, Qt::Key_Tab, Qt::AltModifier);
    QTest::keyClick(field, Qt::Key_F5, Qt::ControlModifier | Qt::ShiftModifier);
    ASSERT_EQ(log->keys.size(), 2u);
    EXPECT_EQ(log->keys[0].keyCode(), 0x30);
    EXPECT_EQ(log->keys[0].modifierFlags(), 0x80020u);
    EXPECT_EQ(log->keys[1].keyCode(), 0x60);
    EXPECT_TRUE(log->isFirstResponder()) << "Tab did not move the focus";
    EXPECT_TRUE(other->keys.empty());
}

TEST_F(QtKeyEventsTest, ATapSeesKeysBeforeAnyWidgetAndMaySwallowThem)
{
    QtWindowMirror mirror(window);
    QWidget* field = showAndClickLog(mirror);
    ASSERT_NE(field, nullptr);

    QtKeyEventTaps taps;
    std::vector<std::uint16_t> seen;
    auto tap = taps.createTap([&](const Event& event) {
        seen.push_back(event.keyCode());
        return event.keyCode() == 0x30; // Tab is taken, the rest passes
    });
    QTest::keyClick(field, Qt::Key_Tab, Qt::ControlModifier);
    QTest::keyClick(field, Qt::Key_A);
    EXPECT_EQ(seen, (std::vector<std::uint16_t>{0x30, 0x30, 0x00, 0x00})) << "press and release";
    ASSERT_EQ(log->keys.size(), 1u) << "only what the tap let pass";
    EXPECT_EQ(log->keys[0].keyCode(), 0x00);
    tap->setEnabled(false);
    QTest::keyClick(field, Qt::Key_Tab);
    EXPECT_EQ(log->keys.size(), 2u) << "a switched-off tap takes nothing";
    tap.reset();
    QTest::keyClick(field, Qt::Key_B);
    EXPECT_EQ(seen.size(), 4u) << "a released tap sees nothing more";
}

TEST_F(QtKeyEventsTest, AKeyNoWidgetTakesReachesTheTapOnce)
{
    // Qt offers a key nobody accepts to each widget up the chain, the same event each time.
    QWidget window;
    auto* inner = new QWidget(&window);
    auto* field = new QWidget(inner);
    window.show();
    QApplication::processEvents();
    QtKeyEventTaps taps;
    int presses = 0;
    auto tap = taps.createTap([&](const Event& event) {
        presses += event.type() == Event::Type::KeyDown ? 1 : 0;
        return false;
    });
    QTest::keyClick(field, Qt::Key_B);
    EXPECT_EQ(presses, 1);
    QTest::keyClick(field, Qt::Key_B);
    QTest::keyClick(inner, Qt::Key_C);
    EXPECT_EQ(presses, 3) << "each press of its own";
}

} // namespace
} // namespace vexto

namespace vexto {
namespace {

// The desktop's words for each kind of symbol a hot-key field shows; what has no words stays.
TEST(QtKeyNamesTest, CombinationsReadInTheDesktopsWords)
{
    const std::pair<const char*, const char*> names[] = {
        {"\u2303\u21E7F5", "Ctrl+Shift+F5"},
        {"\u2325\u21E5", "Alt+Tab"},
        {"\u2318Space", "Super+Space"},
        {"\u2303\u2325\u2190", "Ctrl+Alt+Left"},
        {"\u2325\u2192", "Alt+Right"},
        {"\u2303\u21DF", "Ctrl+PgDown"},
        {"\u2325\u21B5", "Alt+Return"},
        {"\u2303\u232B", "Ctrl+Backspace"},
        {"\u2303\u2326", "Ctrl+Del"},
        {"\u2325Escape", "Alt+Esc"},
        {"\u2303#5", "Ctrl+Num+5"},
        {"\u2325F19", "Alt+F19"},
        {"\u2303a", "Ctrl+A"},
        {"\u2303\u00E4", "Ctrl+\u00C4"},
        {"\u24C1\u2303F5", "\u24C1\u2303F5"}, // an exact left-hand match has no words
        {"No Shortcut", "No Shortcut"},
        {"\u2303", "\u2303"},
    };
    ::unsetenv("XDG_CURRENT_DESKTOP");
    for (const auto& [symbols, words] : names) {
        EXPECT_EQ(QtKeyNames::nativeText(symbols).toStdString(), words) << symbols;
    }
    // KDE's own word for the key.
    ::setenv("XDG_CURRENT_DESKTOP", "KDE", 1);
    EXPECT_EQ(QtKeyNames::nativeText("\u2318Space").toStdString(), "Meta+Space");
    ::unsetenv("XDG_CURRENT_DESKTOP");
}

// A refusal names the combination as the field shows it, in words; the rest of the notice, and a
// notice that names no keys, stay as the model has them.
TEST(QtKeyNamesTest, ANoticeNamesItsKeysAsTheFieldDoes)
{
    View field;
    field.setNotice("\u2303\u2325Z is already used by Zoom", "\u2303\u2325Z");
    EXPECT_EQ(QtViewMirror::noticeText(field).toStdString(), "Ctrl+Alt+Z is already used by Zoom");
    field.setNotice("Saved \u2303 here");
    EXPECT_EQ(QtViewMirror::noticeText(field).toStdString(), "Saved \u2303 here");
}

} // namespace
} // namespace vexto

namespace vexto {
namespace {

// Qt's own buttons speak the pane's language: German where the pane is German, none for English.
TEST(QtTranslationsTest, QtsOwnTextsFollowThePanesLanguage)
{
    test::ensureQApplication();
    QCoreApplication& application = *QCoreApplication::instance();
    const auto removeInstalled = [&application] {
        for (QTranslator* each : application.findChildren<QTranslator*>()) {
            QCoreApplication::removeTranslator(each);
            delete each;
        }
    };
    const char* old = std::getenv("LC_ALL");
    const std::string saved = old != nullptr ? old : "";
    ::setenv("LC_ALL", "de_DE.UTF-8", 1);
    const bool german = QtTranslations::install(application);
    const QString cancel = QCoreApplication::translate("QPlatformTheme", "Cancel");
    removeInstalled();
    ::setenv("LC_ALL", "en_GB.UTF-8", 1);
    const bool english = QtTranslations::install(application);
    removeInstalled();
    if (old != nullptr) {
        ::setenv("LC_ALL", saved.c_str(), 1);
    } else {
        ::unsetenv("LC_ALL");
    }
    EXPECT_TRUE(german);
    EXPECT_EQ(cancel.toStdString(), "Abbrechen");
    EXPECT_FALSE(english);
}

} // namespace
} // namespace vexto
