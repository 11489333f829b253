#pragma once

#include "foundation/Bundle.hpp"
#include "pane/PaneHotKeyRecords.hpp"
#include "pane/PaneOutlets.hpp"
#include "pane/SettingsStore.hpp"
#include "system/DaemonControl.hpp"
#include "system/ProcessPlatform.hpp"
#include "toolkit/ActionTarget.hpp"
#include "toolkit/Menu.hpp"
#include "toolkit/PaneEnvironment.hpp"
#include "toolkit/PreferencePane.hpp"
#include "toolkit/TabView.hpp"
#include "toolkit/TextField.hpp"
#include "widgets/KRVXGradientColorWellDelegate.hpp"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vexto {

class Button;
class KRVXHotKeyTextView;
struct PaneControl;
class Image;
class KeyEventTap;
class PopUpButton;
class Slider;
class View;

// The pane's controller: answers the host's lifecycle calls, owns the interface, the settings
// and the link to the daemon, sizes the pane to the selected tab and remembers that tab.
class KRVXPreferencePane : public PreferencePane,
                           public ActionTarget,
                           public TabViewDelegate,
                           public MenuDelegate,
                           public TextFieldDelegate,
                           public KRVXGradientColorWellDelegate {
public:
    static constexpr double bottomWindowMargin = 27.0;
    static constexpr double firstGuessWidth = 668.0;
    static constexpr double widthTolerance = 0.9;
    static constexpr const char* defaultTabIdentifier = "triggers";
    // Fonts are shown, and looked up, at this size in the font menu.
    static constexpr double fontMenuSize = 14.0;

    KRVXPreferencePane(std::string bundlePath, PaneEnvironment environment);
    ~KRVXPreferencePane() override;
    KRVXPreferencePane(const KRVXPreferencePane&) = delete;
    KRVXPreferencePane& operator=(const KRVXPreferencePane&) = delete;

    // The first pane that loaded its main view; helpers and widgets reach the pane through it.
    static KRVXPreferencePane* vexto();
    static void resetSingletonForTesting();

    const Bundle& bundle() const { return bundle_; }
    const PaneOutlets& outlets() const { return outlets_; }
    View* mainView() const override { return mainView_.get(); }
    const PaneEnvironment& environment() const { return environment_; }
    std::string daemonPath() const;
    // The mail address, with a subject naming the versions, that "Send Feedback" opens.
    const std::string& feedbackLink() const { return feedbackLink_; }
    // Read from the pane bundle's resources, never through a cache; none without a decoder or
    // when the file cannot be read.
    std::shared_ptr<Image> uncachedPreferencePaneResourceImage(const std::string& name) const;

    // --- lifecycle, as the host drives it ---
    View* loadMainView() override;
    void mainViewDidLoad();
    void willSelect() override;
    void didSelect() override;
    void willUnselect() override {}
    void didUnselect() override;

    // --- sizing ---
    void adjustFrameForMainView(View* view, bool isFirstGuess);
    void updatePreferencePaneFrame();
    void didSelectTabViewItem(TabView& tabView, TabViewItem& item) override;

    void spaceDidChange();
    void help();
    void revert();
    void goHome();

    // --- automation ---
    View* outletNamed(std::string_view name) const override;
    View* accessoryOfOutletNamed(std::string_view name) const override;
    std::string settingsFilePath() const override;
    std::string linkOfOutletNamed(std::string_view name) const override;
    const PlistValue* valueForSettingKey(std::string_view key) override
    {
        return valueForSetting(key);
    }
    bool performActionNamed(std::string_view selector) override;

    // --- settings (the store's accessors) ---
    SettingsStore& store() { return store_; }
    PlistDictionary& settings() { return store_.settings(); }
    const PlistDictionary* defaultSettings() { return store_.defaultSettings(); }
    const PlistValue* valueForSetting(std::string_view key) { return store_.valueForSetting(key); }
    std::int64_t integerForSetting(std::string_view key, std::int64_t defaultValue)
    {
        return store_.integerForSetting(key, defaultValue);
    }
    bool boolForSetting(std::string_view key, bool defaultValue = false)
    {
        return store_.boolForSetting(key, defaultValue);
    }
    void setValue(const std::optional<PlistValue>& value, std::optional<std::string_view> key,
                  bool save = true)
    {
        store_.setValue(value, key, save);
    }
    void setBool(bool value, std::string_view key) { store_.setBool(value, key); }
    bool saveSettings() { return store_.saveSettings(); }

    // --- schema ---
    // The setting a control edits; none for controls without one.
    std::optional<std::string_view> settingForControl(const View* control) const;
    // Fills every control from the settings, with migrations and the code's defaults; saves
    // nothing.
    void initializeSettings();
    void initializeActivateItemSetting(bool enabled);
    void initializeCancelItemSetting(bool enabled);
    // The check-box rule: the source's boolean, else the defaults file's, else false.
    bool boolForSetting(std::string_view key, const PlistDictionary& presets);

    // --- the daemon ---
    DaemonControl& daemonControl() { return daemon_; }
    void updateDaemon() { daemon_.updateDaemon(); }
    bool isEnabled() { return daemon_.isEnabled(); }
    // The Enable button: stops a running daemon, starts one otherwise.
    void enable();
    // Shows whether the daemon runs, on the Enable button and the update controls.
    void updateEnabledStatus();
    void updateEnabledStatusSoon();
    // The daemon's ": Update Pane": refreshes at once, but a flood of them within one turn of
    // the run loop costs one more refresh at the turn's end, not one each.
    void updateEnabledStatusAtOnce();
    // The banner asking for assistive access, and the Spaces controls.
    void updateForSpacesAndAssistiveDevicesAccess(bool assistiveAccessEnabled);

    // --- target of the interface's actions, delegate of its menus and text fields ---
    bool respondsToSelector(std::string_view selector) const override
    {
        return actions_.respondsToSelector(selector);
    }
    void performAction(std::string_view selector, const ActionSender& sender) override
    {
        actions_.performAction(selector, sender);
    }
    void menuNeedsUpdate(Menu& menu) override;
    void controlTextDidChange(TextField& field) override;

    // --- control binding: each kind of control turns its state into a stored value ---
    void toggleBooleanSetting(Button& checkBox);
    void changePopUpSetting(PopUpButton& popUp);
    void changePopUpSettingWithTag(PopUpButton& popUp);
    void changeSliderSetting(Slider& slider);
    void changeColorSetting(ColorWell& well);
    void changeFont(const MenuItem& item);
    void changeFontSmoothing(const MenuItem& item);
    // --- appearance layouts ---
    // The layouts pull-down: applies the chosen layout (none restores the default appearance),
    // opens a layout file, or saves the appearance as one.
    void chooseLayoutPresets(PopUpButton& popUp);
    std::optional<std::string> chooseLayoutPathForSaving(bool saving, const std::string& title);
    // Copies the control's setting into the layout when the settings hold it.
    void storeLayout(PlistDictionary& layout, const View* control);
    // The system's folder of layouts for every user.
    static constexpr const char* sharedLayoutsPath = "/Library/Application Support/Vexto/Layouts";

    // The selection colour's shading, in steps (default -15); 0 for other wells.
    std::int64_t gradientValueForWell(const ColorWell* well) override;
    void setGradientValue(std::int64_t value, const ColorWell* well) override;

private:
    void hideSpacesControlsOnOlderSystems();
    // The person cannot make the window smaller than its content.
    void keepWindowAroundContent();
    void restoreLastTab();
    void fillVersionLines();
    void registerBindingActions();
    void initializeTimeout(std::optional<double> value, bool setSlider, bool setSetting,
                           Slider* movedSlider = nullptr);
    void initializeMaximumTextSize(std::optional<double> value, bool setSlider, bool setSetting);
    void initializeMaximumWindowWidth(std::optional<double> value, bool setSlider, bool setSetting);
    void initializeLayoutFromPresets(const PlistDictionary& presets, bool saveSettings);
    void initializeColorWell(ColorWell* well, const PlistDictionary& presets,
                             const Color& defaultColor, bool setSetting);
    bool initializeSwitch(Button* checkBox, const PlistDictionary& presets, bool setSetting);
    void initializeFontsPopUpButton(const PlistDictionary& presets, bool setSetting);
    void assignHotKeyIdentifiers();
    // Every hot-key field the interface built, with its row of the control table.
    std::vector<std::pair<const PaneControl*, KRVXHotKeyTextView*>> hotKeyFields() const;
    void migrateLegacySettings();
    void fillCheckBox(Button* checkBox);
    void fillPopUp(PopUpButton& popUp);
    void showDocumentIconOverlaysBoxForIconMode();

public:
    // The tap that hands Tab key events straight to a recording hot-key field of the pane's key
    // window, before the window's focus loop or anything else sees them.
    void registerKeyEventTap();
    void unregisterKeyEventTap();
    // After a change of the active Space the tap is made again 0.1 s later, to be first again.
    void reregisterKeyEventTap();
    bool reenableKeyEventTap();
    // The routing rule: true when the event was delivered to the recording field (swallowed).
    bool KRVXTapKeyEvent(const Event& event);

private:
    // Starts the daemon once per settings file, as soon as the system lets it watch the keyboard.
    void automaticFirstStart();
    void showEnabledState(bool enabled);
    void connectSparkleWrapper();
    void updateLayoutsMenu(Menu& menu);
    void updateFontsMenu(Menu& menu);
    std::shared_ptr<Menu> fontSmoothingMenu();
    MenuItem& addFontItem(Menu& menu, const std::string& title, const Font& font);
    // True when one of the family's fonts is the current one.
    bool addFontFamily(Menu& menu, const std::string& family,
                       const std::optional<std::string>& current);
    void saveLayout(const std::string& title);

    Bundle bundle_;
    PaneEnvironment environment_;
    SettingsStore store_;
    DaemonControl daemon_;
    ActionTable actions_;
    PaneOutlets outlets_;
    PaneHotKeyRecords hotKeyRecords_{*this};
    std::shared_ptr<View> mainView_;
    std::string feedbackLink_;
    std::unique_ptr<KeyEventTap> keyEventTap_;
    // What the process model used before this pane gave it its process list.
    std::optional<int> processPlatformToken_;
    bool refreshedThisTurn_ = false;
    bool refreshAskedAgain_ = false;
    bool desktopOwnersShown_ = false; // the desktop was asked about the stored keys
    // As wide as the controls' texts need; the usual width unless a language needs more.
    double minimumContentWidth_ = firstGuessWidth;
};

// --- helpers every part of the pane uses ---

// The pane's localised text for the key; the key itself where the table has none.
std::string KRVXLocalizedString(std::string_view key);
// Runs an application-modal alert, then makes the given window key again.
int KRVXRunAlertPanel(const std::string& title, const std::string& message,
                      const std::string& defaultButton, const std::string& alternateButton,
                      const std::string& otherButton, Window* window);
void KRVXRegisterHelpBook(const std::string& bundlePath, const std::string& helpBookName);
// The first of the system's preference-pane folders holding "<name>.prefPane", or none.
std::optional<std::string> KRVXPreferencePanePath(const std::string& paneName);

} // namespace vexto
