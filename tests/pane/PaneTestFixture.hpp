#pragma once

#include "../foundation/TestSupport.hpp"
#include "foundation/DictionaryExtensions.hpp"
#include "foundation/HomeDirectory.hpp"
#include "foundation/PropertyListCodec.hpp"
#include "pane/KRVXPreferencePane.hpp"
#include "platform/fake/FakeAccessibilityStatus.hpp"
#include "platform/fake/FakeDesktop.hpp"
#include "platform/fake/FakeDistributedNotificationCenter.hpp"
#include "platform/fake/FakeForeignPreferences.hpp"
#include "platform/fake/FakeKeyEventTaps.hpp"
#include "platform/fake/FakeProcessList.hpp"
#include "platform/fake/FakeRunLoop.hpp"
#include "ports/ShortcutOwners.hpp"
#include "ports/SystemVersion.hpp"
#include "settings/SettingKeys.hpp"
#include "system/DaemonControl.hpp"
#include "toolkit/Application.hpp"
#include "toolkit/ColorPanel.hpp"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>

namespace vexto::test {

// A pane in a temporary bundle, with a temporary home and the fake platform.
class PaneTest : public ::testing::Test {
protected:
    PaneTest()
    {
        Application::resetForTesting();
        ColorPanel::resetForTesting();
        SystemVersion::reset();
        KRVXPreferencePane::resetSingletonForTesting();
        DaemonControl::resetRestartOnceForTesting();
        processes.runLoop = &loop;
        // Opening the daemon bundle starts a daemon that quits when asked.
        desktop.openFileHandler = [this](const std::string&) {
            processes.add({.pid = nextDaemonPID++, .name = "vextodaemon", .quitsWhenAsked = true});
            return true;
        };
        HomeDirectory::setOverride(home.path());
        std::filesystem::create_directories(resources());
        std::filesystem::create_directories(resources() + "/vextodaemon.app/Contents");
        writeText(bundlePath() + "/Contents/Info.plist",
                  plist("<key>CFBundleShortVersionString</key><string>3.1</string>"
                        "<key>CFBundleVersion</key><string>310</string>"
                        "<key>CFBundleHelpBookName</key><string>Vexto Help</string>"));
        writeText(resources() + "/vextodaemon.app/Contents/Info.plist",
                  plist("<key>CFBundleVersion</key><string>311</string>"));
        writeDefaults(PlistDictionary{{std::string(settingkeys::panelDelay), 200},
                                      {std::string(settingkeys::activateItem), true},
                                      {std::string(settingkeys::panelShadow), true}});
    }

    ~PaneTest() override
    {
        pane.reset();
        HomeDirectory::clearOverride();
        SystemVersion::reset();
        Application::resetForTesting();
        ColorPanel::resetForTesting();
    }

    static std::string plist(const std::string& body)
    {
        return "<?xml version=\"1.0\"?><plist version=\"1.0\"><dict>" + body + "</dict></plist>";
    }

    std::string bundlePath() const { return bundleFolder.file("Vexto.prefPane"); }
    std::string resources() const { return bundlePath() + "/Contents/Resources"; }
    std::string settingsFile() const
    {
        return home.file("Library/Application Support/Vexto/Settings.plist");
    }

    void writeDefaults(const PlistDictionary& defaults)
    {
        writeText(resources() + "/KRVXDefaultSettings.plist",
                  *PropertyListCodec::xmlFrom(defaults));
    }

    // What the settings file on disk holds; empty when there is none.
    PlistDictionary savedSettings() const
    {
        return deeplyMutableDictionaryWithContentsOfFile(settingsFile())
            .value_or(PlistDictionary{});
    }

    void writeSettings(const PlistDictionary& settings)
    {
        std::filesystem::create_directories(home.file("Library/Application Support/Vexto"));
        writeText(settingsFile(), *PropertyListCodec::xmlFrom(settings));
    }

    KRVXPreferencePane& load()
    {
        PaneEnvironment environment{loop, center, desktop, desktop, desktop, nullptr};
        environment.keyTaps = &keyTaps;
        environment.processes = &processes;
        environment.processSignals = &processes;
        environment.foreignPreferences = &preferences;
        environment.accessibility = &accessibility;
        environment.drawingOnly = drawingOnly;
        environment.filePanels = filePanels;
        environment.fonts = fontCatalog;
        environment.hotKeys = hotKeys;
        environment.shortcutOwners = shortcutOwners;
        environment.sharedLayoutsFolder = sharedLayouts.path();
        environment.preferencePaneFolders = paneFolders;
        pane = std::make_unique<KRVXPreferencePane>(bundlePath(), environment);
        main = pane->loadMainView();
        return *pane;
    }

    const PaneOutlets& o() const { return pane->outlets(); }

    std::size_t postedCount(std::string_view suffix) const
    {
        std::size_t count = 0;
        for (const auto& posted : center.posted()) {
            count += posted.name == "app.vexto.preferences" + std::string(suffix);
        }
        return count;
    }
    std::size_t daemonUpdates() const { return postedCount(": Update Daemon"); }

    TemporaryFolder home;
    TemporaryFolder bundleFolder;
    TemporaryFolder sharedLayouts;
    std::vector<std::string> paneFolders;
    FakeRunLoop loop;
    FakeDistributedNotificationCenter center;
    FakeDesktop desktop;
    FakeKeyEventTaps keyTaps;
    FakeProcessList processes;
    FakeForeignPreferences preferences;
    FakeAccessibilityStatus accessibility;
    int nextDaemonPID = 500;
    bool drawingOnly = false;
    FilePanels* filePanels = nullptr;
    HotKeyRegistrar* hotKeys = nullptr;       // none: every free combination is accepted
    ShortcutOwners* shortcutOwners = nullptr; // none: the desktop names no one
    const FontCatalog* fontCatalog = nullptr;
    std::unique_ptr<KRVXPreferencePane> pane;
    View* main = nullptr;
};

} // namespace vexto::test
