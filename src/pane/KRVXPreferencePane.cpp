#include "pane/KRVXPreferencePane.hpp"

#include "foundation/DaemonNotifications.hpp"
#include "foundation/DictionaryExtensions.hpp"
#include "foundation/FileSystem.hpp"
#include "foundation/FormatString.hpp"
#include "foundation/HomeDirectory.hpp"
#include "foundation/Log.hpp"
#include "foundation/ProductInfo.hpp"
#include "hotkeys/KRVXHotKeyClearButton.hpp"
#include "hotkeys/KRVXHotKeyTextView.hpp"
#include "pane/PaneControlTable.hpp"
#include "pane/PaneInterfaceBuilder.hpp"
#include "ports/AccessibilityStatus.hpp"
#include "ports/DistributedNotificationCenter.hpp"
#include "ports/HelpViewer.hpp"
#include "ports/KeyEventTaps.hpp"
#include "ports/RunLoop.hpp"
#include "ports/Workspace.hpp"
#include "ports/WorkspaceNotificationCenter.hpp"
#include "settings/SettingKeys.hpp"
#include "system/KRVXRemoteSparkleWrapper.hpp"
#include "system/ProcessPlatform.hpp"
#include "system/SystemVersionChecks.hpp"
#include "system/UserDefaultsExtensions.hpp"
#include "toolkit/Application.hpp"
#include "toolkit/Button.hpp"
#include "toolkit/ColorPanel.hpp"
#include "toolkit/ColorWell.hpp"
#include "toolkit/Image.hpp"
#include "toolkit/PopUpButton.hpp"
#include "toolkit/Slider.hpp"
#include "toolkit/Window.hpp"
#include "widgets/KRVXLinkTextField.hpp"
#include "widgets/ResourceImages.hpp"
#include "widgets/ViewLayout.hpp"

#include <cmath>
#include <utility>

