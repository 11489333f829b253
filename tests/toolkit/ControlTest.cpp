#include "toolkit/Application.hpp"
#include "toolkit/Button.hpp"
#include "toolkit/ColorPanel.hpp"
#include "toolkit/ColorWell.hpp"
#include "toolkit/PopUpButton.hpp"
#include "toolkit/Slider.hpp"
#include "toolkit/TextField.hpp"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace vexto {
namespace {

// Records which actions arrived, with their senders.
struct Recorder : ActionTable {
    std::vector<std::string> log;
    std::vector<ActionSender> senders;
    explicit Recorder(std::initializer_list<const char*> selectors)
    {
        for (const char* selector : selectors) {
            on(selector, [this, selector](const ActionSender& sender) {
                log.push_back(selector);
                senders.push_back(sender);
            });
        }
    }
};

TEST(ButtonTest, ClicksCycleOnOffMixedOnlyWhereMixedIsAllowed)
{
    Button box({}, Button::Kind::CheckBox);
    std::vector<int> states;
    for (int i = 0; i < 3; ++i) {
        box.performClick();
        states.push_back(box.state());
    }
    EXPECT_EQ(states, (std::vector<int>{1, 0, 1}));

    box.setAllowsMixedState(true);
    box.setState(Button::onState);
    states.clear();
    for (int i = 0; i < 4; ++i) {
        box.performClick();
        states.push_back(box.state());
    }
    EXPECT_EQ(states, (std::vector<int>{0, -1, 1, 0}));
}

TEST(ButtonTest, NegativeStatesAreMixedOnlyWhereAllowedAndOtherwiseOn)
{
    Button box({}, Button::Kind::CheckBox);
    box.setState(-1);
    EXPECT_EQ(box.state(), Button::onState);
    box.setState(7);
    EXPECT_EQ(box.state(), Button::onState);
    box.setAllowsMixedState(true);
    box.setState(-5);
    EXPECT_EQ(box.state(), Button::mixedState);
    box.setAllowsMixedState(false);
    EXPECT_EQ(box.state(), Button::onState) << "mixed cannot survive losing the mixed state";
}

TEST(ButtonTest, AClickSendsTheActionAfterTheStateChangesAndNotWhileDisabled)
{
    Recorder pane{"toggleBooleanSetting:"};
    Button box({}, Button::Kind::CheckBox);
    box.setTarget(&pane);
    box.setAction("toggleBooleanSetting:");
    int stateSeen = -2;
    pane.on("toggleBooleanSetting:",
            [&](const ActionSender& sender) { stateSeen = sender.viewAs<Button>()->state(); });
    box.performClick();
    EXPECT_EQ(stateSeen, Button::onState);
    box.setEnabled(false);
    stateSeen = -2;
    box.performClick();
    EXPECT_EQ(stateSeen, -2);
    EXPECT_EQ(box.state(), Button::onState);

    Button push;
    push.setTarget(&pane);
    push.setAction("notHandled:");
    EXPECT_FALSE(push.sendAction());
}

class PopUpButtonTest : public ::testing::Test {
protected:
    PopUpButtonTest()
    {
        for (int tag : {0, 200, 500, 1000}) {
            popUp.addItemWithTitle(std::to_string(tag) + " ms").setTag(tag);
        }
    }
    PopUpButton popUp;
};

TEST_F(PopUpButtonTest, SelectionByIndexLeavesNothingSelectedWhenOutOfRange)
{
    popUp.selectItemAtIndex(2);
    EXPECT_EQ(popUp.indexOfSelectedItem(), 2);
    EXPECT_EQ(popUp.selectedTag(), 500);
    EXPECT_EQ(popUp.itemAtIndex(2)->state(), 1) << "a pop-up ticks its selected item";
    for (int index : {7, -1, 4}) {
        popUp.selectItemAtIndex(index);
        EXPECT_EQ(popUp.indexOfSelectedItem(), -1) << index;
        EXPECT_EQ(popUp.selectedItem(), nullptr);
        EXPECT_EQ(popUp.selectedTag(), -1);
        EXPECT_EQ(popUp.titleOfSelectedItem(), "");
    }
    EXPECT_EQ(popUp.itemAtIndex(2)->state(), 0);
}

TEST_F(PopUpButtonTest, SelectionByTagFailsWithNothingSelected)
{
    EXPECT_TRUE(popUp.selectItemWithTag(1000));
    EXPECT_EQ(popUp.indexOfSelectedItem(), 3);
    EXPECT_FALSE(popUp.selectItemWithTag(3));
    EXPECT_EQ(popUp.indexOfSelectedItem(), -1);
}

TEST_F(PopUpButtonTest, RemovingTheSelectedItemClearsTheSelection)
{
    popUp.selectItemAtIndex(1);
    popUp.menu().removeItemAtIndex(0);
    EXPECT_EQ(popUp.indexOfSelectedItem(), 0) << "the selection follows its item";
    popUp.menu().removeItemAtIndex(0);
    EXPECT_EQ(popUp.indexOfSelectedItem(), -1);
}

TEST(PullDownTest, ChoosingSendsTheItemsOwnActionElseTheButtons)
{
    Recorder pane{"chooseLayoutPresets:", "changeFont:"};
    PopUpButton pullDown({}, true);
    pullDown.setTarget(&pane);
    pullDown.setAction("chooseLayoutPresets:");
    pullDown.addItemWithTitle("Layouts");
    MenuItem& plain = pullDown.addItemWithTitle("Dark");
    MenuItem& own = pullDown.addItemWithTitle("Helvetica");
    own.setAction("changeFont:");
    own.setTarget(&pane);

    pullDown.userDidChooseItem(plain);
    EXPECT_EQ(pullDown.indexOfSelectedItem(), 1);
    EXPECT_EQ(pullDown.title(), "Layouts") << "a pull-down keeps showing its title item";
    EXPECT_EQ(plain.state(), 0) << "a pull-down does not tick what was chosen";
    pullDown.userDidChooseItem(own);
    EXPECT_EQ(pane.log, (std::vector<std::string>{"chooseLayoutPresets:", "changeFont:"}));
    EXPECT_EQ(pane.senders[0].view(), &pullDown);
    EXPECT_EQ(pane.senders[1].menuItem(), &own);
}

TEST(MenuTest, TheDelegateRebuildsTheMenuEachTimeItOpens)
{
    struct Rebuilder : MenuDelegate {
        int openings = 0;
        void menuNeedsUpdate(Menu& menu) override
        {
            ++openings;
            while (menu.numberOfItems() > 1) {
                menu.removeItemAtIndex(1);
            }
            for (int i = 0; i < openings; ++i) {
                menu.addItemWithTitle("Layout " + std::to_string(i));
            }
        }
    } delegate;
    PopUpButton pullDown({}, true);
    pullDown.addItemWithTitle("Layouts");
    pullDown.menu().setDelegate(&delegate);
    int changes = 0;
    pullDown.addObserver([&](View&, ViewChange change) { changes += change == ViewChange::Items; });
    pullDown.willOpenMenu();
    pullDown.willOpenMenu();
    EXPECT_EQ(pullDown.itemTitles(), (std::vector<std::string>{"Layouts", "Layout 0", "Layout 1"}));
    EXPECT_GT(changes, 0) << "a front hears that the menu changed";
}

TEST(MenuTest, AnItemBelongsToOneMenuAndSubmenusKnowTheirParent)
{
    Menu fonts;
    auto item = std::make_shared<MenuItem>("Helvetica");
    fonts.addItem(item);
    Menu other;
    other.addItem(item);
    EXPECT_EQ(other.numberOfItems(), 0);
    auto members = std::make_shared<Menu>("Helvetica");
    item->setSubmenu(members);
    EXPECT_EQ(members->supermenu(), &fonts);
    int fontsChanged = 0;
    fonts.addObserver([&](Menu&) { ++fontsChanged; });
    members->addItemWithTitle("Helvetica Bold").setState(-1);
    EXPECT_GT(fontsChanged, 0) << "submenu changes reach the menu shown";
    EXPECT_EQ(members->itemAtIndex(0)->state(), -1);
    EXPECT_EQ(fonts.indexOfItemWithTag(99), -1);
}

TEST(SliderTest, TheValueStaysWithinTheRange)
{
    Slider slider({}, -60, 60);
    slider.setDoubleValue(75);
    EXPECT_EQ(slider.intValue(), 60);
    slider.setDoubleValue(-3.7);
    EXPECT_EQ(slider.intValue(), -3);
    slider.setMaxValue(0);
    EXPECT_EQ(slider.doubleValue(), -3.7);
    slider.setMinValue(1);
    EXPECT_DOUBLE_EQ(slider.doubleValue(), 0) << "clamped into the new range";
}

TEST(TextFieldTest, EditingTellsTheDelegateAfterTheTextChanged)
{
    struct Delegate : TextFieldDelegate {
        std::vector<std::string> seen;
        void controlTextDidChange(TextField& field) override
        {
            seen.push_back(field.stringValue());
        }
    } delegate;
    TextField field;
    field.setEditable(true);
    field.setDelegate(&delegate);
    field.setStringValue("programmatic");
    field.userDidEditText("Finder,");
    EXPECT_EQ(delegate.seen, (std::vector<std::string>{"Finder,"}));
    EXPECT_EQ(field.intValue(), 0);
}

class ColorWellTest : public ::testing::Test {
protected:
    void TearDown() override { ColorPanel::resetForTesting(); }
};

TEST_F(ColorWellTest, TheActiveWellTakesThePanelsColoursAndSendsItsAction)
{
    Recorder pane{"changeColorSetting:"};
    ColorWell first;
    ColorWell second;
    for (ColorWell* well : {&first, &second}) {
        well->setTarget(&pane);
        well->setAction("changeColorSetting:");
    }
    EXPECT_EQ(ColorPanel::sharedIfExists(), nullptr);
    first.setColor(Color::calibratedWhite(0, 0.5f));
    first.activate(true);
    ASSERT_NE(ColorPanel::sharedIfExists(), nullptr);
    EXPECT_EQ(ColorPanel::shared().color(), first.color());
    second.performClick();
    EXPECT_FALSE(first.isActive());
    EXPECT_TRUE(second.isActive());

    ColorPanel::shared().userDidPickColor(Color::calibratedRGB(1, 0, 0, 1));
    EXPECT_EQ(second.color(), Color::calibratedRGB(1, 0, 0, 1));
    EXPECT_EQ(first.color(), Color::calibratedWhite(0, 0.5f));
    ASSERT_EQ(pane.senders.size(), 1u);
    EXPECT_EQ(pane.senders[0].view(), &second);

    second.performClick();
    ColorPanel::shared().userDidPickColor(Color::whiteColor());
    EXPECT_EQ(pane.senders.size(), 1u) << "no well follows the panel after deactivation";
}

} // namespace
} // namespace vexto
