#include "PaneTestFixture.hpp"
#include "foundation/DictionaryExtensions.hpp"
#include "toolkit/Button.hpp"
#include "toolkit/ColorPanel.hpp"
#include "toolkit/ColorWell.hpp"
#include "toolkit/PopUpButton.hpp"
#include "toolkit/Slider.hpp"
#include "toolkit/TextField.hpp"

namespace vexto {
namespace {

namespace keys = settingkeys;
using test::PaneTest;

class ControlBindingTest : public PaneTest {
protected:
    ControlBindingTest() { load(); }

    void drag(Slider* slider, double value)
    {
        Application::shared().setCurrentEvent(Event::mouse(Event::Type::LeftMouseDragged, Point{}));
        slider->setDoubleValue(value);
        slider->sendAction();
    }

    std::optional<double> storedReal(std::string_view key)
    {
        const PlistValue* value = pane->valueForSetting(key);
        return value != nullptr ? value->doubleValue() : std::nullopt;
    }
};

TEST_F(ControlBindingTest, SwitchingSpacesOnAgainReadsTheBadgeBoxLikeEveryCheckBox)
{
    // Not in the settings, on in the defaults file: the box shows on.
    writeDefaults(PlistDictionary{{std::string(keys::alwaysShowSpaceBadges), true}});
    load();
    pane->settings().erase(std::string(keys::alwaysShowSpaceBadges));
    Button* spaces = o().switchAcrossSpacesButton;
    spaces->setState(Button::offState);
    spaces->sendAction();
    spaces->setState(Button::onState);
    spaces->sendAction();
    EXPECT_EQ(o().showSpaceBadgesButton->state(), Button::onState);
    EXPECT_FALSE(pane->valueForSetting(keys::alwaysShowSpaceBadges)) << "nothing written";
}

TEST_F(ControlBindingTest, ExceptionItemsThatAreNotNamesSurviveTheNextKeystrokeAsText)
{
    writeSettings(
        PlistDictionary{{std::string(keys::windowExceptions), PlistArray{"a", 7, false}}});
    load();
    TextField* field = o().windowExceptionsTextField;
    EXPECT_EQ(field->stringValue(), "a,7,0");
    field->setStringValue(field->stringValue() + ",b");
    pane->controlTextDidChange(*field);
    EXPECT_EQ(*pane->valueForSetting(keys::windowExceptions),
              PlistValue(PlistArray{"a", "7", "0", "b"}));
}

TEST_F(ControlBindingTest, TheTimeoutSnapsToItsDefaultWhenDraggedNearIt)
{
    drag(o().timeoutSlider, 0.23);
    EXPECT_FLOAT_EQ(static_cast<float>(*storedReal(keys::accessibilityApiTimeout)), 0.2f);
    EXPECT_DOUBLE_EQ(o().timeoutSlider->doubleValue(), 0.2);
    EXPECT_EQ(o().timeoutSliderValueTextField->stringValue(), "200 ms (Default)");
    drag(o().timeoutSlider, 0.5);
    EXPECT_EQ(o().timeoutSliderValueTextField->stringValue(), "500 ms");
}

TEST_F(ControlBindingTest, APanelAlmostAsWideAsTheScreenIsStoredAsWideAsNeeded)
{
    for (const auto& [position, stored] : {std::pair{0.995, -1.0}, {0.99, -1.0}, {0.98, 0.98}}) {
        drag(o().maximumPaneWidthSlider, position);
        EXPECT_FLOAT_EQ(static_cast<float>(*storedReal(keys::maximumWidth)),
                        static_cast<float>(stored))
            << position;
    }
    drag(o().maximumTextSizeSlider, 200);
    EXPECT_FLOAT_EQ(static_cast<float>(*storedReal(keys::itemHeight)), 128);
}

TEST_F(ControlBindingTest, TheItemSizeStaysBetweenTwelveAndAHundredAndTwentyEightPoints)
{
    const std::pair<double, double> dragged[] = {
        {12, 12}, {5, 12}, {12.4, 12}, {127.6, 128}, {200, 128}};
    for (const auto& [to, stored] : dragged) {
        drag(o().maximumTextSizeSlider, to);
        EXPECT_EQ(storedReal("Item Height"), stored) << to;
    }
    EXPECT_EQ(o().maximumTextSizeTextField->stringValue(), "Item size: 128 pt.");
}

TEST_F(ControlBindingTest, TheWidthSlidersNarrowEndIsNarrow)
{
    // Below 0.01 a width means "as wide as needed": the slider must not reach there.
    drag(o().maximumPaneWidthSlider, 0);
    EXPECT_GE(*storedReal(keys::maximumWidth), 0.01);
    EXPECT_EQ(o().maximumPaneWidthTextField->stringValue(), "Vexto panel width: narrow");
}

TEST_F(ControlBindingTest, SlidersSaveHalfASecondLaterAndAskForASampleWhileDragging)
{
    pane->settings();
    center.clearPosted();
    drag(o().maximumTextSizeSlider, 64);
    EXPECT_TRUE(center.posted().empty());
    loop.advance(0.5);
    ASSERT_EQ(center.posted().size(), 1u);
    EXPECT_EQ(center.posted()[0].object, "Dummy");

    Application::shared().setCurrentEvent(Event::mouse(Event::Type::LeftMouseUp, Point{}));
    o().maximumTextSizeSlider->sendAction(); // the final release asks for no sample
    loop.advance(0.5);
    EXPECT_EQ(center.posted().back().object, std::nullopt);
}

TEST_F(ControlBindingTest,
       TheMixedSpaceBadgeStateStoresBothKeysAndIsNotRestoredBySwitchingSpacesOnAgain)
{
    o().showSpaceBadgesButton->setState(Button::mixedState);
    o().showSpaceBadgesButton->sendAction();
    EXPECT_TRUE(pane->boolForSetting(keys::alwaysShowSpaceBadges));
    EXPECT_TRUE(pane->boolForSetting(keys::hideCurrentSpaceBadges));

    Button* spaces = o().switchAcrossSpacesButton;
    spaces->setState(Button::offState);
    spaces->sendAction();
    EXPECT_EQ(o().showSpaceBadgesButton->state(), Button::offState);
    EXPECT_FALSE(o().showSpaceBadgesButton->isEnabled());
    EXPECT_FALSE(o().spaceBadgeColorWell->isEnabled());
    spaces->setState(Button::onState);
    spaces->sendAction();
    EXPECT_EQ(o().showSpaceBadgesButton->state(), Button::onState);
    EXPECT_TRUE(pane->boolForSetting(keys::hideCurrentSpaceBadges))
        << "the settings stay as they were";
}

// Every keystroke asks for its own save half a second later, however close the keystrokes
// come: the last save holds the last text.
TEST_F(ControlBindingTest, EachKeystrokeInAListLeadsToItsOwnSaveHalfASecondLater)
{
    pane->settings();
    center.clearPosted();
    TextField* field = o().applicationExceptionsTextField;
    for (const char* typed : {"M", "Ma", "Mai", "Mail"}) {
        field->userDidEditText(typed);
        loop.advance(0.3);
    }
    EXPECT_EQ(daemonUpdates(), 3u) << "saves at 0.5, 0.8 and 1.1 seconds";
    loop.advance(0.2);
    EXPECT_EQ(daemonUpdates(), 4u);
    loop.advance(5.0);
    EXPECT_EQ(daemonUpdates(), 4u);
    EXPECT_EQ(savedSettings().at(std::string(keys::applicationExceptions)),
              PlistValue(PlistArray{"Mail"}));
}

TEST_F(ControlBindingTest, ExceptionListsSplitAtEveryCommaAndAnEmptyFieldRemovesTheKey)
{
    TextField* field = o().applicationExceptionsTextField;
    field->userDidEditText("Finder,");
    EXPECT_EQ(*pane->valueForSetting(keys::applicationExceptions),
              PlistValue(PlistArray{"Finder", ""}));
    field->userDidEditText(" Mail , Safari");
    EXPECT_EQ(*pane->valueForSetting(keys::applicationExceptions),
              PlistValue(PlistArray{" Mail ", " Safari"}));
    field->userDidEditText("");
    EXPECT_FALSE(pane->valueForSetting(keys::applicationExceptions));
}

TEST_F(ControlBindingTest, TheKeyBadgeFollowsTheSelectionColourOnlyWithoutAColourOfItsOwn)
{
    ColorWell* selection = o().selectionColorWell;
    selection->setColor(Color::calibratedRGB(1, 0, 0, 1));
    selection->sendAction();
    EXPECT_EQ(o().keyBadgeColorWell->color(), Color::calibratedRGB(1, 0, 0, 1));
    EXPECT_FALSE(pane->valueForSetting(keys::keyBadgeColor)) << "following is not storing";

    archiveObject(pane->settings(), Color::whiteColor(), keys::keyBadgeColor);
    selection->setColor(Color::calibratedRGB(0, 1, 0, 1));
    selection->sendAction();
    EXPECT_EQ(o().keyBadgeColorWell->color(), Color::whiteColor());
}

TEST_F(ControlBindingTest, ChoosingNoIconsHidesTheOverlayBoxAtOnce)
{
    PopUpButton* icons = o().iconModePopUpButton;
    icons->userDidChooseItem(*icons->itemAtIndex(icons->menu().indexOfItemWithTag(0)));
    EXPECT_TRUE(o().showDocumentIconOverlaysButton->superview()->isHidden());
    EXPECT_EQ(pane->integerForSetting(keys::iconMode, -1), 0);
    icons->userDidChooseItem(*icons->itemAtIndex(icons->menu().indexOfItemWithTag(2)));
    EXPECT_FALSE(o().showDocumentIconOverlaysButton->superview()->isHidden());
}

TEST_F(ControlBindingTest, ShadowsAndNamesAskTheDaemonForASampleButQuickLookBordersDoNot)
{
    pane->settings();
    center.clearPosted();
    o().windowNameShadowButton->performClick();
    o().addCancelItemButton->performClick();
    ASSERT_EQ(center.posted().size(), 2u);
    EXPECT_EQ(center.posted()[0].object, "Dummy");
    EXPECT_EQ(center.posted()[1].object, std::nullopt);
    EXPECT_TRUE(o().addCancelItemPopUpButton->isEnabled());

    o().quickLookBorderColorWell->sendAction();
    loop.advance(0.5);
    EXPECT_EQ(center.posted().back().object, std::nullopt);
}

TEST_F(ControlBindingTest, TheSelectionStripStoresItsSnappedShadingLaterAndAsksForASample)
{
    pane->settings();
    center.clearPosted();
    o().selectionColorWell->performClick();
    const View* strip = ColorPanel::shared().accessoryView().get();
    ASSERT_NE(strip, nullptr);
    auto* slider = dynamic_cast<Slider*>(strip->subviews().at(0).get());
    ASSERT_NE(slider, nullptr);
    EXPECT_EQ(slider->doubleValue(), -15) << "no stored shading reads as the default";

    slider->setDoubleValue(5);
    slider->sendAction();
    EXPECT_TRUE(center.posted().empty());
    loop.advance(0.5);
    ASSERT_EQ(center.posted().size(), 1u);
    EXPECT_EQ(center.posted()[0].object, "Dummy");
    EXPECT_EQ(objectForKey(savedSettings(), keys::selectionGradient)->integerValue(), 8);

    o().backgroundColorWell->performClick();
    EXPECT_EQ(ColorPanel::shared().accessoryView(), nullptr);
}

} // namespace
} // namespace vexto
