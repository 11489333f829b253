#include "PaneTestFixture.hpp"
#include "foundation/DictionaryExtensions.hpp"
#include "foundation/Log.hpp"
#include "pane/MenuExtensions.hpp"
#include "platform/fake/FakeAlerts.hpp"
#include "platform/fake/FakeFontCatalog.hpp"
#include "toolkit/ColorWell.hpp"
#include "toolkit/PopUpButton.hpp"
#include "toolkit/Slider.hpp"

#include <algorithm>

namespace vexto::test {
namespace {

namespace keys = settingkeys;

class LayoutsTest : public PaneTest {
protected:
    LayoutsTest()
    {
        filePanels = &panels;
        for (const char* preset : {"Graphite", "Daylight", "High Contrast"}) {
            writeLayout(resources() + "/" + preset + ".vextolayout",
                        {{std::string(keys::itemHeight), 64.0}});
        }
        Log::setSink([this](const std::string& line) { logged.push_back(line); });
        fonts.families = {{"Alpha Serif", {{"AlphaSerif-Bold", "Alpha Serif Bold"}}}};
        fontCatalog = &fonts;
        load();
    }
    ~LayoutsTest() override { Log::clearSink(); }

    static void writeLayout(const std::string& path, const PlistDictionary& layout)
    {
        ASSERT_TRUE(writeToFileAtomically(layout, path));
    }
    std::string userLayouts() const
    {
        return home.file("Library/Application Support/Vexto/Layouts");
    }
    PopUpButton& layouts() const { return *o().layoutPresetsPopUpButton; }
    std::vector<std::string> titles() const
    {
        layouts().willOpenMenu();
        std::vector<std::string> result;
        for (const auto& item : layouts().menu().items()) {
            result.push_back(item->isSeparatorItem() ? "---" : item->title());
        }
        return result;
    }
    void choose(const std::string& title)
    {
        layouts().willOpenMenu();
        layouts().userDidChooseItem(
            *layouts().itemAtIndex(layouts().menu().indexOfItemWithTitle(title)));
    }

