#include "PaneTestFixture.hpp"
#include "foundation/Log.hpp"
#include "platform/fake/FakeAlerts.hpp"
#include "system/KRVXRemoteSparkleWrapper.hpp"
#include "toolkit/Button.hpp"
#include "toolkit/ColorWell.hpp"
#include "toolkit/TextField.hpp"
#include "widgets/KRVXLinkTextField.hpp"

#include <cstdlib>
#include <ctime>

namespace vexto::test {
namespace {

namespace keys = settingkeys;

class DaemonAndSystemStatusTest : public PaneTest {
protected:
    DaemonAndSystemStatusTest()
    {
        Application::shared().setAlerts(&alerts);
        Log::setSink([this](const std::string& line) { logged.push_back(line); });
    }
    ~DaemonAndSystemStatusTest() override { Log::clearSink(); }

    void open()
    {
        if (!pane) {
            load();
        }
        pane->willSelect();
        pane->didSelect();
    }
    void close() { pane->didUnselect(); }

    bool savedBool(std::string_view key)
    {
        const PlistDictionary saved = savedSettings();
        const PlistValue* value = objectForKey(saved, key);
        return value != nullptr && *value == PlistValue(true);
    }
    void daemonWrites(PlistDictionary defaults)
    {
        preferences.domains["app.vexto.preferences"] = std::move(defaults);
    }

