// The whole pane in a mirrored Qt window: real Qt key presses reach the hot-key field through the
// application's key tap and the field records, labels and saves them.
#include "../pane/PaneTestFixture.hpp"
#include "PaneWindow.hpp"
#include "QtTestApplication.hpp"
#include "foundation/DictionaryExtensions.hpp"
#include "hotkeys/KRVXHotKeyClearButton.hpp"
#include "hotkeys/KRVXHotKeyTextView.hpp"
#include "qt/QtKeyEventTaps.hpp"
#include "qt/QtViewMirror.hpp"
#include "qt/QtWindowMirror.hpp"
#include "toolkit/ColorPanel.hpp"
#include "toolkit/ColorWell.hpp"
#include "toolkit/PopUpButton.hpp"
#include "toolkit/Slider.hpp"
#include "toolkit/TabView.hpp"
#include "toolkit/Window.hpp"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QColorDialog>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <vector>

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
        window = test::paneWindowAround(*main);
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

// Tab from the first control of a tab page to the last: the widgets in the order they got the
// focus.
std::vector<QWidget*> tabChain(QWidget* first, QWidget* page, int most)
{
    std::vector<QWidget*> chain;
    first->setFocus(Qt::TabFocusReason);
    for (QWidget* at = QApplication::focusWidget();
         at != nullptr && chain.size() < std::size_t(most); at = QApplication::focusWidget()) {
        if (!page->isAncestorOf(at) || (!chain.empty() && at == chain.front())) {
            break;
        }
        chain.push_back(at);
        QTest::keyClick(at, Qt::Key_Tab);
    }
    return chain;
}

