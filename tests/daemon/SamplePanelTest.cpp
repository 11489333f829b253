#include "../support/ShippedLooks.hpp"
#include "foundation/DictionaryExtensions.hpp"
#include "panel/SampleAppearance.hpp"
#include "panel/SamplePanelView.hpp"
#include "platform/fake/FakeFontCatalog.hpp"
#include "platform/fake/RecordingCanvas.hpp"
#include "settings/SettingKeys.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace vexto {
namespace {

namespace keys = settingkeys;
using Operations = std::vector<std::string>;

Color shade(int n)
{
    return Color::calibratedRGB(0.1f * static_cast<float>(n), 0.05f, 0.02f, 1);
}

Operations drawn(SamplePanelView& view)
{
    RecordingCanvas canvas;
    view.drawRect(canvas, view.bounds());
    EXPECT_EQ(canvas.saveDepth(), 0);
    return canvas.operations();
}

std::size_t countStarting(const Operations& operations, const std::string& prefix)
{
    return static_cast<std::size_t>(
        std::count_if(operations.begin(), operations.end(), [&](const std::string& operation) {
            return operation.rfind(prefix, 0) == 0;
        }));
}

bool contains(const Operations& operations, const std::string& wanted)
{
    return std::find(operations.begin(), operations.end(), wanted) != operations.end();
}

TEST(SampleAppearanceTest, EveryColourComesFromItsOwnKey)
{
    PlistDictionary settings;
    const std::string_view colourKeys[] = {
        keys::backgroundColor,      keys::selectionColor,  keys::selectionBorderColor,
        keys::applicationNameColor, keys::windowNameColor, keys::selectionWindowNameColor,
        keys::keyBadgeColor};
    for (int i = 0; i < 7; ++i) {
        archiveObject(settings, shade(i + 1), colourKeys[i]);
    }
    const SampleAppearance look = SampleAppearance::fromSettings(settings, {}, nullptr);
    const Color read[] = {look.background,      look.selection,  look.selectionBorder,
                          look.applicationName, look.windowName, look.selectionWindowName,
                          look.keyBadge};
    for (int i = 0; i < 7; ++i) {
        EXPECT_EQ(read[i], shade(i + 1)) << colourKeys[i];
    }
}

TEST(SampleAppearanceTest, AbsentOrUnusableValuesFallBackToTheDefaultsFileThenTheFixedOnes)
{
    PlistDictionary settings{{std::string(keys::itemHeight), PlistValue(std::string("big"))},
                             {std::string(keys::fontSmoothing), -1},
                             {std::string(keys::maximumWidth), 0.5}};
    archiveObject(settings, shade(3), keys::selectionColor);
    const PlistDictionary defaults{{std::string(keys::panelShadow), false},
                                   {std::string(keys::itemHeight), 1000.0},
                                   {std::string(keys::selectionGradient), 20}};
    const SampleAppearance look = SampleAppearance::fromSettings(settings, defaults, nullptr);
    EXPECT_EQ(look.keyBadge, shade(3)) << "the key badge follows the selection";
    EXPECT_EQ(look.background, Color::calibratedWhite(0, 0.5f));
    EXPECT_EQ(look.selectionBorder, Color::whiteColor());
    EXPECT_EQ(look.itemSize, SampleAppearance::largestItem) << "a text is no size";
    EXPECT_EQ(look.selectionGradient, 20);
    EXPECT_FALSE(look.panelShadow);
    EXPECT_FALSE(look.smoothFonts);
    EXPECT_EQ(look.maximumWidth, 0.5);

    const SampleAppearance plain = SampleAppearance::fromSettings({}, {}, nullptr);
    EXPECT_EQ(plain.selection, Color::alternateSelectedControlColor());
    EXPECT_EQ(plain.selectionGradient, -15);
    EXPECT_EQ(plain.itemSize, 48);
    EXPECT_TRUE(plain.smoothFonts);
    EXPECT_EQ(plain.maximumWidth, std::nullopt);
    EXPECT_FALSE(plain.windowNameShadow);
}

TEST(SamplePanelTest, NamesAreDrawnInTheAlternateFontAndSmoothingFollowsTheSetting)
{
    FakeFontCatalog fonts;
    fonts.families.push_back({"Serif Sample", {{"SerifSample-Bold", "Serif Sample Bold"}}});
    const PlistDictionary settings{
        {std::string(keys::alternatePanelFont), PlistValue(std::string("SerifSample-Bold"))},
        {std::string(keys::fontSmoothing), 1}};
    SamplePanelView view(SampleAppearance::fromSettings(settings, {}, &fonts), 1280);
    const Operations operations = drawn(view);
    EXPECT_EQ(operations.at(1), "smooth fonts");
    for (std::string_view name : {"Files", "Drafts"}) {
        const std::string prefix = "text \"" + std::string(name) + "\"";
        const auto found = std::find_if(operations.begin(), operations.end(),
                                        [&](const auto& op) { return op.rfind(prefix, 0) == 0; });
        ASSERT_NE(found, operations.end());
        EXPECT_NE(found->find("font=SerifSample-Bold"), std::string::npos) << *found;
    }
    // A name the catalog does not know (a layout's display name) is still asked for.
    const PlistDictionary byDisplayName{
        {std::string(keys::alternatePanelFont), PlistValue(std::string("Serif Sample Bold"))}};
    EXPECT_EQ(SampleAppearance::fromSettings(byDisplayName, {}, &fonts).font->familyName(),
              "Serif Sample Bold");
}

TEST(SamplePanelTest, APanelWiderThanItsShareOfTheScreenShrinksItsItems)
{
    SampleAppearance look = SampleAppearance::fromSettings({}, {}, nullptr);
    look.itemSize = 128;
    const double natural = SamplePanelView(look, 1000).panelRect().width();
    look.maximumWidth = 0.4;
    const SamplePanelView bounded(look, 1000);
    EXPECT_GT(natural, 400);
    EXPECT_LE(bounded.panelRect().width(), 400.001);
    EXPECT_LT(bounded.itemSize(), 128);
    look.maximumWidth = 1;
    EXPECT_EQ(SamplePanelView(look, 1000).panelRect().width(), natural);
}

// The defaults and every shipped preset: the recorded drawing uses each of the look's values
// where it belongs.
class SamplePanelLookTest : public ::testing::TestWithParam<std::string> {};

TEST_P(SamplePanelLookTest, TheDrawingUsesTheLooksValuesWhereTheyBelong)
{
    const auto settings = test::lookSettings(VEXTO_PANE_BUNDLE_PATH, GetParam());
    ASSERT_TRUE(settings.has_value());
    const SampleAppearance look = SampleAppearance::fromSettings(*settings, {}, nullptr);
    SamplePanelView view(look, 1280);
    const Operations operations = drawn(view);
    const auto d = [](const auto& value) {
        return RecordingCanvas::describe(value);
    };

    EXPECT_EQ(operations.at(1), look.smoothFonts ? "smooth fonts" : "smooth fonts off");
    EXPECT_EQ(contains(operations, "shadow offset=0,-4 blur=12 w=0 a=0.45"), look.panelShadow);
    // The bevel takes its radius in single precision.
    const double radius = std::min(12.0, view.itemSize() * 0.2);
    const auto r = [&d](double value) {
        return d(static_cast<float>(value));
    };
    EXPECT_TRUE(contains(operations, "fill rounded " + d(view.selectionRect()) + " r=" + r(radius) +
                                         " " + d(look.selectionBorder)));
    EXPECT_TRUE(contains(operations, "fill rounded " + d(view.selectionFillRect()) +
                                         " r=" + r(radius - 2) + " " + d(look.selection)));
    const auto opacity =
        static_cast<float>(std::min<std::int64_t>(std::abs(look.selectionGradient), 100)) / 100;
    EXPECT_EQ(contains(operations, "gradient " + d(view.selectionFillRect()) +
                                       " angle=" + (look.selectionGradient < 0 ? "90" : "270") +
                                       " from " + d(Color::calibratedWhite(1, opacity)) + " to " +
                                       d(Color::calibratedWhite(0, opacity))),
              look.selectionGradient != 0);
    EXPECT_EQ(countStarting(operations, "text \"Mail\""), 1u);
    for (std::string_view name : SamplePanelView::applicationNames) {
        const std::string prefix = "text \"" + std::string(name) + "\"";
        const auto found = std::find_if(operations.begin(), operations.end(),
                                        [&](const auto& op) { return op.rfind(prefix, 0) == 0; });
        ASSERT_NE(found, operations.end()) << name;
        EXPECT_TRUE(found->ends_with(d(look.applicationName))) << *found;
    }
    const auto windowLine = [&](std::string_view name) {
        return *std::find_if(operations.begin(), operations.end(), [&](const auto& op) {
            return op.rfind("text \"" + std::string(name) + "\"", 0) == 0;
        });
    };
    EXPECT_TRUE(windowLine("Inbox").ends_with(d(look.selectionWindowName)));
    EXPECT_TRUE(windowLine("Drafts").ends_with(d(look.windowName)));
    std::size_t badges = 0;
    for (const std::string& operation : operations) {
        badges += operation.rfind("fill rounded", 0) == 0 &&
                  operation.ends_with(d(look.keyBadge)) &&
                  operation.find(" r=" + r(std::max(12.0, view.itemSize() * 0.32) / 2) + " ") !=
                      std::string::npos;
    }
    EXPECT_EQ(badges, look.shortcutBadges ? SamplePanelView::applicationCount : 0u);
}

INSTANTIATE_TEST_SUITE_P(DefaultsAndPresets, SamplePanelLookTest, test::shippedLooks(),
                         test::lookTestName);

} // namespace
} // namespace vexto