    FakeAlerts panels;
    FakeFontCatalog fonts;
    std::vector<std::string> logged;
};

TEST_F(LayoutsTest, TheMenuListsUserLayoutsThenPresetsThenTheCommands)
{
    const std::vector<std::string> presetsOnly = {
        "Layouts",  "Default Appearance", "---", "Daylight",
        "Graphite", "High Contrast",      "---", "Open...",
        "Save..."};
    EXPECT_EQ(titles(), presetsOnly);
    EXPECT_EQ(layouts().menu().itemAtIndex(7)->tag(), -1);
    EXPECT_EQ(layouts().menu().itemAtIndex(8)->tag(), -2);

    std::filesystem::create_directories(userLayouts());
    writeText(userLayouts() + "/notes.txt", "not a layout");
    EXPECT_EQ(titles(), presetsOnly) << "a folder without layouts adds no separator";

    writeLayout(userLayouts() + "/Dark.vextolayout", {});
    writeLayout(userLayouts() + "/Oddvextolayout", {});
    auto listed = titles();
    ASSERT_EQ(listed.size(), presetsOnly.size() + 3) << "the menu is built anew, not added to";
    EXPECT_EQ(listed[2], "---");
    std::sort(listed.begin() + 3, listed.begin() + 5);
    EXPECT_EQ(listed[3], "Dark");
    EXPECT_EQ(listed[4], "Oddvextolayout");
    const MenuItem* dark =
        layouts().menu().itemAtIndex(layouts().menu().indexOfItemWithTitle("Dark"));
    EXPECT_EQ(std::any_cast<std::string>(dark->representedObject()),
              userLayouts() + "/Dark.vextolayout");

    // The machine's layouts follow the user's, each group after a separator.
    writeLayout(sharedLayouts.path() + "/Office.vextolayout", {});
    listed = titles();
    ASSERT_EQ(listed.size(), presetsOnly.size() + 5);
    EXPECT_EQ(std::vector<std::string>(listed.begin() + 5, listed.begin() + 7),
              (std::vector<std::string>{"---", "Office"}));
}

TEST_F(LayoutsTest, NamesDropOnlyARealExtension)
{
    EXPECT_EQ(layoutNameForPath("/a/Dark.vextolayout"), "Dark");
    EXPECT_EQ(layoutNameForPath("/a/my.dark.vextolayout"), "my.dark");
    EXPECT_EQ(layoutNameForPath("/a/Darkvextolayout"), "Darkvextolayout");
    EXPECT_EQ(layoutNameForPath("/a/.vextolayout"), ".vextolayout");
}

TEST_F(LayoutsTest, ALayoutWithOnlyASelectionColourResetsTheRest)
{
    const Color red = Color::calibratedRGB(1, 0, 0, 1);
    archiveObject(pane->settings(), Color::calibratedRGB(0, 0, 1, 1), keys::backgroundColor);
    pane->settings()[std::string(keys::itemHeight)] = PlistValue(80.0);
    pane->settings()[std::string(keys::alternatePanelFont)] = PlistValue("Kept");
    PlistDictionary layout;
    archiveObject(layout, red, keys::selectionColor);
    std::filesystem::create_directories(userLayouts());
    writeLayout(userLayouts() + "/Red.vextolayout", layout);

    choose("Red");
    EXPECT_EQ(o().selectionColorWell->color(), red);
    EXPECT_EQ(o().keyBadgeColorWell->color(), red) << "the badge follows the selection";
    EXPECT_EQ(o().backgroundColorWell->color(), Color::calibratedWhite(0.0f, 0.5f));
    const PlistDictionary written = savedSettings();
    EXPECT_FALSE(written.contains(keys::backgroundColor));
    EXPECT_EQ(written.at(std::string(keys::itemHeight)), PlistValue(48.0));
    EXPECT_EQ(written.at(std::string(keys::maximumWidth)), PlistValue(-1.0));
    EXPECT_EQ(written.at(std::string(keys::alternatePanelFont)), PlistValue("Kept"));
    EXPECT_TRUE(written.contains(keys::selectionColor));
    EXPECT_EQ(center.posted().back().object, "Dummy");
}

TEST_F(LayoutsTest, SavingWritesOnlyWhatTheSettingsHold)
{
    pane->settings().clear();
    archiveObject(pane->settings(), Color::whiteColor(), keys::spaceIndicatorColor);
    pane->settings()[std::string(keys::panelShadow)] = PlistValue(true);
    panels.fileAnswers.push_back(userLayouts() + "/Mine.vextolayout");
    std::filesystem::create_directories(userLayouts());
    center.clearPosted();
    choose("Save...");
    ASSERT_EQ(panels.panels.size(), 1u);
    EXPECT_TRUE(panels.panels[0].saving);
    EXPECT_EQ(panels.panels[0].allowedFileType, "vextolayout");
    EXPECT_EQ(panels.panels[0].nameFieldStringValue, "Untitled");
    EXPECT_EQ(panels.panels[0].directory, userLayouts());
    const auto read =
        deeplyMutableDictionaryWithContentsOfFile(userLayouts() + "/Mine.vextolayout");
    ASSERT_TRUE(read);
    const PlistDictionary& layout = *read;
    // Reduced Spaces support: the space colour is kept under "Space Indicator Color".
    EXPECT_EQ(layout.size(), 2u);
    EXPECT_TRUE(layout.contains(keys::spaceIndicatorColor));
    EXPECT_TRUE(layout.contains(keys::panelShadow));
    EXPECT_TRUE(center.posted().empty()) << "saving a layout changes no setting";
}

// What "Save..." writes, "Open..." brings back; only the font comes back by its display name.
TEST_F(LayoutsTest, ALayoutKeepsTheWholeLookAndComesBackWithTheFontsDisplayName)
{
    PlistDictionary& settings = pane->settings();
    settings[std::string(keys::selectionGradient)] = PlistValue(3);
    settings[std::string(keys::itemHeight)] = PlistValue(64.0);
    settings[std::string(keys::maximumWidth)] = PlistValue(0.5);
    settings[std::string(keys::alternatePanelFont)] = PlistValue("AlphaSerif-Bold");
    const std::string path = userLayouts() + "/Look.vextolayout";
    std::filesystem::create_directories(userLayouts());
    panels.fileAnswers.push_back(path);
    choose("Save...");
    const auto layout = deeplyMutableDictionaryWithContentsOfFile(path);
    ASSERT_TRUE(layout);
    EXPECT_EQ(layout->at(std::string(keys::selectionGradient)), PlistValue(3));
    EXPECT_EQ(layout->at(std::string(keys::itemHeight)), PlistValue(64.0));
    EXPECT_EQ(layout->at(std::string(keys::maximumWidth)), PlistValue(0.5));
    EXPECT_EQ(layout->at(std::string(keys::alternatePanelFont)), PlistValue("AlphaSerif-Bold"));

    settings[std::string(keys::alternatePanelFont)] = PlistValue("Other");
    choose("Look");
    EXPECT_EQ(savedSettings().at(std::string(keys::alternatePanelFont)),
              PlistValue("Alpha Serif Bold"));
    EXPECT_EQ(savedSettings().at(std::string(keys::itemHeight)), PlistValue(64.0));
}

TEST_F(LayoutsTest, FailuresAreToldAndNothingIsLost)
{
    panels.fileAnswers.push_back("/nonexistent/folder/Mine.vextolayout");
    choose("Save...");
    ASSERT_EQ(logged.size(), 1u);
    EXPECT_EQ(logged[0], "[Vexto] could not write </nonexistent/folder/Mine.vextolayout>");
    EXPECT_EQ(Application::shared().beepCount(), 1);

    // Cancelled: nothing at all happens.
    center.clearPosted();
    choose("Open...");
    EXPECT_TRUE(center.posted().empty());

    // A file that is no layout restores the default appearance, saves it, and says why.
    pane->settings()[std::string(keys::itemHeight)] = PlistValue(80.0);
    writeText(home.file("broken.vextolayout"), "<plist><dict><key>x</key>");
    panels.fileAnswers.push_back(home.file("broken.vextolayout"));
    choose("Open...");
    EXPECT_EQ(savedSettings().at(std::string(keys::itemHeight)), PlistValue(48.0));
    ASSERT_EQ(logged.size(), 2u);
    EXPECT_EQ(logged[1], "[Vexto] could not use " + home.file("broken.vextolayout") +
                             " (not a property list): the built-in look is shown instead");
}

} // namespace
} // namespace vexto::test
