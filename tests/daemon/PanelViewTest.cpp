#include "panel/PanelView.hpp"

#include "../support/ShippedLooks.hpp"
#include "cycling/WindowCycle.hpp"
#include "foundation/DictionaryExtensions.hpp"
#include "panel/IconLikeness.hpp"
#include "panel/PanelAppearance.hpp"
#include "panel/PanelContent.hpp"
#include "platform/fake/FakeFontCatalog.hpp"
#include "platform/fake/RecordingCanvas.hpp"
#include "ports/TextMetrics.hpp"
#include "settings/SettingKeys.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

namespace vexto {
namespace {

namespace keys = settingkeys;
using Operations = std::vector<std::string>;

// The defaults the pane ships, which the daemon reads the settings over.
const PlistDictionary& shipped()
{
    static const PlistDictionary defaults =
        deeplyMutableDictionaryWithContentsOfFile(VEXTO_SOURCE_DIR
                                                  "/resources/KRVXDefaultSettings.plist")
            .value_or(PlistDictionary{});
    return defaults;
}

Color shade(int n)
{
    return Color::calibratedRGB(0.1f * static_cast<float>(n), 0.05f, 0.02f, 1);
}

Operations drawn(PanelView& view)
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

TEST(PanelAppearanceTest, EveryColourComesFromItsOwnKey)
{
    PlistDictionary settings;
    const std::string_view colourKeys[] = {
        keys::backgroundColor,      keys::selectionColor,    keys::selectionBorderColor,
        keys::applicationNameColor, keys::windowNameColor,   keys::selectionWindowNameColor,
        keys::keyBadgeColor,        keys::previewBorderColor};
    for (int i = 0; i < 8; ++i) {
        archiveObject(settings, shade(i + 1), colourKeys[i]);
    }
    const PanelAppearance look = PanelAppearance::fromSettings(settings, {}, nullptr);
    const Color read[] = {look.background,      look.selection,    look.selectionBorder,
                          look.applicationName, look.windowName,   look.selectionWindowName,
                          look.keyBadge,        look.previewBorder};
    for (int i = 0; i < 8; ++i) {
        EXPECT_EQ(read[i], shade(i + 1)) << colourKeys[i];
    }
    EXPECT_EQ(PanelAppearance::fromSettings({}, {}, nullptr).previewBorder,
              Color::selectedControlColor());
}

TEST(PanelAppearanceTest, AbsentOrUnusableValuesFallBackToTheDefaultsFileThenTheFixedOnes)
{
    PlistDictionary settings{{std::string(keys::itemHeight), PlistValue(std::string("big"))},
                             {std::string(keys::fontSmoothing), -1},
                             {std::string(keys::maximumWidth), 0.5}};
    archiveObject(settings, shade(3), keys::selectionColor);
    const PlistDictionary defaults{{std::string(keys::panelShadow), false},
                                   {std::string(keys::itemHeight), 1000.0},
                                   {std::string(keys::selectionGradient), 20}};
    const PanelAppearance look = PanelAppearance::fromSettings(settings, defaults, nullptr);
    EXPECT_EQ(look.keyBadge, shade(3)) << "the key badge follows the selection";
    EXPECT_EQ(look.background, Color::calibratedWhite(0, 0.5f));
    EXPECT_EQ(look.selectionBorder, Color::whiteColor());
    EXPECT_EQ(look.itemSize, PanelAppearance::largestItem) << "a text is no size";
    EXPECT_EQ(look.selectionGradient, 20);
    EXPECT_FALSE(look.panelShadow);
    EXPECT_FALSE(look.smoothFonts);
    EXPECT_EQ(look.maximumWidth, 0.5);

    const PanelAppearance plain = PanelAppearance::fromSettings({}, {}, nullptr);
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
    PanelView view(PanelAppearance::fromSettings(settings, shipped(), &fonts),
                   PanelContent::sample(), 1280);
    const Operations operations = drawn(view);
    EXPECT_TRUE(contains(operations, "smooth fonts"));
    for (std::string_view name : {"Files", "Drafts"}) {
        const std::string prefix = "text \"" + std::string(name) + "\"";
        const auto found = std::find_if(operations.begin(), operations.end(),
                                        [&](const auto& op) { return op.rfind(prefix, 0) == 0; });
        ASSERT_NE(found, operations.end());
        EXPECT_NE(found->find("font=SerifSample-Bold"), std::string::npos) << *found;
    }
    // A layout's display name finds the same face; a name nothing here has is still asked for.
    const PlistDictionary byDisplayName{
        {std::string(keys::alternatePanelFont), PlistValue(std::string("Serif Sample Bold"))}};
    const auto found = PanelAppearance::fromSettings(byDisplayName, {}, &fonts).font;
    EXPECT_EQ(found->fontName(), "SerifSample-Bold");
    EXPECT_EQ(found->familyName(), "Serif Sample");
    const PlistDictionary unknown{
        {std::string(keys::alternatePanelFont), PlistValue(std::string("Serif Sample Black"))}};
    EXPECT_EQ(PanelAppearance::fromSettings(unknown, {}, &fonts).font->familyName(),
              "Serif Sample Black");
}

TEST(SamplePanelTest, APanelWiderThanItsShareOfTheScreenShrinksItsItems)
{
    PanelAppearance look = PanelAppearance::fromSettings({}, {}, nullptr);
    look.itemSize = 128;
    const double natural = PanelView(look, PanelContent::sample(), 1000).panelRect().width();
    look.maximumWidth = 0.4;
    const PanelView bounded(look, PanelContent::sample(), 1000);
    EXPECT_GT(natural, 400);
    EXPECT_LE(bounded.panelRect().width(), 400.001);
    EXPECT_LT(bounded.itemSize(), 128);
    look.maximumWidth = 1;
    EXPECT_EQ(PanelView(look, PanelContent::sample(), 1000).panelRect().width(), natural);
}

// Ten points a character, whatever the font.
class EvenMetrics final : public TextMetrics {
public:
    double widthOfString(const std::string& text, const Font&) const override
    {
        double width = 0;
        for (const char byte : text) {
            width += (static_cast<unsigned char>(byte) & 0xC0) != 0x80 ? 10 : 0;
        }
        return width;
    }
};

Point middle(const Rect& rect)
{
    return Point{rect.midX(), rect.midY()};
}

std::vector<std::string> texts(const Operations& operations)
{
    std::vector<std::string> found;
    for (const std::string& operation : operations) {
        if (operation.rfind("text \"", 0) == 0) {
            found.push_back(operation.substr(6, operation.find('"', 6) - 6));
        }
    }
    return found;
}

TEST(PanelContentTest, ACyclesWindowsAreGroupedUnderTheirApplicationsWithTheSelectionFollowed)
{
    const std::vector<CycleWindow> windows = {
        {1, "term\n7", "Terminal", "~", false, 0, nullptr},
        {2, "web\n9", "Browser", "News", false, 0, nullptr},
        {3, "term\n7", "Terminal", "build", false, 0, nullptr},
        {4, "term\n8", "Terminal", "other", false, 0, nullptr}};
    WindowCycle cycle(windows, 1, DaemonAction::CycleAllWindows, StepDirection::Forward,
                      {true, true});
    cycle.select(2);
    const PanelContent content = PanelContent::fromCycle(cycle);
    ASSERT_EQ(content.applications.size(), 3u) << "two runs of one program are two applications";
    EXPECT_EQ(content.applications[0].name, "Terminal");
    ASSERT_EQ(content.applications[0].windows.size(), 2u);
    EXPECT_EQ(content.applications[0].windows[1].title, "build");
    EXPECT_EQ(content.applications[0].windows[1].cycleIndex, 2u);
    EXPECT_EQ(content.applications[1].windows[0].cycleIndex, 1u);
    EXPECT_EQ(content.selectedApplication, 0u);
    EXPECT_EQ(content.selectedWindow, 1u);

    // A click on an application picks its first window; one on a listed window picks that one.
    const PanelView view(PanelAppearance::fromSettings({}, shipped(), nullptr), content, 1280);
    EXPECT_EQ(view.cycleIndexAt(middle(view.itemRect(1))), 1u);
    EXPECT_EQ(view.cycleIndexAt(middle(view.itemRect(2))), 3u);
    EXPECT_EQ(view.cycleIndexAt(middle(view.windowRowRect(1))), 2u);
    EXPECT_EQ(view.cycleIndexAt(Point{1, 1}), std::nullopt);
}

TEST(PanelContentTest, TheCyclesOwnItemsStandInTheRowClickableAndWithoutABadge)
{
    const std::vector<CycleWindow> windows = {{1, "term", "Terminal", "~", false, 0, nullptr},
                                              {2, "web", "Browser", "News", false, 0, nullptr}};
    WindowCycle::Options options;
    options.activationItem = WindowCycle::ItemPlace::Top;
    options.cancellationItem = WindowCycle::ItemPlace::Bottom;
    WindowCycle cycle(windows, 1, DaemonAction::CycleAllWindows, StepDirection::Forward, options);
    cycle.selectLast();
    const PanelContent content = PanelContent::fromCycle(cycle);
    ASSERT_EQ(content.applications.size(), 4u);
    EXPECT_EQ(content.applications[0].name, "Switch");
    EXPECT_EQ(content.applications[0].kind, CycleItemKind::ActivationItem);
    EXPECT_EQ(content.applications[3].name, "Cancel");
    EXPECT_EQ(content.selectedApplication, 3u);
    EXPECT_EQ(content.selected()->windows[0].title, "Close without switching");
    // After an action that selects nothing, nothing is shown selected.
    cycle.selectFirst();
    cycle.selectionActedOn(WindowCycle::FollowUp::Nothing, false);
    PanelView unselected(PanelAppearance::fromSettings({}, shipped(), nullptr),
                         PanelContent::fromCycle(cycle), 1280);
    EXPECT_EQ(unselected.content().selected(), nullptr);
    EXPECT_EQ(unselected.selectionRect().width(), 0);

    PanelView view(PanelAppearance::fromSettings({}, shipped(), nullptr), content, 1280);
    EXPECT_EQ(view.cycleIndexAt(middle(view.itemRect(0))), 0u);
    EXPECT_EQ(view.cycleIndexAt(middle(view.itemRect(3))), 3u);
    // The programs keep their badges 1 and 2; the own items have symbols, not initials.
    const auto names = texts(drawn(view));
    for (const char* badge : {"1", "2"}) {
        EXPECT_EQ(std::count(names.begin(), names.end(), badge), 1) << badge;
    }
    EXPECT_EQ(std::count(names.begin(), names.end(), "3"), 0);
    EXPECT_EQ(std::count(names.begin(), names.end(), "S"), 0);
}

// A square icon of `side` pixels: a colour on the left half, another on the right.
Bitmap halves(int side, std::array<std::uint8_t, 4> left, std::array<std::uint8_t, 4> right)
{
    Bitmap icon{side, side, {}};
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x) {
            const auto& pixel = x < side / 2 ? left : right;
            icon.rgba.insert(icon.rgba.end(), pixel.begin(), pixel.end());
        }
    }
    return icon;
}

