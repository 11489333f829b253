#include "pane/SettingsStore.hpp"

#include "../foundation/TestSupport.hpp"
#include "foundation/DictionaryExtensions.hpp"
#include "foundation/HomeDirectory.hpp"
#include "foundation/Log.hpp"
#include "foundation/PropertyListCodec.hpp"
#include "platform/fake/FakeRunLoop.hpp"
#include "settings/SettingKeys.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <regex>
#include <vector>

namespace vexto {
namespace {

namespace keys = settingkeys;

const PlistDictionary shippedDefaults{{std::string(keys::panelDelay), 200},
                                      {std::string(keys::showPreviews), true},
                                      {std::string(keys::applicationExceptions), PlistArray{}}};

class SettingsStoreTest : public ::testing::Test {
protected:
    SettingsStoreTest()
    {
        HomeDirectory::setOverride(home.path());
        writeDefaults(shippedDefaults);
    }
    ~SettingsStoreTest() override { HomeDirectory::clearOverride(); }

    void writeDefaults(const PlistDictionary& defaults)
    {
        test::writeText(defaultsPath, *PropertyListCodec::xmlFrom(defaults));
    }

    std::unique_ptr<SettingsStore> makeStore()
    {
        SettingsStore::Hooks hooks;
        hooks.didSave = [this] {
            saveTimes.push_back(loop.now());
        };
        hooks.localized = [](std::string_view text) {
            return "[" + std::string(text) + "]";
        };
        hooks.runAlert = [this](const AlertRequest& alert) {
            alerts.push_back(alert);
        };
        return std::make_unique<SettingsStore>(loop, defaultsPath, hooks);
    }

    std::string settingsFile() const
    {
        return home.file("Library/Application Support/Vexto/Settings.plist");
    }
    std::string fileText() const { return test::readText(settingsFile()); }
    void writeSettingsFile(std::string_view text)
    {
        std::filesystem::create_directories(home.file("Library/Application Support/Vexto"));
        test::writeText(settingsFile(), text);
    }

