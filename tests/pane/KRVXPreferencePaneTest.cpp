#include "PaneTestFixture.hpp"
#include "toolkit/Button.hpp"
#include "toolkit/ColorWell.hpp"
#include "toolkit/PopUpButton.hpp"
#include "toolkit/Slider.hpp"
#include "toolkit/Window.hpp"
#include "widgets/KRVXLinkTextField.hpp"

#include <cmath>
#include <limits>

namespace vexto {
namespace {

namespace keys = settingkeys;
using test::PaneTest;

const std::string updatePane = "app.vexto.preferences: Update Pane";
const std::string updatePaneSoon = "app.vexto.preferences: Update Pane Soon";

// The lowest visible control of the selected tab, in window coordinates.
double lowestControlInWindow(const TabView& tabs)
{
    const View& content = *tabs.subviews().front();
    double lowest = 1e9;
    for (const auto& view : content.subviews()) {
        if (!view->isHidden()) {
            lowest = std::min(lowest, content.convertRectToView(view->frame(), nullptr).minY());
        }
    }
    return lowest;
}

TEST_F(PaneTest, FirstLoadWritesTheDefaultsShowsTheVersionsAndTheFirstTab)
{
    KRVXPreferencePane& p = load();
    ASSERT_NE(main, nullptr);
    EXPECT_EQ(KRVXPreferencePane::vexto(), &p);
    EXPECT_TRUE(std::filesystem::exists(settingsFile()));
    EXPECT_EQ(daemonUpdates(), 1u);
    EXPECT_EQ(o().settingsTabView->selectedTabViewItem()->identifier(), "triggers");
    EXPECT_EQ(o().aboutTextField->stringValue(), "Vexto 3.1 (310/311)");
    EXPECT_EQ(p.feedbackLink(), "mailto:support@vexto.app?subject=Vexto%203.1%20(310/311)");
    EXPECT_EQ(o().feedbackTextField->stringValue(), "Send Feedback");
    ASSERT_TRUE(o().feedbackTextField->linkURL());
    EXPECT_EQ(o().feedbackTextField->linkURL()->absoluteString, p.feedbackLink());
    EXPECT_EQ(o().feedbackTextField->actionButtonToolTip(), "support@vexto.app")
        << "the bare address, over the arrow only";
    EXPECT_EQ(desktop.registeredHelpBooks, (std::vector<std::string>{bundlePath()}));
    EXPECT_DOUBLE_EQ(main->frame().width(), 668);
}

TEST_F(PaneTest, AMissingDaemonBundleLeavesItsBuildEmptyWithoutComplaint)
{
    std::filesystem::remove_all(resources() + "/vextodaemon.app");
    load();
    EXPECT_EQ(o().aboutTextField->stringValue(), "Vexto 3.1 (310/)");
}

TEST_F(PaneTest, EachSelectionHoldsExactlyOneSubscriptionPerNotification)
{
    load();
    for (int round = 0; round < 2; ++round) {
        pane->willSelect();
        pane->didSelect();
        EXPECT_EQ(center.observerCount(updatePane), 1u);
        EXPECT_EQ(center.observerCount(updatePaneSoon), 1u);
        EXPECT_EQ(desktop.workspaceObserverCount(), 1u);
        pane->willUnselect();
        pane->didUnselect();
        EXPECT_EQ(center.observerCount(updatePane), 0u);
        EXPECT_EQ(desktop.workspaceObserverCount(), 0u);
    }
    EXPECT_FALSE(ColorPanel::ignoresAlpha()) << "colour wells edit opacity while the pane shows";
}

TEST_F(PaneTest, LeavingStoresTheSelectedTabAndComingBackRestoresIt)
{
    load();
    o().settingsTabView->selectTabViewItemWithIdentifier("windows");
    center.clearPosted();
    pane->didUnselect();
    EXPECT_NE(
        test::readText(settingsFile()).find("<key>Last Tab</key>\n\t<string>windows</string>"),
        std::string::npos);
    EXPECT_EQ(daemonUpdates(), 1u) << "the save tells the daemon";
    load();
    EXPECT_EQ(o().settingsTabView->selectedTabViewItem()->identifier(), "windows");

    writeSettings(PlistDictionary{{std::string(keys::lastTab), "removed in this version"}});
    load();
    EXPECT_EQ(o().settingsTabView->selectedTabViewItem()->identifier(), "triggers");
}

TEST_F(PaneTest, OldKeysAreMigratedWithoutSaving)
{
    writeSettings(PlistDictionary{{std::string(keys::showDocumentIcons), false},
                                  {std::string(keys::alwaysShowPanel), true}});
    load();
    EXPECT_EQ(pane->integerForSetting(keys::iconMode, -1), 0);
    EXPECT_FALSE(pane->valueForSetting(keys::showDocumentIcons));
    EXPECT_TRUE(o().showDocumentIconOverlaysButton->superview()->isHidden());
    EXPECT_EQ(pane->integerForSetting(keys::panelDelay, -1), 0);
    EXPECT_EQ(o().panelDelayPopUpButton->selectedTag(), 0);
    EXPECT_FALSE(pane->valueForSetting(keys::alwaysShowPanel));
    EXPECT_EQ(daemonUpdates(), 0u) << "migrations reach the file with the next save only";

    writeSettings(PlistDictionary{{std::string(keys::showDocumentIcons), true},
                                  {std::string(keys::iconMode), 2},
                                  {std::string(keys::alwaysShowPanel), false}});
    load();
    EXPECT_EQ(pane->integerForSetting(keys::iconMode, -1), 2);
    EXPECT_FALSE(pane->valueForSetting(keys::showDocumentIcons));
    EXPECT_FALSE(o().showDocumentIconOverlaysButton->superview()->isHidden());
    EXPECT_TRUE(pane->valueForSetting(keys::alwaysShowPanel)) << "a stored false is left alone";
}

TEST_F(PaneTest, PopUpsFallBackToTheirDefaultsOrPassIndicesOnUnchecked)
{
    writeSettings(PlistDictionary{
        {std::string(keys::applicationsSortOrder), 9},
        {std::string(keys::afterCloseSelection), 7},
        {std::string(keys::activateItem), false},
        {std::string(keys::activateItemMode), 1},
        {std::string(keys::previewDelay), "500"},
        {std::string(keys::applicationExceptions), PlistArray{"Finder", "Safari"}}});
    load();
    EXPECT_EQ(o().applicationsSortOrderPopUpButton->selectedTag(), 3);
    EXPECT_EQ(o().afterClosingPopUpButton->indexOfSelectedItem(), -1) << "index 7 is passed on";
    EXPECT_EQ(o().afterZoomingPopUpButton->indexOfSelectedItem(), 2);
    EXPECT_FALSE(o().addActivateItemPopUpButton->isEnabled());
    EXPECT_EQ(o().addActivateItemPopUpButton->indexOfSelectedItem(), 1);
    EXPECT_TRUE(o().addCancelItemPopUpButton->isEnabled() == false);
    EXPECT_EQ(o().quickLookDelayPopUpButton->selectedTag(), 500) << "numbers stored as text count";
    EXPECT_EQ(o().applicationExceptionsTextField->stringValue(), "Finder,Safari");
    EXPECT_EQ(o().windowExceptionsTextField->stringValue(), "");
}

TEST_F(PaneTest, StoredNumbersBeyondEveryRangeFallBackInsteadOfWrapping)
{
    writeSettings(PlistDictionary{
        {std::string(keys::panelDelay), 4294967296LL},
        {std::string(keys::applicationsSortOrder), -4294967293LL},
        {std::string(keys::afterCloseSelection), 4294967298LL},
        {std::string(keys::applicationExceptions),
         PlistArray{"Finder", 42, true, 0.5, PlistData{1}}},
    });
    load();
    EXPECT_EQ(o().panelDelayPopUpButton->selectedTag(), 200) << "no item bears 2^32";
    EXPECT_EQ(o().applicationsSortOrderPopUpButton->selectedTag(), 3);
    EXPECT_EQ(o().afterClosingPopUpButton->indexOfSelectedItem(), -1);
    EXPECT_EQ(o().applicationExceptionsTextField->stringValue(), "Finder,42,1,0.5,<01>");
}

TEST_F(PaneTest, RealsThatAreNotNumbersOrBeyondRangeShowSensibleLabels)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double inf = std::numeric_limits<double>::infinity();
    struct Case {
        double timeout, itemHeight, width;
        std::string timeoutLabel, sizeLabel, widthLabel;
    };
    const Case cases[] = {
        {nan, nan, nan, "200 ms (Default)", "Item size: 48 pt.", "Vexto panel width: wide"},
        {inf, inf, inf, "200 ms (Default)", "Item size: 128 pt.", "Vexto panel width: wide"},
        {-inf, -inf, -inf, "200 ms (Default)", "Item size: 12 pt.", "Vexto panel width: wide"},
        {-3, -3e300, 1e300, "200 ms (Default)", "Item size: 12 pt.", "Vexto panel width: wide"},
        {1e300, 1e300, 0.2, "18446744073709551615 ms", "Item size: 128 pt.",
         "Vexto panel width: narrow"},
    };
    for (const Case& c : cases) {
        writeSettings(PlistDictionary{{std::string(keys::accessibilityApiTimeout), c.timeout},
                                      {std::string(keys::itemHeight), c.itemHeight},
                                      {std::string(keys::maximumWidth), c.width}});
        load();
        EXPECT_EQ(o().timeoutSliderValueTextField->stringValue(), c.timeoutLabel) << c.timeout;
        EXPECT_EQ(o().maximumTextSizeTextField->stringValue(), c.sizeLabel) << c.itemHeight;
        EXPECT_EQ(o().maximumPaneWidthTextField->stringValue(), c.widthLabel) << c.width;
    }
}

TEST_F(PaneTest, CheckBoxesFallBackToTheDefaultsFileThenToOff)
{
    writeSettings(PlistDictionary{{std::string(keys::cancelItem), true}});
    load();
    EXPECT_EQ(o().addActivateItemButton->state(), Button::onState) << "from the defaults file";
    EXPECT_EQ(o().addCancelItemButton->state(), Button::onState);
    EXPECT_TRUE(o().addCancelItemPopUpButton->isEnabled());
    EXPECT_EQ(o().wrapAroundScrollingButton->state(), Button::offState);
    EXPECT_EQ(o().showQuickLookButton->state(), Button::onState) << "previews default to on";
    EXPECT_TRUE(o().quickLookDelayPopUpButton->isEnabled());
    EXPECT_EQ(o().panelShadowButton->state(), Button::onState);
}

TEST_F(PaneTest, AbsentColoursShowTheirDefaultsAndStayAbsent)
{
    load();
    EXPECT_EQ(o().backgroundColorWell->color(), Color::calibratedWhite(0, 0.5f));
    EXPECT_EQ(o().keyBadgeColorWell->color(), Color::alternateSelectedControlColor());
    EXPECT_EQ(o().spaceBadgeColorWell->color(), Color::calibratedWhite(0.8f, 1.0f));
    pane->saveSettings();
    EXPECT_EQ(test::readText(settingsFile()).find("Color"), std::string::npos);
}

TEST_F(PaneTest, SliderLabelsFollowTheStoredValues)
{
    writeSettings(PlistDictionary{{std::string(keys::itemHeight), 7.4},
                                  {std::string(keys::maximumWidth), -1.0},
                                  {std::string(keys::accessibilityApiTimeout), 0.23}});
    load();
    EXPECT_EQ(o().maximumTextSizeTextField->stringValue(), "Item size: 12 pt.");
    EXPECT_EQ(o().maximumTextSizeSlider->doubleValue(), 12);
    EXPECT_EQ(o().maximumPaneWidthTextField->stringValue(), "Vexto panel width: wide");
    EXPECT_EQ(o().maximumPaneWidthSlider->doubleValue(), 1.0);
    EXPECT_EQ(o().timeoutSliderValueTextField->stringValue(), "230 ms")
        << "no snapping while loading";

    writeSettings(PlistDictionary{{std::string(keys::itemHeight), 47.5},
                                  {std::string(keys::maximumWidth), 0.5}});
    load();
    EXPECT_EQ(o().maximumTextSizeTextField->stringValue(), "Item size: 48 pt.");
    EXPECT_EQ(o().maximumPaneWidthTextField->stringValue(), "Vexto panel width: medium");
    EXPECT_EQ(o().timeoutSliderValueTextField->stringValue(), "200 ms (Default)");
}

TEST_F(PaneTest, DidSelectRefitsTheWidthOnlyBeyondTheTolerance)
{
    load();
    for (double windowWidth : {668.5, 669.0}) {
        Window window(Rect(0, 0, windowWidth, 700));
        main->setFrame(Rect(3, 0, 668, 500));
        window.contentView()->addSubview(main->shared_from_this());
        pane->didSelect();
        if (windowWidth == 669.0) {
            EXPECT_EQ(main->frame(), Rect(0, 0, 669, 500));
        } else {
            EXPECT_EQ(main->frame(), Rect(3, 0, 668, 500));
        }
        main->removeFromSuperview();
    }
}

TEST_F(PaneTest, ChoosingATabFitsTheWindowToItsContent)
{
    load();
    Window window(Rect(100, 100, 668, main->frame().height()));
    window.setContentView(main->shared_from_this());
    o().settingsTabView->selectTabViewItemWithIdentifier("about");
    EXPECT_NEAR(lowestControlInWindow(*o().settingsTabView), 27, 0.9);
    const double aboutTop = window.frame().maxY();
    o().settingsTabView->selectTabViewItemWithIdentifier("panel");
    EXPECT_NEAR(lowestControlInWindow(*o().settingsTabView), 27, 0.9);
    EXPECT_DOUBLE_EQ(window.frame().maxY(), aboutTop) << "the top edge stays";
}

TEST_F(PaneTest, TheFirstGuessFitsTheMainViewToTheSelectedTab)
{
    load();
    const TabView& tabs = *o().settingsTabView;
    const View& content = *tabs.subviews().front();
    double lowest = 1e9;
    for (const auto& view : content.subviews()) {
        lowest = std::min(lowest, content.convertRectToView(view->frame(), main).minY());
    }
    // The main view shrank from its built height until the lowest control sits 27 pt above its
    // bottom; its controls, pinned to the top, came down with it.
    EXPECT_LT(main->frame().height(), 720);
    EXPECT_NEAR(lowest, 27, 0.9);
}

TEST_F(PaneTest, OlderSystemsHideTheSpacesControlsAndCloseTheGaps)
{
    SystemVersion::setAppKitVersionNumber(900);
    load();
    EXPECT_TRUE(o().switchAcrossSpacesButton->isHidden());
    EXPECT_TRUE(o().showSpaceBadgesButton->isHidden());
    EXPECT_TRUE(o().spaceBadgeColorWell->isHidden());
    EXPECT_TRUE(o().spaceBadgeColorLabel->isHidden()) << "the well's label goes with it";

    SystemVersion::reset();
    auto newer = std::make_unique<KRVXPreferencePane>(
        bundlePath(), PaneEnvironment{loop, center, desktop, desktop, desktop, nullptr});
    KRVXPreferencePane::resetSingletonForTesting();
    newer->loadMainView();
    const PaneOutlets& fresh = newer->outlets();
    EXPECT_FALSE(fresh.switchAcrossSpacesButton->isHidden());
    EXPECT_DOUBLE_EQ(o().panelShadowButton->frame().minY(),
                     fresh.panelShadowButton->frame().minY() + 30);
    EXPECT_DOUBLE_EQ(o().maximumTextSizeSlider->frame().minY(),
                     fresh.maximumTextSizeSlider->frame().minY() + 15);
    EXPECT_DOUBLE_EQ(o().maximumPaneWidthTextField->frame().minY(),
                     fresh.maximumPaneWidthTextField->frame().minY() + 15);
    EXPECT_EQ(pane->settingForControl(o().spaceBadgeColorWell), keys::spaceIndicatorColor)
        << "the key follows the system the pane runs on now";
}

// Every visible control of every tab, in the window's coordinates.
std::vector<std::pair<const View*, Rect>> visibleControls(const View& tab)
{
    std::vector<std::pair<const View*, Rect>> found;
    std::vector<const View*> pending{&tab};
    while (!pending.empty()) {
        const View* view = pending.back();
        pending.pop_back();
        for (const auto& child : view->subviews()) {
            if (child->isHidden()) {
                continue;
            }
            if (child->subviews().empty()) {
                found.emplace_back(child.get(), child->convertRectToView(child->bounds(), nullptr));
            } else {
                pending.push_back(child.get());
            }
        }
    }
    return found;
}

TEST_F(PaneTest, NoTwoVisibleControlsOverlapOnAnySystem)
{
    for (double appKitVersion : {1200.0, 1100.0, 1000.0, 900.0, 800.0}) {
        SCOPED_TRACE(appKitVersion);
        KRVXPreferencePane::resetSingletonForTesting();
        SystemVersion::setAppKitVersionNumber(appKitVersion);
        load();
        for (int tab = 0; tab < o().settingsTabView->numberOfTabViewItems(); ++tab) {
            const TabViewItem* item = o().settingsTabView->tabViewItemAtIndex(tab);
            SCOPED_TRACE(item->identifier());
            const auto controls = visibleControls(*item->view());
            for (std::size_t i = 0; i < controls.size(); ++i) {
                for (std::size_t j = i + 1; j < controls.size(); ++j) {
                    const Rect overlap = controls[i].second.intersection(controls[j].second);
                    EXPECT_TRUE(overlap.isEmpty())
                        << controls[i].second.minY() << " / " << controls[j].second.minY();
                }
            }
        }
    }
}

TEST_F(PaneTest, RevertRestoresTheDefaultsInTheFileAndTheControls)
{
    load();
    pane->setValue(PlistValue(1000), keys::panelDelay);
    pane->setBool(false, keys::activateItem);
    pane->initializeSettings();
    EXPECT_EQ(o().panelDelayPopUpButton->selectedTag(), 1000);
    center.clearPosted();
    pane->performAction("revert:", ActionSender(static_cast<View*>(nullptr)));
    EXPECT_EQ(o().panelDelayPopUpButton->selectedTag(), 200);
    EXPECT_EQ(o().addActivateItemButton->state(), Button::onState);
    EXPECT_EQ(daemonUpdates(), 1u);
}

TEST_F(PaneTest, HelpHomeAndTheSettingsOfEachControl)
{
    load();
    pane->performAction("help:", ActionSender(static_cast<View*>(nullptr)));
    pane->performAction("goHome:", ActionSender(static_cast<View*>(nullptr)));
    EXPECT_EQ(desktop.helpPagesShown, (std::vector<std::string>{"Vexto Help/pages/Vexto.html"}));
    EXPECT_EQ(desktop.openedURLs, (std::vector<std::string>{"https://vexto.app/"}));
    EXPECT_EQ(pane->settingForControl(o().showSpaceBadgesButton), keys::alwaysShowSpaceBadges);
    EXPECT_EQ(pane->settingForControl(o().quickLookBorderColorWell), keys::previewBorderColor);
    EXPECT_FALSE(pane->settingForControl(o().enableButton));
    EXPECT_FALSE(pane->settingForControl(nullptr));
    EXPECT_TRUE(o().showSpaceBadgesButton->allowsMixedState());
}

TEST_F(PaneTest, AFailedSaveRaisesTheAlertAndGivesTheKeyBackToThePanesWindow)
{
    struct Answering : Alerts {
        std::vector<AlertRequest> shown;
        int runModal(const AlertRequest& request) override
        {
            shown.push_back(request);
            return defaultReturn;
        }
    } alerts;
    Application::shared().setAlerts(&alerts);
    load();
    Window paneWindow(Rect(0, 0, 668, 500));
    paneWindow.setContentView(main->shared_from_this());
    Window other(Rect(0, 0, 10, 10));
    other.makeKeyAndOrderFront();
    std::filesystem::remove_all(home.file("Library"));
    std::filesystem::create_directories(home.file("Library"));
    test::writeText(home.file("Library/Application Support"), "not a folder");
    pane->setBool(true, keys::wrapAroundScrolling);
    ASSERT_EQ(alerts.shown.size(), 1u);
    EXPECT_EQ(alerts.shown[0].title, "Vexto - Fatal Error");
    EXPECT_TRUE(paneWindow.isKeyWindow());
    EXPECT_TRUE(pane->boolForSetting(keys::wrapAroundScrolling));
}

} // namespace
} // namespace vexto