TEST(IconLikenessTest, TheSamePictureInAnotherSizeIsAlikeAndInvisiblePixelsDoNotCount)
{
    const Bitmap big = halves(96, {200, 30, 30, 255}, {0, 0, 0, 0});
    EXPECT_TRUE(iconsLookAlike(big, halves(16, {205, 26, 34, 255}, {90, 90, 255, 0})));
    EXPECT_FALSE(iconsLookAlike(big, halves(16, {0, 0, 0, 0}, {200, 30, 30, 255}))) << "mirrored";
    EXPECT_FALSE(iconsLookAlike(big, halves(16, {30, 30, 200, 255}, {0, 0, 0, 0})));
    EXPECT_FALSE(iconsLookAlike(big, Bitmap{4, 4, {1, 2, 3}})) << "pixels missing";
    EXPECT_FALSE(iconsLookAlike(Bitmap{}, Bitmap{}));
}

TEST(PanelViewTest, NamesIconsAndBadgesAreDrawnOnlyWhenTheSettingsAskForThem)
{
    const auto drawnWith = [](const PlistDictionary& settings) {
        PanelView view(PanelAppearance::fromSettings(settings, shipped(), nullptr),
                       PanelContent::sample(), 1280);
        return drawn(view);
    };
    const Operations everything = drawnWith({});
    const auto names = texts(everything);
    EXPECT_NE(std::find(names.begin(), names.end(), "Terminal"), names.end());
    EXPECT_NE(std::find(names.begin(), names.end(), "T"), names.end()) << "the generic icon";
    EXPECT_NE(std::find(names.begin(), names.end(), "5"), names.end()) << "the badge";

    const auto withoutNames = texts(drawnWith({{std::string(keys::showApplicationNames), false}}));
    EXPECT_EQ(std::find(withoutNames.begin(), withoutNames.end(), "Terminal"), withoutNames.end());
    EXPECT_NE(std::find(withoutNames.begin(), withoutNames.end(), "Inbox"), withoutNames.end());

    // The sample's selected application carries a window icon of its own, over its program's.
    EXPECT_EQ(countStarting(everything, "image 32x32"), 1u);
    EXPECT_EQ(
        countStarting(drawnWith({{std::string(keys::showDocumentIconOverlays), false}}), "image"),
        0u);

    const auto withoutIcons = texts(drawnWith({{std::string(keys::iconMode), 0}}));
    EXPECT_NE(std::find(withoutIcons.begin(), withoutIcons.end(), "Terminal"), withoutIcons.end());
    EXPECT_EQ(std::find(withoutIcons.begin(), withoutIcons.end(), "T"), withoutIcons.end());
    EXPECT_EQ(std::find(withoutIcons.begin(), withoutIcons.end(), "5"), withoutIcons.end());
}

