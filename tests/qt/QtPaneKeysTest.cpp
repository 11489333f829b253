// The whole pane in a mirrored Qt window: real Qt key presses reach the hot-key field through the
// application's key tap and the field records, labels and saves them.
#include "../pane/PaneTestFixture.hpp"
#include "QtTestApplication.hpp"
#include "foundation/DictionaryExtensions.hpp"
#include "hotkeys/KRVXHotKeyTextView.hpp"
#include "qt/QtKeyEventTaps.hpp"
#include "qt/QtViewMirror.hpp"
#include "qt/QtWindowMirror.hpp"
#include "toolkit/TabView.hpp"
#include "toolkit/Window.hpp"

#include <QApplication>
#include <QTest>

namespace vexto {
namespace {

class QtPaneKeysTest : public test::PaneTest {
protected:
    static void SetUpTestSuite() { test::ensureQApplication(); }

    QtPaneKeysTest()
    {
        writeDefaults(PlistDictionary{{"Cycle All Windows", PlistDictionary{}}});
        PaneEnvironment environment{loop, center, desktop, desktop, desktop, nullptr};
        environment.keyTaps = &qtTaps;
        pane = std::make_unique<KRVXPreferencePane>(bundlePath(), environment);
        main = pane->loadMainView();
        const Rect content = main->frame();
        window = std::make_unique<Window>(Rect(0, 0, content.width(), content.height()));
        window->setContentView(main->shared_from_this());
        window->makeKeyAndOrderFront();
        o().settingsTabView->selectTabViewItemWithIdentifier("triggers");
        mirror = std::make_unique<QtWindowMirror>(*window);
        mirror->widget()->show();
        QApplication::processEvents();
    }
    ~QtPaneKeysTest() override
    {
        mirror.reset();
        window.reset();
    }

    QWidget* fieldWidget() const
    {
        QtViewMirror* field = mirror->mirrorOf(o().allForwardTextView);
        return field != nullptr ? field->widget() : nullptr;
    }

    std::string savedModifiers()
    {
        const auto saved = PropertyListCodec::readFile(settingsFile()).value;
        const PlistValue* table = saved && saved->isDictionary()
                                      ? objectForKey(*saved->asDictionary(), "Cycle All Windows")
                                      : nullptr;
        const PlistValue* forward = table != nullptr && table->isDictionary()
                                        ? objectForKey(*table->asDictionary(), "Forward")
                                        : nullptr;
        const PlistValue* modifiers = forward != nullptr && forward->isDictionary()
                                          ? objectForKey(*forward->asDictionary(), "Modifiers")
                                          : nullptr;
        return modifiers != nullptr && modifiers->isString() ? *modifiers->asString() : "";
    }

    QtKeyEventTaps qtTaps;
    std::unique_ptr<Window> window;
    std::unique_ptr<QtWindowMirror> mirror;
};

TEST_F(QtPaneKeysTest, AComboPressedInTheFieldIsRecordedWithTheSideOfItsModifierKeys)
{
    QWidget* field = fieldWidget();
    ASSERT_NE(field, nullptr);
    QTest::mouseClick(field, Qt::LeftButton);
    // X key code 105 is the right Control key, 71 is F5.
    const auto send = [field](QEvent::Type type, int key, Qt::KeyboardModifiers held,
                              quint32 scanCode) {
        QKeyEvent event(type, key, held, scanCode, 0, 0);
        QApplication::sendEvent(field, &event);
    };
    send(QEvent::KeyPress, Qt::Key_Control, Qt::NoModifier, 105);
    send(QEvent::KeyPress, Qt::Key_F5, Qt::ControlModifier | Qt::ShiftModifier, 71);
    send(QEvent::KeyRelease, Qt::Key_F5, Qt::ControlModifier | Qt::ShiftModifier, 71);
    send(QEvent::KeyRelease, Qt::Key_Control, Qt::ControlModifier, 105);

    EXPECT_EQ(o().allForwardTextView->string(), "⌃⇧F5");
    EXPECT_EQ(savedModifiers(),
              std::to_string(Event::controlKeyMask | Event::shiftKeyMask | 0x2000 | 0x0002));
}

TEST_F(QtPaneKeysTest, EscapeAndControlWCloseTheWindowUnlessAFieldIsRecording)
{
    mirror->closeOnStandardKeys();
    QWidget* field = fieldWidget();
    ASSERT_NE(field, nullptr);
    QTest::mouseClick(field, Qt::LeftButton);
    ASSERT_TRUE(o().allForwardTextView->isRecording());
    QTest::keyClick(field, Qt::Key_W, Qt::ControlModifier);
    EXPECT_TRUE(mirror->widget()->isVisible());
    EXPECT_EQ(o().allForwardTextView->string(), "⌃W");

    QTest::mouseClick(field, Qt::LeftButton);
    ASSERT_TRUE(o().allForwardTextView->isRecording());
    QTest::keyClick(field, Qt::Key_Escape);
    EXPECT_TRUE(mirror->widget()->isVisible()) << "Escape only ends the recording";
    EXPECT_FALSE(o().allForwardTextView->isRecording());

    QTest::keyClick(field, Qt::Key_Escape);
    EXPECT_FALSE(mirror->widget()->isVisible());
}

} // namespace
} // namespace vexto