TEST_F(QtPaneKeysTest, TabReachesEveryWellAndHotKeyFieldInVisualOrderAndRecordsOnceRecording)
{
    const auto widgetOf = [this](const View* view) {
        return mirror->mirrorOf(view)->widget();
    };
    for (const char* tab : {"appearance", "triggers"}) {
        o().settingsTabView->selectTabViewItemWithIdentifier(tab);
        QApplication::processEvents();
        const bool wells = std::string(tab) == "appearance";
        QWidget* first = widgetOf(wells ? static_cast<const View*>(o().layoutPresetsPopUpButton)
                                        : o().allForwardTextView);
        QWidget* page = first->parentWidget();
        const std::vector<QWidget*> chain = tabChain(first, page, 80);
        const auto reached = [&](const View* view) {
            return std::find(chain.begin(), chain.end(), widgetOf(view)) != chain.end();
        };
        const std::vector<const View*> wanted =
            wells ? std::vector<const View*>{o().backgroundColorWell, o().selectionColorWell,
                                             o().quickLookBorderColorWell}
                  : std::vector<const View*>{o().allForwardTextView, o().allBackwardTextView,
                                             o().closeFrontmostApplicationMinimizedTextView};
        for (const View* view : wanted) {
            EXPECT_TRUE(reached(view)) << tab;
        }
        for (std::size_t i = 1; i < chain.size(); ++i) {
            const QPoint before = chain[i - 1]->mapTo(page, QPoint(0, 0));
            const QPoint after = chain[i]->mapTo(page, QPoint(0, 0));
            const bool sameRow = std::abs(after.y() - before.y()) <= 6;
            EXPECT_TRUE(sameRow ? after.x() > before.x() : after.y() > before.y())
                << tab << ": " << i << " at " << after.x() << "," << after.y() << " after "
                << before.x() << "," << before.y();
        }
    }
    // Space presses the field reached with Tab; it then records Tab like any other key.
    QWidget* field = fieldWidget();
    field->setFocus(Qt::TabFocusReason);
    QTest::keyClick(field, Qt::Key_Space);
    ASSERT_TRUE(o().allForwardTextView->isRecording());
    QTest::keyClick(field, Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(QApplication::focusWidget(), field);
    EXPECT_EQ(o().allForwardTextView->string(), "⌃⇥");
}

// Everything a click does, a keyboard does too: a shortcut is cleared with its button reached by
// Tab or with Delete, and nothing that does nothing stops Tab.
TEST_F(QtPaneKeysTest, ClearButtonsAndDeleteClearAShortcutFromTheKeyboard)
{
    const auto widgetOf = [this](const View* view) {
        return mirror->mirrorOf(view)->widget();
    };
    QWidget* field = fieldWidget();
    QWidget* clear = widgetOf(o().allForwardTextView->deleteButton());
    EXPECT_FALSE(clear->isEnabled()) << "nothing to clear: no stop for Tab, drawn disabled";
    QTest::mouseClick(field, Qt::LeftButton);
    QTest::keyClick(field, Qt::Key_F5, Qt::ControlModifier);
    EXPECT_TRUE(clear->isEnabled()) << "the button follows the recording at once";
    QTest::mouseClick(widgetOf(o().allBackwardTextView), Qt::LeftButton);
    QTest::keyClick(widgetOf(o().allBackwardTextView), Qt::Key_F6, Qt::ControlModifier);
    ASSERT_TRUE(o().allForwardTextView->isOccupied() && o().allBackwardTextView->isOccupied());

    QWidget* page = field->parentWidget();
    const std::vector<QWidget*> chain = tabChain(field, page, 6);
    ASSERT_GE(chain.size(), 3u);
    EXPECT_EQ(chain[1], widgetOf(o().allForwardTextView->deleteButton()))
        << "a field's clear button comes right after it";
    EXPECT_EQ(chain[2], widgetOf(o().allBackwardTextView));
    chain[1]->setFocus(Qt::TabFocusReason);
    QTest::keyClick(chain[1], Qt::Key_Space);
    EXPECT_FALSE(o().allForwardTextView->isOccupied());

    QWidget* backward = widgetOf(o().allBackwardTextView);
    backward->setFocus(Qt::TabFocusReason);
    QTest::keyClick(backward, Qt::Key_Backspace);
    EXPECT_FALSE(o().allBackwardTextView->isOccupied()) << "Backspace clears the focused field";
    EXPECT_FALSE(o().allBackwardTextView->isRecording());

    // Nothing that does nothing stops Tab: the scrolling around the pane is no stop.
    for (QWidget* each : mirror->widget()->findChildren<QAbstractScrollArea*>()) {
        EXPECT_FALSE(each->focusPolicy() & Qt::TabFocus);
    }
}

// The colour dialog applies what is picked at once, as the platform's panel does, the gradient
// strip too; Cancel puts back the colour and the gradient the well had when it opened.
TEST_F(QtPaneKeysTest, TheColourDialogAppliesLiveAndCancelPutsEverythingBack)
{
    o().settingsTabView->selectTabViewItemWithIdentifier("appearance");
    QApplication::processEvents();
    ColorWell& well = *o().selectionColorWell;
    const Color before = well.color();
    const PlistValue* storedGradient = pane->valueForSetting("Selection Gradient");
    const std::optional<std::int64_t> gradientBefore =
        storedGradient != nullptr ? storedGradient->integerValue() : std::nullopt;
    const auto gradientNow = [this] {
        const PlistValue* value = pane->valueForSetting("Selection Gradient");
        return value != nullptr ? value->integerValue() : std::nullopt;
    };
    const auto strip = [] {
        View* accessory = ColorPanel::shared().accessoryView().get();
        for (const auto& view :
             accessory != nullptr ? accessory->subviews() : std::vector<std::shared_ptr<View>>{}) {
            if (auto* slider = dynamic_cast<Slider*>(view.get())) {
                return slider;
            }
        }
        return static_cast<Slider*>(nullptr);
    };
    bool liveColour = false;
    bool liveGradient = false;
    QTimer::singleShot(50, [&] {
        auto* dialog = qobject_cast<QColorDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        dialog->setCurrentColor(QColor(255, 0, 0));
        liveColour = well.color() == Color::calibratedRGB(1, 0, 0, 1);
        Slider* slider = strip();
        ASSERT_NE(slider, nullptr);
        slider->setDoubleValue(40);
        slider->sendAction();
        liveGradient = gradientNow() == 40;
        dialog->reject();
    });
    mirror->mirrorOf(&well)->widget()->setFocus();
    QTest::keyClick(mirror->mirrorOf(&well)->widget(), Qt::Key_Space);
    EXPECT_TRUE(liveColour) << "a colour picked applies at once";
    EXPECT_TRUE(liveGradient);
    EXPECT_EQ(well.color(), before) << "Cancel puts the colour back";
    EXPECT_EQ(gradientNow(), gradientBefore.value_or(*gradientNow())) << "and the gradient";
    EXPECT_NE(gradientNow(), 40);

    QTimer::singleShot(50, [&] {
        auto* dialog = qobject_cast<QColorDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        dialog->setCurrentColor(QColor(0, 255, 0));
        dialog->accept();
    });
    QTest::keyClick(mirror->mirrorOf(&well)->widget(), Qt::Key_Space);
    EXPECT_EQ(well.color(), Color::calibratedRGB(0, 1, 0, 1)) << "OK keeps it";
}

} // namespace
} // namespace vexto