TEST(PanelViewTest, AStepRedrawsOnlyWhatItsSelectionChangedAndANewContentNeedsANewView)
{
    PanelContent content;
    for (const char* name : {"One", "Two", "Three", "Four", "Five", "Six"}) {
        content.applications.push_back({name, name, {{std::string(name) + " window", 0}}});
    }
    PanelView view(PanelAppearance::fromSettings({}, shipped(), nullptr), content, 1280);
    PanelContent stepped = content;
    stepped.selectedApplication = 1;
    const auto changed = view.takeSelectionOf(stepped);
    ASSERT_TRUE(changed);
    EXPECT_EQ(view.content().selectedApplication, 1u);
    RecordingCanvas canvas;
    view.drawForeground(canvas, *changed);
    const auto redrawn = texts(canvas.operations());
    for (const char* shown : {"One", "Two", "Three", "Two window"}) {
        EXPECT_NE(std::find(redrawn.begin(), redrawn.end(), shown), redrawn.end()) << shown;
    }
    EXPECT_EQ(std::find(redrawn.begin(), redrawn.end(), "Six"), redrawn.end());

    PanelContent renamed = stepped;
    renamed.applications[4].name = "Renamed";
    EXPECT_FALSE(view.takeSelectionOf(renamed));
    PanelContent longer = stepped;
    longer.applications[2].windows.push_back({"another", 7});
    longer.selectedApplication = 2;
    EXPECT_FALSE(view.takeSelectionOf(longer)) << "the list under the row grows";
}

