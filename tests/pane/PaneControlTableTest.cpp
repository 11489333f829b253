#include "pane/PaneControlTable.hpp"

#include "PaneTestFixture.hpp"
#include "hotkeys/KRVXHotKeyClearButton.hpp"
#include "hotkeys/KRVXHotKeyTextView.hpp"
#include "toolkit/Button.hpp"
#include "toolkit/ColorWell.hpp"
#include "toolkit/PopUpButton.hpp"
#include "toolkit/Slider.hpp"
#include "toolkit/TabView.hpp"
#include "toolkit/TextField.hpp"

#include <set>

namespace vexto {
namespace {

using test::PaneTest;
using K = ControlKind;

// The settings the pane edits, written down independently of the product's table: a row moved,
// a key or a default changed there must disagree with this.
struct Expected {
    const char* outlet;
    const char* key;
    ControlKind kind;
    std::optional<std::int64_t> codeDefault;
};
const Expected settingControls[] = {
    {"switchAcrossSpacesButton", "Switch Across Spaces", K::CheckBox, 1},
    {"panelDelayPopUpButton", "Panel Delay", K::PopUpByTag, 200},
    {"panelScreenPopUpButton", "Show Panel On Mouse Screen", K::PopUpByTag, 0},
    {"addActivateItemButton", "Activate Item", K::CheckBox, {}},
    {"addActivateItemPopUpButton", "Activate Item Mode", K::PopUpByIndex, 0},
    {"addCancelItemButton", "Cancel Item", K::CheckBox, {}},
    {"addCancelItemPopUpButton", "Cancel Item Mode", K::PopUpByIndex, 1},
    {"activateOnNoModifiersButton", "Activate On No Modifiers", K::CheckBox, {}},
    {"initiallySelectNextWindowButton", "Step Forward Initially", K::CheckBox, {}},
    {"wrapAroundScrollingButton", "Wrap-Around Scrolling", K::CheckBox, {}},
    {"applicationsSortOrderPopUpButton", "Applications Sort Order", K::PopUpByTag, 3},
    {"invertApplicationsSortOrderButton", "Invert Applications Sort Order", K::CheckBox, {}},
    {"showApplicationNamesButton", "Show Application Names", K::CheckBox, {}},
    {"iconModePopUpButton", "Icon Mode", K::PopUpByTag, 1},
    {"showDocumentIconOverlaysButton", "Show Document Icon Overlays", K::CheckBox, {}},
    {"panelShadowButton", "Panel Shadow", K::CheckBox, {}},
    {"applicationNameShadowButton", "Application Name Shadow", K::CheckBox, {}},
    {"windowNameShadowButton", "Window Name Shadow", K::CheckBox, {}},
    {"applicationExceptionsTextField", "Application Exceptions", K::ExceptionsField, {}},
    {"windowExceptionsTextField", "Window Exceptions", K::ExceptionsField, {}},
    {"afterZoomingPopUpButton", "After-Zoom Selection", K::PopUpByIndex, 2},
    {"afterMinimizingPopUpButton", "After-Minimize Selection", K::PopUpByIndex, 2},
    {"afterClosingPopUpButton", "After-Close Selection", K::PopUpByIndex, 3},
    {"processWindowsWhenDoneButton", "Process Windows When Done", K::CheckBox, {}},
    {"backgroundColorWell", "Background Color", K::ColorWell, {}},
    {"selectionColorWell", "Selection Color", K::ColorWell, {}},
    {"selectionBorderColorWell", "Selection Border Color", K::ColorWell, {}},
    {"applicationNameColorWell", "Application Name Color", K::ColorWell, {}},
    {"windowNameColorWell", "Window Name Color", K::ColorWell, {}},
    {"selectionWindowNameColorWell", "Selection Window Name Color", K::ColorWell, {}},
    {"dockIndicatorBorderColorWell", "Dock Indicator Border Color", K::ColorWell, {}},
    {"showShortcutBadgesButton", "Show Shortcut Badges", K::CheckBox, {}},
    {"keyBadgeColorWell", "Key Badge Color", K::ColorWell, {}},
    {"showSpaceBadgesButton", "Always Show Space Badges", K::CheckBox, {}},
    {"spaceBadgeColorWell", "Space Indicator Color", K::ColorWell, {}},
    {"showQuickLookButton", "Show Previews", K::CheckBox, 1},
    {"quickLookDelayPopUpButton", "Preview Delay", K::PopUpByTag, 2000},
    {"quickLookBorderColorWell", "Preview Border Color", K::ColorWell, {}},
};

struct ExpectedHotKey {
    const char* outlet;
    const char* identifier;
    const char* direction; // "Any" for the fields without one
};
const ExpectedHotKey hotKeyFields[] = {
    {"allForwardTextView", "Cycle All Windows", "Forward"},
    {"allBackwardTextView", "Cycle All Windows", "Backward"},
    {"normalForwardTextView", "Cycle Non-Minimized Windows", "Forward"},
    {"normalBackwardTextView", "Cycle Non-Minimized Windows", "Backward"},
    {"minimizedForwardTextView", "Cycle Minimized Windows", "Forward"},
    {"minimizedBackwardTextView", "Cycle Minimized Windows", "Backward"},
    {"frontmostAllForwardTextView", "Cycle All Windows of Frontmost Application", "Forward"},
    {"frontmostAllBackwardTextView", "Cycle All Windows of Frontmost Application", "Backward"},
    {"frontmostNormalForwardTextView", "Cycle Non-Minimized Windows of Frontmost Application",
     "Forward"},
    {"frontmostNormalBackwardTextView", "Cycle Non-Minimized Windows of Frontmost Application",
     "Backward"},
    {"frontmostMinimizedForwardTextView", "Cycle Minimized Windows of Frontmost Application",
     "Forward"},
    {"frontmostMinimizedBackwardTextView", "Cycle Minimized Windows of Frontmost Application",
     "Backward"},
    {"zoomFrontmostTextView", "Additional Zoom Frontmost Window", "Any"},
    {"minimizeFrontmostTextView", "Additional Minimize Frontmost Window", "Any"},
    {"closeFrontmostTextView", "Additional Close Frontmost Window", "Any"},
    {"deminimizeAllMinimizedTextView", "Additional Deminimize All Minimized Windows", "Any"},
    {"deminimizeFrontmostApplicationMinimizedTextView",
     "Additional Deminimize Minimized Windows of Frontmost Application", "Any"},
    {"closeAllMinimizedTextView", "Additional Close All Minimized Windows", "Any"},
    {"closeFrontmostApplicationMinimizedTextView",
     "Additional Close Minimized Windows of Frontmost Application", "Any"},
};

class PaneControlTableTest : public PaneTest {
protected:
    PaneControlTableTest() { load(); }
};

TEST_F(PaneControlTableTest, EverySettingIsEditedByTheControlTheRequirementsName)
{
    for (const Expected& expected : settingControls) {
        SCOPED_TRACE(expected.outlet);
        const PaneControl* row = PaneControlTable::byOutlet(expected.outlet);
        ASSERT_NE(row, nullptr);
        EXPECT_EQ(row->key, expected.key);
        EXPECT_EQ(row->kind, expected.kind);
        EXPECT_EQ(PaneControlTable::codeDefault(*row), expected.codeDefault);
        // Through the automation surface, as scripts reach it.
        EXPECT_EQ(pane->settingForControl(pane->outletNamed(expected.outlet)), expected.key);
    }
    EXPECT_EQ(PaneControlTable::byOutlet("spaceBadgeColorWell")->olderSystemsKey,
              "Space Badge Color");
}

TEST_F(PaneControlTableTest, EveryHotKeyFieldEditsItsOwnSlot)
{
    for (const ExpectedHotKey& expected : hotKeyFields) {
        SCOPED_TRACE(expected.outlet);
        const auto* field = dynamic_cast<KRVXHotKeyTextView*>(pane->outletNamed(expected.outlet));
        ASSERT_NE(field, nullptr);
        EXPECT_EQ(field->hotKeyIdentifier(), expected.identifier);
        EXPECT_EQ(field->direction(), expected.direction);
        EXPECT_FALSE(pane->settingForControl(field)) << "hot keys are stored by their fields";
        // A refusal names a slot by its title: the label on the field's row.
        const TextField* label = nullptr;
        for (const auto& view : field->superview()->subviews()) {
            const auto* text = dynamic_cast<const TextField*>(view.get());
            if (text != nullptr && text->frame().maxX() <= field->frame().minX() &&
                std::abs(text->frame().midY() - field->frame().midY()) < 4) {
                label = text;
            }
        }
        ASSERT_NE(label, nullptr);
        EXPECT_EQ(label->stringValue(), field->title());
    }
    // The Forward column is the left one, under its title.
    for (std::size_t i = 0; i + 1 < 12; i += 2) {
        EXPECT_LT(pane->outletNamed(hotKeyFields[i].outlet)->frame().minX(),
                  pane->outletNamed(hotKeyFields[i + 1].outlet)->frame().minX());
        EXPECT_DOUBLE_EQ(pane->outletNamed(hotKeyFields[i].outlet)->frame().minY(),
                         pane->outletNamed(hotKeyFields[i + 1].outlet)->frame().minY());
    }
}

TEST_F(PaneControlTableTest, EachColourWellIsNamedForTheColourItSets)
{
    // The colour panel's title says which colour is being set; a swapped row would mislead.
    const std::pair<const char*, const char*> wells[] = {
        {"backgroundColorWell", "Background"},
        {"selectionColorWell", "Selection"},
        {"selectionBorderColorWell", "Selection border"},
        {"applicationNameColorWell", "Application names"},
        {"windowNameColorWell", "Window names"},
        {"selectionWindowNameColorWell", "Selected window name"},
        {"dockIndicatorBorderColorWell", "Dock indicator border"},
        {"keyBadgeColorWell", "Shortcut badges"},
        {"quickLookBorderColorWell", "Preview border"},
        {"spaceBadgeColorWell", "Space badges"},
    };
    for (const auto& [outlet, title] : wells) {
        const auto* well = dynamic_cast<ColorWell*>(pane->outletNamed(outlet));
        ASSERT_NE(well, nullptr) << outlet;
        EXPECT_EQ(well->title(), title) << outlet;
    }
}

TEST_F(PaneControlTableTest, NamesAndSettingsAreUniqueAndEveryRowHasItsControl)
{
    std::set<std::string_view> outlets;
    std::set<std::pair<std::string_view, std::string_view>> slots;
    for (const PaneControl& row : PaneControlTable::rows()) {
        SCOPED_TRACE(row.outlet);
        EXPECT_TRUE(outlets.insert(row.outlet).second) << "outlet named twice";
        if (!row.key.empty()) {
            EXPECT_TRUE(slots.insert({row.key, row.direction}).second) << "setting edited twice";
        }
        View* view = PaneControlTable::view(row, o());
        ASSERT_NE(view, nullptr);
        EXPECT_EQ(pane->outletNamed(row.outlet), view);
        if (!row.tab.empty()) {
            const TabView& tabs = *o().settingsTabView;
            const TabViewItem* tab =
                tabs.tabViewItemAtIndex(tabs.indexOfTabViewItemWithIdentifier(row.tab));
            ASSERT_NE(tab, nullptr);
            EXPECT_TRUE(view->isDescendantOf(tab->view().get())) << "not in its tab";
        }
    }
}

// What a person can change, anywhere in the pane.
bool isUserControl(const View& view)
{
    if (dynamic_cast<const KRVXHotKeyClearButton*>(&view) != nullptr) {
        return false; // part of its hot-key field
    }
    if (const auto* field = dynamic_cast<const TextField*>(&view)) {
        return field->isEditable();
    }
    return dynamic_cast<const Button*>(&view) != nullptr ||
           dynamic_cast<const PopUpButton*>(&view) != nullptr ||
           dynamic_cast<const Slider*>(&view) != nullptr ||
           dynamic_cast<const ColorWell*>(&view) != nullptr ||
           dynamic_cast<const KRVXHotKeyTextView*>(&view) != nullptr;
}

TEST_F(PaneControlTableTest, EveryControlTheInterfaceBuildsIsInTheTable)
{
    // The tab view holds only the selected tab's content: every tab is walked on its own.
    std::vector<const View*> pending{main};
    for (int tab = 0; tab < o().settingsTabView->numberOfTabViewItems(); ++tab) {
        pending.push_back(o().settingsTabView->tabViewItemAtIndex(tab)->view().get());
    }
    std::set<const View*> seen;
    int controls = 0;
    while (!pending.empty()) {
        const View* view = pending.back();
        pending.pop_back();
        if (!seen.insert(view).second) {
            continue;
        }
        for (const auto& child : view->subviews()) {
            pending.push_back(child.get());
        }
        if (isUserControl(*view)) {
            ++controls;
            EXPECT_NE(PaneControlTable::forView(view, o()), nullptr)
                << "a control of the interface is missing from the table";
        }
    }
    EXPECT_GT(controls, 60);
}

TEST_F(PaneControlTableTest, CodeDefaultsNameExistingItemsAndAgreeWithTheShippedDefaults)
{
    const auto shipped =
        PropertyListCodec::readFile(test::testData("../../resources/KRVXDefaultSettings.plist"));
    ASSERT_TRUE(shipped.value && shipped.value->isDictionary());
    const PlistDictionary& defaults = *shipped.value->asDictionary();
    for (const PaneControl& row : PaneControlTable::rows()) {
        const auto codeDefault = PaneControlTable::codeDefault(row);
        if (!codeDefault) {
            continue;
        }
        SCOPED_TRACE(row.outlet);
        if (const auto* popUp = dynamic_cast<PopUpButton*>(PaneControlTable::view(row, o()))) {
            const bool exists =
                row.kind == K::PopUpByTag
                    ? popUp->menu().indexOfItemWithTag(static_cast<int>(*codeDefault)) >= 0
                    : *codeDefault >= 0 && *codeDefault < popUp->numberOfItems();
            EXPECT_TRUE(exists) << "the default names no item";
        } else {
            EXPECT_TRUE(*codeDefault == 0 || *codeDefault == 1);
        }
        if (const auto found = defaults.find(row.key); found != defaults.end()) {
            EXPECT_EQ(found->second.integerValue(), codeDefault);
        }
    }
}

TEST_F(PaneControlTableTest, EachKindOfControlSendsItsOwnAction)
{
    const std::pair<ControlKind, std::string_view> actions[] = {
        {K::CheckBox, "toggleBooleanSetting:"},   {K::PopUpByTag, "changePopUpSettingWithTag:"},
        {K::PopUpByIndex, "changePopUpSetting:"}, {K::Slider, "changeSliderSetting:"},
        {K::ColorWell, "changeColorSetting:"},
    };
    for (const PaneControl& row : PaneControlTable::rows()) {
        for (const auto& [kind, action] : actions) {
            if (row.kind == kind) {
                const auto* control = dynamic_cast<Control*>(PaneControlTable::view(row, o()));
                ASSERT_NE(control, nullptr) << row.outlet;
                EXPECT_EQ(control->action(), action) << row.outlet;
                EXPECT_EQ(control->target(), pane.get()) << row.outlet;
            }
        }
    }
}

TEST_F(PaneControlTableTest, CheckBoxesEnableTheControlsThatDependOnThem)
{
    const std::pair<Button*, Control*> pairs[] = {
        {o().showQuickLookButton, o().quickLookDelayPopUpButton},
        {o().addActivateItemButton, o().addActivateItemPopUpButton},
        {o().addCancelItemButton, o().addCancelItemPopUpButton},
    };
    for (const auto& [box, dependent] : pairs) {
        for (int state : {Button::offState, Button::onState, Button::offState}) {
            box->setState(state);
            box->sendAction();
            EXPECT_EQ(dependent->isEnabled(), state == Button::onState)
                << *pane->settingForControl(box);
        }
    }
}

} // namespace
} // namespace vexto