namespace vexto {

namespace {

constexpr const char* daemonBundleName = "vextodaemon.app";
constexpr const char* helpBookFolder = "Vexto.help";
constexpr float spacesRowHeight = PaneInterfaceBuilder::spacesRowHeight;
constexpr float sliderRowsShift = PaneInterfaceBuilder::sliderRowsShift;

KRVXPreferencePane*& singleton()
{
    static KRVXPreferencePane* pane = nullptr;
    return pane;
}

} // namespace

KRVXPreferencePane::KRVXPreferencePane(std::string bundlePath, PaneEnvironment environment)
    : bundle_(std::move(bundlePath)), environment_(environment),
      store_(environment.runLoop,
             bundle_.pathForUncachedPreferencePaneResourceFile(product::defaultSettingsFileName),
             SettingsStore::Hooks{[this] { updateDaemon(); },
                                  [](std::string_view text) { return KRVXLocalizedString(text); },
                                  [this](const AlertRequest& alert) {
                                      KRVXRunAlertPanel(alert.title, alert.message,
                                                        alert.defaultButton, alert.alternateButton,
                                                        alert.otherButton,
                                                        mainView_ ? mainView_->window() : nullptr);
                                  }}),
      daemon_(environment.distributedCenter, environment.runLoop, environment.workspace,
              DaemonControl::Hooks{[this] { return daemonPath(); },
                                   [this] { updateEnabledStatus(); },
                                   [this](const std::string& why) {
                                       KRVXRunAlertPanel(KRVXLocalizedString("Vexto - Error"), why,
                                                         KRVXLocalizedString("OK"), "", "",
                                                         mainView_ ? mainView_->window() : nullptr);
                                   }})
{
    daemon_.setLooksOnly(environment.drawingOnly);
    if (environment.processes != nullptr) {
        processPlatformToken_ = ProcessPlatform::install(
            environment.processes, environment.processSignals, &environment.runLoop);
    }
    actions_.on("enable:", [this](const ActionSender&) { enable(); });
    actions_.on("toggleAutomaticChecking:", [](const ActionSender&) {
        KRVXRemoteSparkleWrapper::sharedSparkleWrapper().toggleAutomaticChecking();
    });
    actions_.on("checkForUpdates:", [](const ActionSender&) {
        KRVXRemoteSparkleWrapper::sharedSparkleWrapper().checkForUpdates();
    });
    actions_.on("visitProductPage:", [](const ActionSender& sender) {
        KRVXRemoteSparkleWrapper::sharedSparkleWrapper().visitProductPage(sender.view());
    });
    actions_.on("help:", [this](const ActionSender&) { help(); });
    actions_.on("revert:", [this](const ActionSender&) { revert(); });
    actions_.on("goHome:", [this](const ActionSender&) { goHome(); });
    actions_.on("donate:", [](const ActionSender&) {});
    actions_.on("doNothing:", [](const ActionSender&) {});
    registerBindingActions();
}

KRVXPreferencePane::~KRVXPreferencePane()
{
    // The fields may outlive the pane in a window that still shows them.
    for (const auto& [row, field] : hotKeyFields()) {
        field->setRecorderDelegate(nullptr);
    }
    environment_.distributedCenter.removeObserver(this);
    environment_.workspaceCenter.removeObserver(this);
    environment_.runLoop.cancelPreviousPerformRequests(this);
    if (singleton() == this) {
        singleton() = nullptr;
        KRVXRemoteSparkleWrapper::sharedSparkleWrapper().disconnect();
    }
    if (processPlatformToken_) {
        ProcessPlatform::uninstall(*processPlatformToken_);
    }
}

KRVXPreferencePane* KRVXPreferencePane::vexto()
{
    return singleton();
}

void KRVXPreferencePane::resetSingletonForTesting()
{
    singleton() = nullptr;
}

std::string KRVXPreferencePane::daemonPath() const
{
    return bundle_.pathForUncachedPreferencePaneResourceFile(daemonBundleName);
}

// --- lifecycle --------------------------------------------------------------------------

View* KRVXPreferencePane::loadMainView()
{
    // Settings and fill helpers reach the pane through the singleton while the interface loads.
    if (singleton() == nullptr) {
        singleton() = this;
    }
    // The widgets' images come straight from this bundle; links open through the host's desktop.
    ResourceImages::setLoader(
        [this](const std::string& name) { return uncachedPreferencePaneResourceImage(name); });
    KRVXLinkTextField::setWorkspace(&environment_.workspace);
    PaneInterfaceBuilder builder([](std::string_view text) { return KRVXLocalizedString(text); },
                                 this, this, this);
    outlets_ = PaneOutlets{};
    mainView_ = builder.build(outlets_);
    if (!mainView_) {
        return nullptr;
    }
    minimumContentWidth_ = mainView_->frame().width();
    mainViewDidLoad();
    connectSparkleWrapper();
    hideSpacesControlsOnOlderSystems();
    restoreLastTab();
    adjustFrameForMainView(mainView_.get(), true);
    return mainView_.get();
}

std::shared_ptr<Image>
KRVXPreferencePane::uncachedPreferencePaneResourceImage(const std::string& name) const
{
    if (environment_.images == nullptr) {
        return nullptr;
    }
    return Image::contentsOfFile(bundle_.pathForUncachedPreferencePaneResourceFile(name),
                                 *environment_.images);
}

void KRVXPreferencePane::mainViewDidLoad()
{
    fillVersionLines();
    initializeSettings();
    KRVXRegisterHelpBook(bundle_.bundlePath(), helpBookFolder);
    outlets_.layoutPresetsPopUpButton->menu().setDelegate(this);
    outlets_.fontsPopUpButton->menu().setDelegate(this);
    outlets_.settingsTabView->setDelegate(this);
}

void KRVXPreferencePane::fillVersionLines()
{
    const auto info = bundle_.uncachedPreferencePaneInfo();
    const auto infoString = [&](std::string_view key) -> std::string {
        const PlistValue* value = info ? objectForKey(*info, key) : nullptr;
        return value != nullptr && value->isString() ? *value->asString() : std::string();
    };
    const std::string version = infoString("CFBundleShortVersionString");
    const std::string build = infoString("CFBundleVersion");
    const std::string daemonBuild = Bundle(daemonPath()).infoString("CFBundleVersion").value_or("");

    outlets_.aboutTextField->setStringValue(
        FormatString::fill(KRVXLocalizedString("Vexto %@"),
                           {FormatString::fill("%@ (%@/%@)", {version, build, daemonBuild})}));
    feedbackLink_ =
        "mailto:" + std::string(product::supportEmailAddress) +
        FormatString::fill("?subject=Vexto%20%@%20(%@/%@)", {version, build, daemonBuild});
    outlets_.feedbackTextField->setStringValue(KRVXLocalizedString("Send Feedback"),
                                               KRVXLinkTextField::Link{feedbackLink_},
                                               std::string(product::supportEmailAddress));
}

void KRVXPreferencePane::connectSparkleWrapper()
{
    if (singleton() != this) {
        return;
    }
    KRVXRemoteSparkleWrapper& wrapper = KRVXRemoteSparkleWrapper::sharedSparkleWrapper();
    KRVXRemoteSparkleWrapper::Context context;
    context.center = &environment_.distributedCenter;
    context.preferences = environment_.foreignPreferences;
    context.workspace = &environment_.workspace;
    context.isDaemonEnabled = [this] {
        return isEnabled();
    };
    context.updatePreferencePaneFrame = [this] {
        updatePreferencePaneFrame();
    };
    context.currentShortVersionString = [this] {
        return bundle_.infoString("CFBundleShortVersionString");
    };
    context.displayName = [this] {
        return bundle_.infoString("CFBundleName").value_or("Vexto");
    };
    context.localized = [](std::string_view text) {
        return KRVXLocalizedString(text);
    };
    wrapper.connect(std::move(context));
    wrapper.setOutlets({outlets_.autoUpdateCheckingSwitch, outlets_.checkNowButton,
                        outlets_.statusTextField, outlets_.statusDateTextField});
    wrapper.awakeFromNib();
}

void KRVXPreferencePane::hideSpacesControlsOnOlderSystems()
{
    if (KRVXSystemIsSnowLeopardOrNewer()) {
        return;
    }
    setHiddenAndMoveSiblingsBelowUpByDelta(*outlets_.switchAcrossSpacesButton, spacesRowHeight);
    setHiddenAndMoveSiblingsBelowUpByDelta(*outlets_.showSpaceBadgesButton, spacesRowHeight);
    outlets_.spaceBadgeColorWell->setHidden(true);
    outlets_.spaceBadgeColorLabel->setHidden(true);
    moveUpByDelta(*outlets_.panelShadowButton, spacesRowHeight);
    View* const sliders[] = {outlets_.maximumTextSizeSlider, outlets_.maximumTextSizeTextField,
                             outlets_.maximumPaneWidthSlider, outlets_.maximumPaneWidthTextField};
    moveUpByDelta(sliders, sliderRowsShift);
}

View* KRVXPreferencePane::outletNamed(std::string_view name) const
{
    const PaneControl* row = PaneControlTable::byOutlet(name);
    return row != nullptr ? PaneControlTable::view(*row, outlets_) : nullptr;
}

View* KRVXPreferencePane::accessoryOfOutletNamed(std::string_view name) const
{
    const auto* field = dynamic_cast<const KRVXHotKeyTextView*>(outletNamed(name));
    return field != nullptr ? field->deleteButton() : nullptr;
}

std::string KRVXPreferencePane::linkOfOutletNamed(std::string_view name) const
{
    const auto* field = dynamic_cast<const KRVXLinkTextField*>(outletNamed(name));
    return field != nullptr && field->linkURL() ? field->linkURL()->absoluteString : std::string();
}

std::string KRVXPreferencePane::settingsFilePath() const
{
    return store_.settingsPath().value_or(std::string());
}

void KRVXPreferencePane::restoreLastTab()
{
    const PlistValue* stored = valueForSetting(settingkeys::lastTab);
    const std::string identifier = stored != nullptr && stored->isString()
                                       ? *stored->asString()
                                       : std::string(defaultTabIdentifier);
    outlets_.settingsTabView->selectTabViewItemWithIdentifier(identifier);
}

void KRVXPreferencePane::willSelect()
{
    ColorPanel::setIgnoresAlpha(false);
    namespace names = daemonnotifications;
    environment_.distributedCenter.addObserver(
        this, names::named(names::updatePane),
        [this](const auto&, const auto&) { updateEnabledStatusAtOnce(); }, true);
    environment_.distributedCenter.addObserver(
        this, names::named(names::updatePaneSoon),
        [this](const auto&, const auto&) { updateEnabledStatusSoon(); }, true);
    environment_.workspaceCenter.addObserver(
        this, WorkspaceNotificationCenter::activeSpaceDidChangeNotification,
        [this] { spaceDidChange(); });
    automaticFirstStart();
    // Once a pane: the defaults are the desktop's own keys on most desktops, and the user is
    // told so where the keys are set, not surprised later by keys that do nothing.
    if (!desktopOwnersShown_) {
        desktopOwnersShown_ = true;
        for (const auto& [row, field] : hotKeyFields()) {
            field->showDesktopOwner();
        }
    }
}

// --- the daemon -------------------------------------------------------------------------

namespace {

constexpr const char* updateEnabledStatusSelector = "updateEnabledStatus:";
constexpr double updateEnabledStatusDelay = 3.0;

} // namespace

void KRVXPreferencePane::automaticFirstStart()
{
    const bool enabled = isEnabled();
    showEnabledState(enabled);
    const bool access = environment_.accessibility != nullptr &&
                        environment_.accessibility->isAssistiveAccessEnabled();
    updateForSpacesAndAssistiveDevicesAccess(access);
    if (!access || environment_.drawingOnly || boolForSetting(settingkeys::autoEnabledOnce)) {
        return;
    }
    setBool(true, settingkeys::autoEnabledOnce);
    if (enabled) {
        return;
    }
    Log::line("auto-launching vextodaemon once...");
    outlets_.enableButton->performClick();
}

void KRVXPreferencePane::enable()
{
    if (isEnabled()) {
        daemon_.quitDaemon();
    } else if (!daemon_.launchDaemon()) {
        KRVXRunAlertPanel(
            KRVXLocalizedString("Vexto - Fatal Error"),
            FormatString::fill(KRVXLocalizedString("Could not launch Vexto Daemon. Please try "
                                                   "again or send a brief bug report to <%@>. "
                                                   "Thanks!"),
                               {std::string(product::supportEmailAddress)}),
            KRVXLocalizedString("OK"), "", "", mainView_ ? mainView_->window() : nullptr);
    }
    updateEnabledStatusSoon();
}

void KRVXPreferencePane::updateEnabledStatus()
{
    environment_.runLoop.cancelPreviousPerformRequests(this, updateEnabledStatusSelector,
                                                       PerformArgument{});
    // One look at the process list serves the button and the update controls alike.
    const bool enabled = isEnabled();
    showEnabledState(enabled);
    KRVXRemoteSparkleWrapper::sharedSparkleWrapper().updateControlsForDaemonEnabled(enabled);
}

void KRVXPreferencePane::updateEnabledStatusAtOnce()
{
    if (refreshedThisTurn_) {
        refreshAskedAgain_ = true;
        return;
    }
    updateEnabledStatus();
    refreshedThisTurn_ = true;
    environment_.runLoop.performAfterDelay(this, "endOfRefreshTurn", {}, 0.0,
                                           RunLoopModes{RunLoopMode::Default}, [this] {
                                               refreshedThisTurn_ = false;
                                               if (std::exchange(refreshAskedAgain_, false)) {
                                                   updateEnabledStatus();
                                               }
                                           });
}

void KRVXPreferencePane::updateEnabledStatusSoon()
{
    environment_.runLoop.cancelPreviousPerformRequests(this, updateEnabledStatusSelector,
                                                       PerformArgument{});
    environment_.runLoop.performAfterDelay(
        this, updateEnabledStatusSelector, {}, updateEnabledStatusDelay,
        RunLoopModes{RunLoopMode::Default}, [this] { updateEnabledStatus(); });
}

// The button is on while the daemon runs, and its title says what a click will do.
void KRVXPreferencePane::showEnabledState(bool enabled)
{
    Button& button = *outlets_.enableButton;
    button.setState(enabled ? Button::onState : Button::offState);
    button.setTitle(KRVXLocalizedString(enabled ? "Disable Vexto" : "Enable Vexto"));
}

// --- Spaces and assistive access ---------------------------------------------------------

void KRVXPreferencePane::updateForSpacesAndAssistiveDevicesAccess(bool assistiveAccessEnabled)
{
    KRVXLinkTextField& banner = *outlets_.warningTextField;
    if (assistiveAccessEnabled) {
        banner.setStringValue("");
    } else if (environment_.accessibility != nullptr &&
               environment_.accessibility->needsAnotherSession()) {
        // No setting helps here: the banner says what does, and links nowhere.
        banner.setStringValue(
            KRVXLocalizedString("Window cycling needs an X11 session: this is a Wayland session"));
    } else {
        const std::string text = KRVXLocalizedString("Please enable access for assistive devices");
        if (const auto path = KRVXPreferencePanePath("UniversalAccessPref")) {
            banner.setStringValue(
                text, KRVXLinkTextField::Link{*path},
                KRVXLocalizedString(KRVXSystemIsMountainLionOrNewer()
                                        ? "Open the \"Accessibility\" preference pane"
                                        : "Open the \"Universal Access\" preference pane"));
        } else {
            banner.setStringValue(text);
        }
    }
    banner.unhover();

    const PaneOutlets& o = outlets_;
    const bool spaces = KRVXSystemIsSnowLeopardOrNewer() &&
                        environment_.foreignPreferences != nullptr &&
                        areSpacesEnabled(*environment_.foreignPreferences);
    if (!spaces) {
        o.switchAcrossSpacesButton->setState(Button::offState);
        o.switchAcrossSpacesButton->setEnabled(false);
        o.showSpaceBadgesButton->setState(Button::offState);
        o.showSpaceBadgesButton->setEnabled(false);
        o.spaceBadgeColorWell->setEnabled(false);
        return;
    }
    setDefaultBool(settings(), true, settingkeys::switchAcrossSpaces);
    const bool across = initializeSwitch(o.switchAcrossSpacesButton, settings(), false);
    o.switchAcrossSpacesButton->setEnabled(true);
    // The tip says what the box does here: the badges for other Spaces only (the dash) are a
    // state of their own only where the system supports them.
    if (KRVXDumbDownSpacesSupport()) {
        o.showSpaceBadgesButton->setAllowsMixedState(false);
        o.showSpaceBadgesButton->setToolTip(KRVXLocalizedString(
            "Checked: every window shows a badge naming its workspace. Empty: no badges."));
    } else {
        o.showSpaceBadgesButton->setToolTip(KRVXLocalizedString(
            "Checked: every window shows a badge naming its workspace. Dash: only windows on "
            "other workspaces than the current one do. Empty: no badges."));
    }
    int badges = Button::offState;
    if (across && boolForSetting(settingkeys::alwaysShowSpaceBadges)) {
        badges = KRVXDumbDownSpacesSupport() || !boolForSetting(settingkeys::hideCurrentSpaceBadges)
                     ? Button::onState
                     : Button::mixedState;
    }
    o.showSpaceBadgesButton->setState(badges);
    o.showSpaceBadgesButton->setEnabled(across);
    o.spaceBadgeColorWell->setEnabled(across);
}

void KRVXPreferencePane::didSelect()
{
    adjustFrameForMainView(mainView_.get(), false);
    keepWindowAroundContent();
    registerKeyEventTap();
}

void KRVXPreferencePane::didUnselect()
{
    unregisterKeyEventTap();
    environment_.distributedCenter.removeObserver(this);
    environment_.workspaceCenter.removeObserver(this);
    daemon_.stopWatching();
    if (const TabViewItem* selected = outlets_.settingsTabView->selectedTabViewItem()) {
        setValue(PlistValue(selected->identifier()), settingkeys::lastTab);
    }
}

// --- sizing -----------------------------------------------------------------------------

void KRVXPreferencePane::adjustFrameForMainView(View* view, bool isFirstGuess)
{
    Rect frame = view != nullptr ? view->frame() : Rect{};
    if (KRVXSystemIsLeopardOrNewer()) {
        if (!isFirstGuess) {
            Window* window = view != nullptr ? view->window() : nullptr;
            if (window == nullptr) {
                return;
            }
            const float difference =
                std::fabs(static_cast<float>(window->frame().width() - frame.width()));
            if (difference > widthTolerance) {
                view->setFrame(Rect(0, frame.minY(), window->frame().width(), frame.height()));
            }
            return;
        }
        frame.size.width = std::max(firstGuessWidth, minimumContentWidth_);
    } else if (!isFirstGuess) {
        return;
    }
    const auto& tabSubviews = outlets_.settingsTabView->subviews();
    if (tabSubviews.size() == 1) {
        frame.size.height = view != nullptr ? frameByAdjustingHeightToFitSubviewsOfView(
                                                  *view, *tabSubviews.front(), bottomWindowMargin)
                                                  .height()
                                            : 0;
    } else if (!KRVXSystemIsLeopardOrNewer()) {
        return;
    }
    if (view != nullptr) {
        view->setFrame(frame);
    }
}

void KRVXPreferencePane::updatePreferencePaneFrame()
{
    const auto& tabSubviews = outlets_.settingsTabView->subviews();
    Window* window = outlets_.settingsTabView->window();
    if (tabSubviews.size() == 1 && window != nullptr) {
        adjustHeightToFitSubviewsOfView(*window, *tabSubviews.front(), bottomWindowMargin);
    }
    keepWindowAroundContent();
}

void KRVXPreferencePane::keepWindowAroundContent()
{
    Window* window = mainView_ ? mainView_->window() : nullptr;
    if (window != nullptr) {
        const Rect content = window->contentRectForFrameRect(window->frame());
        window->setContentMinSize(Size{minimumContentWidth_, content.height()});
    }
}

void KRVXPreferencePane::didSelectTabViewItem(TabView& tabView, TabViewItem&)
{
    if (&tabView == outlets_.settingsTabView) {
        updatePreferencePaneFrame();
    }
}

bool KRVXPreferencePane::performActionNamed(std::string_view selector)
{
    if (!respondsToSelector(selector)) {
        return false;
    }
    performAction(selector, ActionSender(mainView_.get()));
    return true;
}

void KRVXPreferencePane::spaceDidChange()
{
    reregisterKeyEventTap();
}

// --- the key event tap ------------------------------------------------------------------

namespace {

constexpr const char* registerTapSelector = "registerKeyEventTap";
constexpr std::uint16_t tabKeyCode = 48;
constexpr double reregistrationDelay = 0.1;

} // namespace

void KRVXPreferencePane::registerKeyEventTap()
{
    environment_.runLoop.cancelPreviousPerformRequests(this, registerTapSelector,
                                                       PerformArgument{});
    if (keyEventTap_) {
        reenableKeyEventTap();
        return;
    }
    if (environment_.keyTaps != nullptr) {
        // A tap that cannot be made leaves Tab to the ordinary path, silently.
        keyEventTap_ = environment_.keyTaps->createTap(
            [this](const Event& event) { return KRVXTapKeyEvent(event); });
    }
}

void KRVXPreferencePane::unregisterKeyEventTap()
{
    environment_.runLoop.cancelPreviousPerformRequests(this, registerTapSelector,
                                                       PerformArgument{});
    keyEventTap_.reset();
}

void KRVXPreferencePane::reregisterKeyEventTap()
{
    unregisterKeyEventTap();
    environment_.runLoop.performAfterDelay(this, registerTapSelector, {}, reregistrationDelay,
                                           RunLoopModes{RunLoopMode::Default},
                                           [this] { registerKeyEventTap(); });
}

bool KRVXPreferencePane::reenableKeyEventTap()
{
    if (!keyEventTap_) {
        return false;
    }
    if (!keyEventTap_->isEnabled()) {
        keyEventTap_->setEnabled(true);
    }
    return true;
}

bool KRVXPreferencePane::KRVXTapKeyEvent(const Event& event)
{
    if (!event.isKey() || event.keyCode() != tabKeyCode || !Application::shared().isActive()) {
        return false;
    }
    Window* window = mainView_ ? mainView_->window() : nullptr;
    if (window == nullptr || !window->isKeyWindow() ||
        dynamic_cast<KRVXHotKeyTextView*>(window->firstResponder()) == nullptr) {
        return false;
    }
    window->sendEvent(event);
    return true;
}

void KRVXPreferencePane::help()
{
    const std::string book = bundle_.infoString("CFBundleHelpBookName").value_or("");
    environment_.help.gotoPage(book, KRVXSystemIsSnowLeopardOrNewer() ? "pages/Vexto.html"
                                                                      : "Vexto.html");
}

void KRVXPreferencePane::revert()
{
    store_.revertedSettings(true);
    initializeSettings();
}

void KRVXPreferencePane::goHome()
{
    environment_.workspace.openURL(std::string(product::homePageAddress));
}

// --- helpers ----------------------------------------------------------------------------

std::string KRVXLocalizedString(std::string_view key)
{
    const KRVXPreferencePane* pane = KRVXPreferencePane::vexto();
    return pane != nullptr ? pane->bundle().localizedString(key) : std::string(key);
}

int KRVXRunAlertPanel(const std::string& title, const std::string& message,
                      const std::string& defaultButton, const std::string& alternateButton,
                      const std::string& otherButton, Window* window)
{
    const int result = Application::shared().runAlert(
        AlertRequest{title, message, defaultButton, alternateButton, otherButton});
    if (window != nullptr) {
        window->makeKeyWindow();
    }
    return result;
}

void KRVXRegisterHelpBook(const std::string& bundlePath, const std::string& helpBookName)
{
    const KRVXPreferencePane* pane = KRVXPreferencePane::vexto();
    if (pane == nullptr) {
        return;
    }
    // Older systems look for the book itself; newer ones find it through the bundle.
    const std::string location =
        !KRVXSystemIsSnowLeopardOrNewer() && !helpBookName.empty()
            ? FileSystem::join(FileSystem::join(bundlePath, "Contents/Resources"), helpBookName)
            : bundlePath;
    if (!FileSystem::exists(location)) {
        return;
    }
    const int result = pane->environment().help.registerHelpBook(location);
    if (result != 0) {
        Log::line("help book not registered: " + std::to_string(result));
    }
}

std::optional<std::string> KRVXPreferencePanePath(const std::string& paneName)
{
    const std::string bundleName = paneName + ".prefPane";
    const KRVXPreferencePane* pane = KRVXPreferencePane::vexto();
    std::vector<std::string> folders =
        pane != nullptr ? pane->environment().preferencePaneFolders : std::vector<std::string>{};
    if (folders.empty()) {
        folders = {"/Library/PreferencePanes",
                   HomeDirectory::expandTilde("~/Library/PreferencePanes"),
                   "/System/Library/PreferencePanes"};
    }
    for (const std::string& folder : folders) {
        const std::string path = FileSystem::join(folder, bundleName);
        if (FileSystem::exists(path)) {
            return path;
        }
    }
    return std::nullopt;
}

} // namespace vexto