TEST(PanelViewTest, SpaceBadgesNameOtherDesktopsOrEveryDesktopAsTheSettingsSay)
{
    std::vector<CycleWindow> windows = {{1, "a", "A", "here", false, 0, nullptr},
                                        {2, "a", "A", "there", false, 1, nullptr},
                                        {3, "a", "A", "everywhere", false, std::nullopt, nullptr}};
    windows[0].desktopName = "Mail";
    windows[1].desktopName = "Code";
    WindowCycle cycle(windows, 1, DaemonAction::CycleAllWindows, StepDirection::Forward, {});
    cycle.setCurrentDesktop(0);
    const PanelContent content = PanelContent::fromCycle(cycle);
    ASSERT_EQ(content.applications.size(), 1u);
    EXPECT_TRUE(content.applications[0].windows[0].onCurrentDesktop);
    EXPECT_FALSE(content.applications[0].windows[1].onCurrentDesktop);
    EXPECT_EQ(content.applications[0].windows[2].desktopName, "");

    const auto badges = [&](const PlistDictionary& settings) {
        PanelView view(PanelAppearance::fromSettings(settings, shipped(), nullptr), content, 1280);
        std::vector<std::string> named;
        for (const std::string& text : texts(drawn(view))) {
            if (text == "Mail" || text == "Code") {
                named.push_back(text);
            }
        }
        return named;
    };
    using Names = std::vector<std::string>;
    EXPECT_EQ(badges({}), Names{"Code"});
    EXPECT_EQ(badges({{std::string(keys::alwaysShowSpaceBadges), true}}), (Names{"Mail", "Code"}));
    EXPECT_EQ(badges({{std::string(keys::alwaysShowSpaceBadges), true},
                      {std::string(keys::hideCurrentSpaceBadges), true}}),
              Names{"Code"});
    // Drawn in the space indicator colour.
    const Color indicator = Color::calibratedRGB(0.2f, 0.6f, 0.3f, 1);
    PlistDictionary coloured;
    archiveObject(coloured, indicator, keys::spaceIndicatorColor);
    PanelView view(PanelAppearance::fromSettings(coloured, shipped(), nullptr), content, 1280);
    const Operations operations = drawn(view);
    EXPECT_EQ(std::count_if(operations.begin(), operations.end(),
                            [&](const std::string& op) {
                                return op.starts_with("fill rounded") &&
                                       op.ends_with(RecordingCanvas::describe(indicator));
                            }),
              1);
}

