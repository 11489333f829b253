#include "PaneTestFixture.hpp"
#include "platform/fake/FakeFontCatalog.hpp"
#include "toolkit/Image.hpp"
#include "toolkit/PopUpButton.hpp"

namespace vexto::test {
namespace {

namespace keys = settingkeys;

class FontMenuTest : public PaneTest {
protected:
    FontMenuTest()
    {
        fonts.families = {
            {"zeta Sans", {{"ZetaSans-Regular", "Zeta Sans"}}},
            {"Alpha Serif",
             {{"AlphaSerif-Light", "Alpha Serif Light"},
              {"AlphaSerif-Regular", "Alpha Serif"},
              {"AlphaSerif-Bold", "Alpha Serif Bold"}}},
            {"Beta Mono", {{"broken", "Broken"}, {"BetaMono", "Beta Mono"}}},
            {"Gone", {{"broken", "Broken"}}},
        };
        fontCatalog = &fonts;
    }

    // The menu as it opens, with the stored font and smoothing.
    Menu& open(std::optional<std::string> font, std::optional<int> smoothing = std::nullopt)
    {
        if (!pane) {
            load();
        }
        if (font) {
            pane->settings()[std::string(keys::alternatePanelFont)] = PlistValue(*font);
        }
        if (smoothing) {
            pane->settings()[std::string(keys::fontSmoothing)] = PlistValue(*smoothing);
        }
        o().fontsPopUpButton->willOpenMenu();
        return o().fontsPopUpButton->menu();
    }
    static std::vector<std::pair<std::string, int>> rows(const Menu& menu)
    {
        std::vector<std::pair<std::string, int>> result;
        for (const auto& item : menu.items()) {
            result.emplace_back(item->isSeparatorItem() ? "---" : item->title(), item->state());
        }
        return result;
    }

    FakeFontCatalog fonts;
};

using Rows = std::vector<std::pair<std::string, int>>;

TEST_F(FontMenuTest, FamiliesAreListedByNameWithOnlyTheDefaultTickedWhenNothingIsStored)
{
    const Menu& menu = open(std::nullopt);
    EXPECT_EQ(rows(menu), (Rows{{"Font: Default", 0},
                                {"Default", 1},
                                {"---", 0},
                                {"Font Smoothing", 0},
                                {"---", 0},
                                {"Alpha Serif", 0},
                                {"Beta Mono", 0},
                                {"Zeta Sans", 0}}));
    // A family with one font that can be made is a plain item named by the font.
    EXPECT_FALSE(menu.itemAtIndex(6)->hasSubmenu());
    EXPECT_EQ(std::any_cast<Font>(menu.itemAtIndex(6)->representedObject()).fontName(), "BetaMono");
    const MenuItem& alpha = *menu.itemAtIndex(5);
    ASSERT_TRUE(alpha.hasSubmenu());
    EXPECT_EQ(rows(*alpha.submenu()),
              (Rows{{"Alpha Serif Light", 0}, {"Alpha Serif", 0}, {"Alpha Serif Bold", 0}}));
    // Each row is drawn in its own face at 14 points, and all rows are as tall.
    EXPECT_EQ(alpha.attributedTitleFont()->fontName(), "AlphaSerif-Light");
    EXPECT_EQ(alpha.attributedTitleFont()->pointSize(), 14.0);
    EXPECT_EQ(alpha.submenu()->itemAtIndex(2)->attributedTitleFont()->fontName(),
              "AlphaSerif-Bold");
    EXPECT_EQ(alpha.image()->size().height, 24.0);
    EXPECT_EQ(rows(*menu.itemAtIndex(3)->submenu()),
              (Rows{{"System preferences default", 1}, {"---", 0}, {"Enable", 0}, {"Disable", 0}}));
}

TEST_F(FontMenuTest, TheStoredFontIsTickedAndItsFamilyMarked)
{
    Menu& second = open("AlphaSerif-Regular");
    EXPECT_EQ(second.itemAtIndex(5)->state(), -1) << "a member other than the first: mixed";
    EXPECT_EQ(second.itemAtIndex(5)->submenu()->itemAtIndex(1)->state(), 1);
    EXPECT_EQ(second.itemAtIndex(1)->state(), 0);

    Menu& first = open("AlphaSerif-Light");
    EXPECT_EQ(first.itemAtIndex(5)->state(), 1);
    EXPECT_EQ(first.itemAtIndex(5)->submenu()->itemAtIndex(0)->state(), 1);
    EXPECT_EQ(first.numberOfItems(), 8) << "built anew, not added to";

    // A display name, as a layout may store, names no font: the default is ticked.
    Menu& display = open("Alpha Serif Bold");
    EXPECT_EQ(display.itemAtIndex(1)->state(), 1);
    EXPECT_EQ(display.itemAtIndex(5)->state(), 0);
}

TEST_F(FontMenuTest, SmoothingTicksFollowTheSign)
{
    const auto ticks = [](const Menu& menu) {
        return rows(*menu.itemAtIndex(3)->submenu());
    };
    EXPECT_EQ(ticks(open(std::nullopt, 5)),
              (Rows{{"System preferences default", 0}, {"---", 0}, {"Enable", 1}, {"Disable", 0}}));
    EXPECT_EQ(ticks(open(std::nullopt, -3)),
              (Rows{{"System preferences default", 0}, {"---", 0}, {"Enable", 0}, {"Disable", 1}}));
}

TEST_F(FontMenuTest, ChoosingAMemberStoresItsFontName)
{
    Menu& menu = open(std::nullopt);
    MenuItem& bold = *menu.itemAtIndex(5)->submenu()->itemAtIndex(2);
    o().fontsPopUpButton->userDidChooseItem(bold);
    EXPECT_EQ(*pane->valueForSetting(keys::alternatePanelFont), PlistValue("AlphaSerif-Bold"));
    EXPECT_EQ(o().fontsPopUpButton->itemAtIndex(0)->title(), "Font: Alpha Serif Bold");
}

} // namespace
} // namespace vexto::test