    test::TemporaryFolder home;
    test::TemporaryFolder bundle;
    std::string defaultsPath = bundle.file("KRVXDefaultSettings.plist");
    FakeRunLoop loop;
    std::vector<double> saveTimes;
    std::vector<AlertRequest> alerts;
};

TEST_F(SettingsStoreTest, FirstRunCreatesTheFoldersAndWritesTheDefaultsOnce)
{
    auto store = makeStore();
    EXPECT_EQ(store->settings(), shippedDefaults);
    EXPECT_EQ(fileText(), *PropertyListCodec::xmlFrom(shippedDefaults));
    EXPECT_EQ(saveTimes.size(), 1u) << "the daemon hears of the new file once";
    EXPECT_EQ(store->userDefinedLayoutsPath(),
              home.file("Library/Application Support/Vexto/Layouts"));
    EXPECT_TRUE(std::filesystem::is_directory(*store->userDefinedLayoutsPath()));
    store->settings();
    EXPECT_EQ(saveTimes.size(), 1u) << "loaded once, kept after that";
}

std::vector<std::string> namesIn(const std::string& folder)
{
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

TEST_F(SettingsStoreTest, AnUnusableFileIsKeptAsideAndReplacedByTheDefaults)
{
    std::string deep = "<plist><array>";
    for (int i = 0; i < 600; ++i) {
        deep += "<array>";
    }
    const std::string binaryWithNul = {'b', 'p', 'l', 'i', 's', 't', '0', '0', 0x61, 0, 0};
    const std::pair<std::string, std::string> broken[] = {
        {"<?xml version=\"1.0\"?><plist version=\"1.0\"><array/></plist>", "not a dictionary"},
        {"<?xml version=\"1.0\"?><plist version=\"1.0\"><dict><key>a</key>", "not a property list"},
        {"not a property list", "not a property list"},
        {"", "empty file"},
        {deep, "nested deeper than 512 levels"},
        {"<plist><string>caf\xE9</string></plist>", "text is not valid UTF-8"},
        {binaryWithNul, "malformed binary property list or nested too deeply"},
    };
    for (const auto& [content, reason] : broken) {
        SCOPED_TRACE(reason);
        std::filesystem::remove_all(home.file("Library"));
        writeSettingsFile(content);
        saveTimes.clear();
        std::vector<std::string> logged;
        Log::setSink([&](const std::string& line) { logged.push_back(line); });
        auto store = makeStore();
        EXPECT_EQ(store->settings(), shippedDefaults);
        Log::clearSink();
        EXPECT_EQ(fileText(), *PropertyListCodec::xmlFrom(shippedDefaults));
        EXPECT_EQ(saveTimes.size(), 1u);
        const auto names = namesIn(home.file("Library/Application Support/Vexto"));
        ASSERT_EQ(names.size(), 2u); // the new file and the damaged one
        const std::string& kept = names[1];
        EXPECT_TRUE(std::regex_match(kept, std::regex(R"(Settings\.plist\.damaged-\d{8}-\d{6})")))
            << kept;
        EXPECT_EQ(test::readText(home.file("Library/Application Support/Vexto/" + kept)), content);
        ASSERT_EQ(logged.size(), 1u);
        EXPECT_EQ(logged[0],
                  "[Vexto] settings file could not be used (" + reason + "); kept it as " + kept);
    }
}

TEST_F(SettingsStoreTest, OnlyTheNewestDamagedFilesAreKept)
{
    const std::string folder = home.file("Library/Application Support/Vexto/");
    writeSettingsFile("damaged");
    for (int day = 10; day < 16; ++day) {
        test::writeText(folder + "Settings.plist.damaged-200001" + std::to_string(day) + "-120000",
                        "older");
    }
    auto store = makeStore();
    store->settings();
    const auto names = namesIn(folder);
    const auto damaged = std::count_if(names.begin(), names.end(), [](const std::string& name) {
        return name.starts_with("Settings.plist.damaged-");
    });
    EXPECT_EQ(damaged, 5);
    EXPECT_FALSE(std::filesystem::exists(folder + "Settings.plist.damaged-20000111-120000"));
    EXPECT_TRUE(std::filesystem::exists(folder + "Settings.plist.damaged-20000115-120000"));
}

TEST_F(SettingsStoreTest, LoadingRemovesWhatInterruptedSavesLeftAndNothingElse)
{
    const std::string folder = home.file("Library/Application Support/Vexto/");
    writeSettingsFile(*PropertyListCodec::xmlFrom(shippedDefaults));
    for (std::string_view name :
         {"Settings.plist.a1B2c3", "Settings.plist.zzzzzz",
          "Settings.plist.damaged-20000101-000000", "Settings.plist.a1B2c",
          "Settings.plist.a1B2c3d", "Settings.plist.a1-2c3", "Other.a1B2c3"}) {
        test::writeText(folder + std::string(name), "x");
    }
    auto store = makeStore();
    store->settings();
    EXPECT_EQ(namesIn(folder),
              (std::vector<std::string>{"Other.a1B2c3", "Settings.plist", "Settings.plist.a1-2c3",
                                        "Settings.plist.a1B2c", "Settings.plist.a1B2c3d",
                                        "Settings.plist.damaged-20000101-000000"}));
}

TEST_F(SettingsStoreTest, ASettingsFileKeptInDotfilesIsReadAndSavedThroughItsLink)
{
    test::TemporaryFolder dotfiles;
    const std::string real = dotfiles.file("vexto.plist");
    test::writeText(
        real, *PropertyListCodec::xmlFrom(PlistDictionary{{std::string(keys::panelDelay), 700}}));
    test::writeText(dotfiles.file("vexto.plist.Ab12Cd"), "left by a save cut short");
    std::filesystem::create_directories(home.file("Library/Application Support/Vexto"));
    std::filesystem::create_symlink(real, settingsFile());

    auto store = makeStore();
    EXPECT_EQ(store->integerForSetting(keys::panelDelay, 0), 700);
    store->setValue(PlistValue(800), keys::panelDelay);
    EXPECT_TRUE(std::filesystem::is_symlink(settingsFile()));
    EXPECT_EQ(namesIn(dotfiles.path()), std::vector<std::string>{"vexto.plist"});
    EXPECT_NE(test::readText(real).find("<integer>800</integer>"), std::string::npos);
    EXPECT_TRUE(alerts.empty());
}

TEST_F(SettingsStoreTest, ADanglingOrLoopingLinkIsKeptAsideAndTheDefaultsTakeItsPlace)
{
    const std::string folder = home.file("Library/Application Support/Vexto");
    // A link to a damaged file is kept aside for the file's own fault.
    test::TemporaryFolder dotfiles;
    test::writeText(dotfiles.file("damaged.plist"), "<plist><dict>");
    const std::pair<std::string, std::string> links[] = {
        {"/nonexistent/vexto.plist", "a link to /nonexistent/vexto.plist, which does not exist"},
        {"Settings.plist", "a link that loops"},
        {dotfiles.file("damaged.plist"), "not a property list"},
    };
    for (const auto& [target, reason] : links) {
        SCOPED_TRACE(reason);
        std::filesystem::remove_all(home.file("Library"));
        std::filesystem::create_directories(folder);
        std::filesystem::create_symlink(target, settingsFile());
        std::vector<std::string> logged;
        Log::setSink([&](const std::string& line) { logged.push_back(line); });
        auto store = makeStore();
        EXPECT_EQ(store->settings(), shippedDefaults);
        Log::clearSink();
        EXPECT_FALSE(std::filesystem::is_symlink(settingsFile()));
        EXPECT_EQ(fileText(), *PropertyListCodec::xmlFrom(shippedDefaults));
        const auto names = namesIn(folder);
        ASSERT_EQ(names.size(), 2u);
        EXPECT_EQ(std::filesystem::read_symlink(folder + "/" + names[1]), target);
        ASSERT_EQ(logged.size(), 1u);
        EXPECT_EQ(logged[0], "[Vexto] settings file could not be used (" + reason +
                                 "); kept it as " + names[1]);
        EXPECT_TRUE(alerts.empty());
    }
}

TEST_F(SettingsStoreTest, ASaveThatFailsAtAnyStepAlertsAndLosesNothing)
{
    auto store = makeStore();
    store->settings();
    const std::string before = fileText();
    for (auto step :
         {test::FailingStep::Create, test::FailingStep::Write, test::FailingStep::SyncFile,
          test::FailingStep::Rename, test::FailingStep::SyncFolder}) {
        for (int error : {ENOSPC, EIO, EACCES}) {
            SCOPED_TRACE(std::to_string(int(step)) + " " + std::to_string(error));
            alerts.clear();
            saveTimes.clear();
            {
                test::FailingFileSystemCalls failing(step, error);
                store->setValue(PlistValue(1000 + error), keys::panelDelay);
            }
            EXPECT_EQ(alerts.size(), 1u);
            EXPECT_TRUE(saveTimes.empty()) << "the daemon is not told";
            EXPECT_EQ(fileText(), before);
            EXPECT_EQ(store->integerForSetting(keys::panelDelay, 0), 1000 + error);
            EXPECT_EQ(namesIn(home.file("Library/Application Support/Vexto")),
                      std::vector<std::string>{"Settings.plist"});
        }
    }
}

TEST_F(SettingsStoreTest, ABinaryFileIsReadAsItIsAndWrittenBackAsXml)
{
    const PlistDictionary stored{{std::string(keys::panelDelay), 500}};
    const auto binary = *PropertyListCodec::binaryFrom(stored);
    writeSettingsFile(std::string(binary.begin(), binary.end()));
    auto store = makeStore();
    EXPECT_EQ(store->integerForSetting(keys::panelDelay, 0), 500);
    EXPECT_TRUE(saveTimes.empty()) << "reading writes nothing";
    store->setBool(true, keys::activateItem);
    EXPECT_TRUE(fileText().starts_with("<?xml"));
}

TEST_F(SettingsStoreTest, WronglyTypedValuesGiveTheCallersDefaultAndStayInTheFile)
{
    writeSettingsFile("<?xml version=\"1.0\"?><plist version=\"1.0\"><dict>"
                      "<key>Panel Delay</key><data>AAEC</data>"
                      "<key>Activate Item</key><array/>"
                      "<key>Icon Mode</key><string>0</string></dict></plist>");
    auto store = makeStore();
    EXPECT_EQ(store->integerForSetting(keys::panelDelay, 200), 200);
    EXPECT_TRUE(store->boolForSetting(keys::activateItem, true));
    EXPECT_EQ(store->integerForSetting(keys::iconMode, 1), 0) << "numbers stored as strings answer";
    EXPECT_FALSE(store->unarchivedValueForSetting(keys::panelDelay));
    store->saveSettings();
    EXPECT_NE(fileText().find("<key>Panel Delay</key>\n\t<data>"), std::string::npos);
}

TEST_F(SettingsStoreTest, NoneRemovesTheKeyAndANoneKeyDoesNothingAtAll)
{
    auto store = makeStore();
    store->settings();
    saveTimes.clear();
    store->setValue(std::nullopt, keys::panelDelay);
    EXPECT_FALSE(store->valueForSetting(keys::panelDelay));
    EXPECT_EQ(fileText().find("Panel Delay"), std::string::npos);
    EXPECT_EQ(saveTimes.size(), 1u);
    store->setValue(PlistValue(3), std::nullopt, true);
    EXPECT_EQ(saveTimes.size(), 1u) << "no save for a none key";
    store->setValue(PlistValue(3), keys::iconMode, false);
    EXPECT_EQ(fileText().find("Icon Mode"), std::string::npos) << "not saved when not asked";
}

TEST_F(SettingsStoreTest, EveryKeystrokeLeadsToItsOwnSaveHalfASecondLater)
{
    auto store = makeStore();
    store->settings();
    saveTimes.clear();
    for (int keystroke = 0; keystroke < 5; ++keystroke) {
        store->setValue(PlistValue(PlistArray{std::string(keystroke + 1, 'F')}),
                        keys::applicationExceptions, false);
        store->saveSettingsSoonAfterTimerReset(true);
        loop.advance(0.2);
    }
    loop.advance(2.0);
    ASSERT_EQ(saveTimes.size(), 5u) << "earlier requests are not withdrawn";
    for (std::size_t i = 0; i < saveTimes.size(); ++i) {
        EXPECT_NEAR(saveTimes[i], 0.5 + 0.2 * double(i), 1e-9);
    }
    EXPECT_NE(fileText().find("<string>FFFFF</string>"), std::string::npos);
    EXPECT_FALSE(store->isSavingScheduled());
}

TEST_F(SettingsStoreTest, WithoutResetAPendingSaveStandsAndAnImmediateSaveLeavesItQueued)
{
    auto store = makeStore();
    store->settings();
    saveTimes.clear();
    store->saveSettingsSoonAfterTimerReset(false);
    loop.advance(0.3);
    store->saveSettingsSoonAfterTimerReset(false);
    EXPECT_TRUE(store->isSavingScheduled());
    loop.advance(0.3);
    EXPECT_EQ(saveTimes, (std::vector<double>{0.5}));

    store->saveSettingsSoonAfterTimerReset(false);
    store->setBool(true, keys::cancelItem);
    EXPECT_FALSE(store->isSavingScheduled());
    loop.advance(1.0);
    EXPECT_EQ(saveTimes.size(), 3u) << "the immediate save, then the queued one still fires";
}

TEST_F(SettingsStoreTest, DelayedSavesFireWhileTrackingOrInAModalPanel)
{
    auto store = makeStore();
    store->settings();
    saveTimes.clear();
    loop.setMode(RunLoopMode::EventTracking);
    store->saveSettingsSoonAfterTimerReset(false);
    loop.advance(0.5);
    loop.setMode(RunLoopMode::ModalPanel);
    store->saveSettingsSoonAfterTimerReset(false);
    loop.advance(0.5);
    EXPECT_EQ(saveTimes.size(), 2u);
}

TEST_F(SettingsStoreTest, RevertRewritesTheDefaultsOrWithoutThemEmptiesMemoryOnly)
{
    auto store = makeStore();
    store->setValue(PlistValue(1000), keys::panelDelay);
    saveTimes.clear();
    EXPECT_EQ(store->revertedSettings(true), shippedDefaults);
    EXPECT_EQ(fileText(), *PropertyListCodec::xmlFrom(shippedDefaults));
    EXPECT_EQ(saveTimes.size(), 1u);

    std::filesystem::remove(defaultsPath);
    auto withoutDefaults = makeStore();
    const std::string before = fileText();
    saveTimes.clear();
    EXPECT_TRUE(withoutDefaults->revertedSettings(true).empty());
    EXPECT_EQ(fileText(), before);
    EXPECT_TRUE(saveTimes.empty());
}

TEST_F(SettingsStoreTest, WithoutDefaultsAFirstRunStartsEmptyWritesNothingAndSaysWhy)
{
    std::filesystem::remove(defaultsPath);
    std::vector<std::string> logged;
    Log::setSink([&](const std::string& line) { logged.push_back(line); });
    auto store = makeStore();
    EXPECT_TRUE(store->settings().empty());
    Log::clearSink();
    EXPECT_EQ(logged, std::vector<std::string>{"[Vexto] could not use " + defaultsPath +
                                               " (cannot be read (No such file or directory)): "
                                               "settings without a value of their own stay empty"});
    EXPECT_FALSE(std::filesystem::exists(settingsFile()));
    store->setBool(true, keys::activateItem);
    EXPECT_TRUE(std::filesystem::exists(settingsFile()));
}

TEST_F(SettingsStoreTest, AnUnwritableSupportFolderRaisesTheAlertAndKeepsTheChange)
{
    std::filesystem::create_directories(home.file("Library"));
    test::writeText(home.file("Library/Application Support"), "a file where the folder should be");
    auto store = makeStore();
    EXPECT_FALSE(store->applicationSupportPath());
    EXPECT_FALSE(store->settingsPath());
    EXPECT_FALSE(store->userDefinedLayoutsPath());
    EXPECT_EQ(store->settings(), shippedDefaults) << "loading falls back to the defaults";
    ASSERT_EQ(alerts.size(), 1u) << "writing them back failed";

    EXPECT_FALSE(store->saveSettings());
    store->setValue(PlistValue(0), keys::panelDelay);
    EXPECT_EQ(store->integerForSetting(keys::panelDelay, 200), 0) << "the change stays in memory";
    EXPECT_TRUE(saveTimes.empty()) << "the daemon is not told";
    const AlertRequest& alert = alerts.back();
    EXPECT_EQ(alert.title, "[Vexto - Fatal Error]");
    EXPECT_EQ(alert.message,
              "[Could not save settings. Please try again or send a brief bug report to "
              "<support@vexto.app>. Thanks!]");
    EXPECT_EQ(alert.defaultButton, "[OK]");
    EXPECT_TRUE(alert.alternateButton.empty());
}

TEST_F(SettingsStoreTest, ColoursRoundTripThroughTheStoredArchive)
{
    auto store = makeStore();
    archiveObject(store->settings(), Color::calibratedWhite(0.9f, 0.8f),
                  keys::dockIndicatorBorderColor);
    store->saveSettings();
    auto reloaded = makeStore();
    EXPECT_EQ(reloaded->unarchivedValueForSetting(keys::dockIndicatorBorderColor),
              ArchivedObject(Color::calibratedWhite(0.9f, 0.8f)));
}

} // namespace
} // namespace vexto