namespace vexto {
namespace {

namespace keys = settingkeys;
using test::PaneTest;

TEST_F(PaneTest, WronglyTypedValuesEverywhereStillLoadWithDefaultsShown)
{
    PlistDictionary hostile;
    for (std::string_view key : {keys::switchAcrossSpaces,
                                 keys::panelDelay,
                                 keys::showPanelOnMouseScreen,
                                 keys::activateItem,
                                 keys::activateItemMode,
                                 keys::cancelItem,
                                 keys::cancelItemMode,
                                 keys::applicationsSortOrder,
                                 keys::iconMode,
                                 keys::showDocumentIconOverlays,
                                 keys::panelShadow,
                                 keys::applicationExceptions,
                                 keys::windowExceptions,
                                 keys::afterZoomSelection,
                                 keys::afterCloseSelection,
                                 keys::backgroundColor,
                                 keys::selectionColor,
                                 keys::keyBadgeColor,
                                 keys::showPreviews,
                                 keys::previewDelay,
                                 keys::accessibilityApiTimeout,
                                 keys::itemHeight,
                                 keys::maximumWidth,
                                 keys::selectionGradient,
                                 keys::alternatePanelFont,
                                 keys::lastTab,
                                 keys::showDocumentIcons,
                                 keys::alwaysShowPanel,
                                 keys::cycleAllWindows}) {
        hostile.emplace(std::string(key), PlistValue(PlistData{0x04, 0x0b, 0xff}));
    }
    hostile.emplace(std::string(keys::afterMinimizeSelection),
                    PlistValue(PlistDictionary{{"a", 1}}));
    writeSettings(hostile);
    load();
    ASSERT_NE(main, nullptr);
    EXPECT_EQ(o().panelDelayPopUpButton->selectedTag(), 200);
    EXPECT_EQ(o().applicationsSortOrderPopUpButton->selectedTag(), 3);
    EXPECT_EQ(o().afterMinimizingPopUpButton->indexOfSelectedItem(), 2);
    EXPECT_EQ(o().applicationExceptionsTextField->stringValue(), "");
    EXPECT_EQ(o().backgroundColorWell->color(), Color::calibratedWhite(0, 0.5f));
    EXPECT_EQ(o().maximumTextSizeTextField->stringValue(), "Item size: 48 pt.");
    EXPECT_EQ(o().timeoutSliderValueTextField->stringValue(), "200 ms (Default)");
    EXPECT_EQ(o().settingsTabView->selectedTabViewItem()->identifier(), "triggers");
    EXPECT_TRUE(pane->valueForSetting(keys::cycleAllWindows)->isData()) << "kept until overwritten";
}

TEST_F(PaneTest, OtherPanesAreFoundInTheUsersPreferencePanesFolder)
{
    EXPECT_FALSE(KRVXPreferencePanePath("Vexto Test Pane That Is Nowhere"));
    std::filesystem::create_directories(
        home.file("Library/PreferencePanes/Universal Access Test.prefPane"));
    EXPECT_EQ(KRVXPreferencePanePath("Universal Access Test"),
              home.file("Library/PreferencePanes/Universal Access Test.prefPane"));
}

} // namespace
} // namespace vexto