    FakeAlerts alerts;
    std::vector<std::string> logged;
};

TEST_F(DaemonAndSystemStatusTest, TheDaemonStartsByItselfOnceAndOnlyWithAccess)
{
    open();
    EXPECT_TRUE(desktop.openedFiles.empty());
    EXPECT_FALSE(savedBool(keys::autoEnabledOnce));
    EXPECT_EQ(o().warningTextField->stringValue(), "Please enable access for assistive devices");
    EXPECT_EQ(o().enableButton->title(), "Enable Vexto");
    close();

    accessibility.enabled = true;
    open();
    EXPECT_EQ(o().warningTextField->stringValue(), "");
    ASSERT_EQ(desktop.openedFiles.size(), 1u);
    EXPECT_EQ(desktop.openedFiles[0], resources() + "/vextodaemon.app");
    EXPECT_TRUE(savedBool(keys::autoEnabledOnce));
    loop.advance(3.0);
    EXPECT_EQ(o().enableButton->state(), Button::onState);
    EXPECT_EQ(o().enableButton->title(), "Disable Vexto");
    close();

    open();
    EXPECT_EQ(desktop.openedFiles.size(), 1u);
    EXPECT_EQ(
        std::count(logged.begin(), logged.end(), "[Vexto] auto-launching vextodaemon once..."), 1);
}

TEST_F(DaemonAndSystemStatusTest, ADaemonFromBeforeIsReplacedAndTheFirstStartNotedAnyway)
{
    processes.add({.pid = 20, .name = "vextodaemon", .quitsWhenAsked = true});
    processes.add({.pid = 21, .name = "vextodaemon", .quitsWhenAsked = true});
    accessibility.enabled = true;
    open();
    EXPECT_EQ(processes.quitRequests, (std::vector<int>{20, 21}));
    EXPECT_EQ(o().enableButton->state(), Button::onState);
    EXPECT_TRUE(savedBool(keys::autoEnabledOnce));
    EXPECT_TRUE(desktop.openedFiles.empty()) << "no click: it was running";
    loop.advance(1.0);
    EXPECT_EQ(desktop.openedFiles.size(), 1u) << "relaunched once the old ones are gone";

    // A second pane in the same process does not restart it again.
    close();
    pane.reset();
    open();
    EXPECT_EQ(processes.quitRequests.size(), 2u);
}

TEST_F(DaemonAndSystemStatusTest, APaneShownOnlyToBeDrawnStartsAndStopsNothing)
{
    processes.add({.pid = 20, .name = "vextodaemon", .quitsWhenAsked = true});
    accessibility.enabled = true;
    drawingOnly = true;
    open();
    EXPECT_TRUE(processes.quitRequests.empty());
    EXPECT_EQ(o().enableButton->state(), Button::onState);
    processes.remove(20);
    open();
    EXPECT_TRUE(desktop.openedFiles.empty());
    EXPECT_FALSE(savedBool(keys::autoEnabledOnce));
}

TEST_F(DaemonAndSystemStatusTest, TheEnableButtonStartsAndStopsTheDaemon)
{
    open();
    o().enableButton->performClick();
    EXPECT_EQ(desktop.openedFiles.size(), 1u);
    o().enableButton->performClick();
    EXPECT_EQ(postedCount(": Quit Daemon"), 1u);
    EXPECT_EQ(center.posted().back().object, std::nullopt);
    EXPECT_TRUE(alerts.shown.empty());

    // The daemon quits by itself and says so; the button follows at once.
    processes.remove(500);
    center.deliver("app.vexto.preferences: Update Pane");
    EXPECT_EQ(o().enableButton->state(), Button::offState);
    EXPECT_EQ(o().enableButton->title(), "Enable Vexto");
}

// The pane watches the daemon it found, so neither a crash nor a quit waits for the next refresh.
TEST_F(DaemonAndSystemStatusTest, ADaemonsEndIsShownAtOnce)
{
    open();
    o().enableButton->performClick();
    center.deliver("app.vexto.preferences: Update Pane");
    ASSERT_EQ(o().enableButton->title(), "Disable Vexto");
    ASSERT_TRUE(o().checkNowButton->isEnabled());
    processes.remove(500);
    loop.advance(0.05);
    EXPECT_EQ(o().enableButton->title(), "Enable Vexto");
    EXPECT_EQ(o().enableButton->state(), Button::offState);
    EXPECT_FALSE(o().checkNowButton->isEnabled());

    // Disabling: the title follows the daemon's exit, not the three-second refresh.
    o().enableButton->performClick();
    center.deliver("app.vexto.preferences: Update Pane");
    o().enableButton->performClick();
    EXPECT_EQ(postedCount(": Quit Daemon"), 1u);
    processes.remove(501);
    loop.advance(0.05);
    EXPECT_EQ(o().enableButton->title(), "Enable Vexto");

    // A pane that is not shown watches nothing.
    o().enableButton->performClick();
    center.deliver("app.vexto.preferences: Update Pane");
    EXPECT_EQ(processes.exitWatchCount(), 1u);
    close();
    EXPECT_EQ(processes.exitWatchCount(), 0u);
}

// A flood of ": Update Pane" is answered at once, then once more when the flood is over: each
// refresh looks at the process list, and thousands of them would stall the pane.
TEST_F(DaemonAndSystemStatusTest, AFloodOfRefreshRequestsCostsTwoLooks)
{
    open();
    loop.advance(0);
    processes.add({.pid = 42, .name = "vextodaemon"});
    const int before = processes.getNextProcessCalls;
    for (int signal = 0; signal < 1000; ++signal) {
        center.deliver("app.vexto.preferences: Update Pane");
    }
    EXPECT_EQ(o().enableButton->state(), Button::onState) << "the first is answered at once";
    const int during = processes.getNextProcessCalls - before;
    processes.remove(42);
    loop.advance(0);
    EXPECT_EQ(o().enableButton->state(), Button::offState) << "the last is answered too";
    const int walks = processes.getNextProcessCalls - before;
    EXPECT_LE(walks, 2 * during + 2) << "two looks, not a thousand";
    EXPECT_LT(walks, 20);
}

TEST_F(DaemonAndSystemStatusTest, ADaemonThatCannotBeStartedEndsInTheFatalErrorAlert)
{
    desktop.openFileHandler = [](const std::string&) {
        return false;
    };
    open();
    o().enableButton->performClick();
    EXPECT_EQ(desktop.openedFiles.size(), 10u);
    EXPECT_DOUBLE_EQ(loop.totalSlept(), 10.0);
    ASSERT_EQ(alerts.shown.size(), 1u);
    EXPECT_EQ(alerts.shown[0].title, "Vexto - Fatal Error");
    EXPECT_EQ(alerts.shown[0].message,
              "Could not launch Vexto Daemon. Please try again or send a brief bug report to "
              "<support@vexto.app>. Thanks!");
    EXPECT_EQ(alerts.shown[0].defaultButton, "OK");
}

TEST_F(DaemonAndSystemStatusTest, TheRefreshIsDelayedAndCoalesced)
{
    open();
    processes.add({.pid = 42, .name = "vextodaemon"});
    center.deliver("app.vexto.preferences: Update Pane Soon");
    loop.advance(2.0);
    center.deliver("app.vexto.preferences: Update Pane Soon");
    loop.advance(2.0);
    EXPECT_EQ(o().enableButton->state(), Button::offState);
    loop.advance(1.0);
    EXPECT_EQ(o().enableButton->state(), Button::onState);

    close();
    processes.remove(42);
    center.deliver("app.vexto.preferences: Update Pane");
    EXPECT_EQ(o().enableButton->state(), Button::onState) << "not listening while unselected";
}

struct SpacesCase {
    double appKit;
    bool dockSpaces;
    bool across;
    bool badges;
    bool hideCurrent;
    int expectedBadgeState;
    bool expectedEnabled;
};

TEST_F(DaemonAndSystemStatusTest, TheSpacesControlsFollowTheSystemAndTheSettings)
{
    const SpacesCase cases[] = {
        {1187, false, true, true, true, Button::onState, true},    // reduced support: no mixed
        {1100, false, true, true, true, Button::mixedState, true}, // 10.7: always on
        {1100, false, true, true, false, Button::onState, true},
        {1100, false, false, true, true, Button::offState, false},
        {1000, false, true, true, true, Button::offState, false}, // 10.6, Spaces off
        {1000, true, true, true, true, Button::mixedState, true},
    };
    for (const SpacesCase& c : cases) {
        SCOPED_TRACE(testing::Message() << c.appKit << " dock " << c.dockSpaces);
        pane.reset();
        KRVXPreferencePane::resetSingletonForTesting();
        SystemVersion::setAppKitVersionNumber(c.appKit);
        preferences.domains["com.apple.dock"] = {{"workspaces", c.dockSpaces}};
        writeSettings({{std::string(keys::switchAcrossSpaces), c.across},
                       {std::string(keys::alwaysShowSpaceBadges), c.badges},
                       {std::string(keys::hideCurrentSpaceBadges), c.hideCurrent}});
        open();
        EXPECT_EQ(o().showSpaceBadgesButton->state(), c.expectedBadgeState);
        EXPECT_EQ(o().showSpaceBadgesButton->isEnabled(), c.expectedEnabled);
        EXPECT_EQ(o().spaceBadgeColorWell->isEnabled(), c.expectedEnabled);
        EXPECT_EQ(o().switchAcrossSpacesButton->state() == Button::onState,
                  c.across && (c.appKit > 1038 || c.dockSpaces));
        // The tip promises the dash only where the box has it.
        if (c.expectedEnabled) {
            EXPECT_EQ(o().showSpaceBadgesButton->toolTip().find("Dash") != std::string::npos,
                      c.appKit <= 1138);
        }
        close();
    }
}

TEST_F(DaemonAndSystemStatusTest, TheBannerLinksToTheAccessibilityPaneWhenThereIsOne)
{
    std::filesystem::create_directories(
        home.file("Library/PreferencePanes/UniversalAccessPref.prefPane"));
    open();
    EXPECT_EQ(o().warningTextField->stringValue(), "Please enable access for assistive devices");
    EXPECT_EQ(pane->linkOfOutletNamed("warningTextField"),
              "file://" + home.file("Library/PreferencePanes/UniversalAccessPref.prefPane"));
    EXPECT_EQ(o().warningTextField->toolTipAtButton({}),
              "Open the \"Accessibility\" preference pane");
}

// In a Wayland session no setting gives the daemon the keyboard: the banner says what does, in
// the pane's language, and links nowhere.
TEST_F(DaemonAndSystemStatusTest, AWaylandSessionIsNamedInsteadOfAssistiveAccess)
{
    std::filesystem::create_directories(
        home.file("Library/PreferencePanes/UniversalAccessPref.prefPane"));
    accessibility.enabled = true;
    accessibility.wayland = true;
    open();
    EXPECT_EQ(o().warningTextField->stringValue(),
              "Window cycling needs an X11 session: this is a Wayland session");
    EXPECT_EQ(pane->linkOfOutletNamed("warningTextField"), "");
    EXPECT_TRUE(desktop.openedFiles.empty()) << "no daemon started that could not cycle";
}

// Where the host names the folders, the first that holds the pane wins.
TEST_F(DaemonAndSystemStatusTest, TheAccessibilityPaneIsLookedForInTheFoldersTheHostNames)
{
    test::TemporaryFolder system;
    test::TemporaryFolder other;
    std::filesystem::create_directories(system.file("UniversalAccessPref.prefPane"));
    std::filesystem::create_directories(other.file("UniversalAccessPref.prefPane"));
    paneFolders = {other.file("missing"), system.path(), other.path()};
    open();
    EXPECT_EQ(pane->linkOfOutletNamed("warningTextField"),
              "file://" + system.file("UniversalAccessPref.prefPane"));
}

class UpdateControlsTest : public DaemonAndSystemStatusTest {
protected:
    UpdateControlsTest()
    {
        ::setenv("TZ", "UTC", 1);
        ::tzset();
    }
    ~UpdateControlsTest() override
    {
        ::unsetenv("TZ");
        ::tzset();
    }
    std::string status() const { return o().statusTextField->stringValue(); }
    std::string date() const { return o().statusDateTextField->stringValue(); }
};

TEST_F(UpdateControlsTest, TheControlsAreOffWhileNoDaemonRuns)
{
    daemonWrites({{"SUEnableAutomaticChecks", true}});
    open();
    EXPECT_EQ(o().autoUpdateCheckingSwitch->state(), Button::offState);
    EXPECT_FALSE(o().autoUpdateCheckingSwitch->isEnabled());
    EXPECT_FALSE(o().checkNowButton->isEnabled());

    processes.add({.pid = 42, .name = "vextodaemon"});
    center.deliver("app.vexto.preferences: Update Pane");
    EXPECT_EQ(o().autoUpdateCheckingSwitch->state(), Button::onState);
    EXPECT_TRUE(o().checkNowButton->isEnabled());
    daemonWrites({{"SUEnableAutomaticChecks", false}});
    center.deliver("app.vexto.preferences: Daemon->PrefPane Sparkle Instruction", "Check Now");
    EXPECT_EQ(o().autoUpdateCheckingSwitch->state(), Button::onState) << "not an instruction";
    center.deliver("app.vexto.preferences: Daemon->PrefPane Sparkle Instruction",
                   "Invalidate Update Version");
    EXPECT_EQ(o().autoUpdateCheckingSwitch->state(), Button::offState);
}

TEST_F(UpdateControlsTest, TheStatusLinesTellTheDaemonsLastCheck)
{
    processes.add({.pid = 42, .name = "vextodaemon"});
    writeText(bundlePath() + "/Contents/Info.plist",
              plist("<key>CFBundleShortVersionString</key><string>3.1</string>"
                    "<key>CFBundleName</key><string>Vexto</string>"));
    const auto statusOf = [](const char* current, const char* update,
                             std::optional<std::int64_t> checked) {
        PlistDictionary status{{"Current Version", current}, {"Update Version", update}};
        if (checked) {
            status["Check Date"] = PlistValue(*checked);
        }
        return PlistDictionary{{"KRVXSparkleWrapperStatus", status}};
    };
    daemonWrites(statusOf("3.1", "3.2", 1795354500)); // 22 November 2026, 13:35 UTC
    open();
    EXPECT_EQ(status(), "Vexto 3.2 is now available");
    EXPECT_EQ(date(), "Last check: November 22, 2026 - 1:35 PM");

    daemonWrites(statusOf("3.1", "", std::nullopt));
    KRVXRemoteSparkleWrapper::sharedSparkleWrapper().updateControls();
    EXPECT_EQ(status(), "Vexto is up to date");
    EXPECT_EQ(date(), "");

    daemonWrites(statusOf("3.0", "3.2", 1795443300));
    KRVXRemoteSparkleWrapper::sharedSparkleWrapper().updateControls();
    EXPECT_EQ(status(), "") << "recorded by another version";
    EXPECT_EQ(date(), "");
}

TEST_F(UpdateControlsTest, RequestsGoToTheDaemonAndTheProductPageOpens)
{
    processes.add({.pid = 42, .name = "vextodaemon"});
    open();
    o().autoUpdateCheckingSwitch->performClick();
    o().checkNowButton->performClick();
    const std::string name = "app.vexto.preferences: PrefPane->Daemon Sparkle Instruction";
    ASSERT_GE(center.posted().size(), 2u);
    const auto& posted = center.posted();
    EXPECT_EQ(posted[posted.size() - 2],
              (FakeDistributedNotificationCenter::Posted{name, "Toggle Automatic Checks"}));
    EXPECT_EQ(posted.back(), (FakeDistributedNotificationCenter::Posted{name, "Check Now"}));

    o().productPageButton->performClick();
    EXPECT_EQ(desktop.openedURLs, std::vector<std::string>{"https://vexto.app/"});
    o().productPageButton->setToolTip("not an address");
    o().productPageButton->performClick();
    EXPECT_EQ(Application::shared().beepCount(), 1);
}

} // namespace
} // namespace vexto::test