TEST(PanelViewTest, NamesTooLongForTheirPlaceAreCutShortBetweenCharacters)
{
    PanelContent content;
    content.applications = {{"Terminal Emulator Deluxe", "a", {{"w\u00e4\u00e4\u00e4\u00e4", 0}}},
                            {"Mail", "b", {{"x", 1}}}};
    EvenMetrics metrics;
    PlistDictionary settings{{std::string(keys::itemHeight), 48}};
    PanelView view(PanelAppearance::fromSettings(settings, shipped(), nullptr), content, 1280,
                   &metrics);
    const auto shown = texts(drawn(view));
    const auto cut = std::find_if(shown.begin(), shown.end(),
                                  [](const std::string& t) { return t.starts_with("Term"); });
    ASSERT_NE(cut, shown.end());
    EXPECT_TRUE(cut->ends_with("\u2026")) << *cut;
    EXPECT_LE(metrics.widthOfString(*cut, Font::systemFontOfSize(12)),
              view.itemSize() * 1.3 + 0.001);
    EXPECT_NE(std::find(shown.begin(), shown.end(), "Mail"), shown.end()) << "it fits";

    // A panel of many applications never grows past the screen.
    PanelContent crowd;
    for (int i = 0; i < 300; ++i) {
        crowd.applications.push_back({"App", std::to_string(i), {{"w", std::size_t(i)}}});
    }
    const PanelView wide(PanelAppearance::fromSettings({}, shipped(), nullptr), crowd, 1280);
    EXPECT_GE(wide.itemSize(), PanelAppearance::smallestItem);
    EXPECT_EQ(wide.itemSize(), PanelAppearance::smallestItem);

    // One application's windows, as a cycle of the frontmost application lists them: the row is
    // widened and centred so that the titles are read whole, but never past the screen.
    PanelContent alone;
    alone.applications = {{"Mail", "m", {{"Quarterly figures", 0}}}};
    PanelView single(PanelAppearance::fromSettings(settings, shipped(), nullptr), alone, 1280,
                     &metrics);
    const auto names = texts(drawn(single));
    EXPECT_NE(std::find(names.begin(), names.end(), "Quarterly figures"), names.end());
    EXPECT_NEAR(single.itemRect(0).midX(), single.panelRect().midX(), 0.001);
    const PanelView narrow(PanelAppearance::fromSettings(settings, shipped(), nullptr), alone, 200);
    EXPECT_LE(narrow.frame().width(), 200);
}

// The defaults and every shipped preset: the recorded drawing uses each of the look's values
// where it belongs.
class SamplePanelLookTest : public ::testing::TestWithParam<std::string> {};

TEST_P(SamplePanelLookTest, TheDrawingUsesTheLooksValuesWhereTheyBelong)
{
    const auto settings = test::lookSettings(VEXTO_PANE_BUNDLE_PATH, GetParam());
    ASSERT_TRUE(settings.has_value());
    const PanelAppearance look = PanelAppearance::fromSettings(*settings, shipped(), nullptr);
    PanelView view(look, PanelContent::sample(), 1280);
    const Operations operations = drawn(view);
    const auto d = [](const auto& value) {
        return RecordingCanvas::describe(value);
    };

    EXPECT_TRUE(contains(operations, look.smoothFonts ? "smooth fonts" : "smooth fonts off"));
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
    for (const auto& application : PanelContent::sample().applications) {
        const std::string& name = application.name;
        const std::string prefix = "text \"" + name + "\"";
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
    EXPECT_EQ(badges, look.shortcutBadges ? PanelContent::sample().applications.size() : 0u);
}

INSTANTIATE_TEST_SUITE_P(DefaultsAndPresets, SamplePanelLookTest, test::shippedLooks(),
                         test::lookTestName);

} // namespace
} // namespace vexto