namespace vexto {
namespace {

using test::PaneTest;

TEST_F(PaneTest, TheShippedDefaultsNameItemsThatExist)
{
    std::filesystem::copy_file(test::testData("../../resources/KRVXDefaultSettings.plist"),
                               resources() + "/KRVXDefaultSettings.plist",
                               std::filesystem::copy_options::overwrite_existing);
    load();
    for (const PopUpButton* popUp :
         {o().panelDelayPopUpButton, o().panelScreenPopUpButton, o().addActivateItemPopUpButton,
          o().addCancelItemPopUpButton, o().applicationsSortOrderPopUpButton,
          o().iconModePopUpButton, o().afterZoomingPopUpButton, o().afterMinimizingPopUpButton,
          o().afterClosingPopUpButton, o().quickLookDelayPopUpButton}) {
        EXPECT_NE(popUp->indexOfSelectedItem(), -1) << *pane->settingForControl(popUp);
    }
    EXPECT_EQ(o().maximumTextSizeTextField->stringValue(), "Item size: 48 pt.");
    EXPECT_EQ(o().maximumPaneWidthTextField->stringValue(), "Vexto panel width: wide");
    EXPECT_EQ(o().timeoutSliderValueTextField->stringValue(), "200 ms (Default)");
}

} // namespace
} // namespace vexto
