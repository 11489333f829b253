// The pane's settings schema: which control edits which key, the migrations of old keys, and
// filling every control from the settings in a fixed order.
#include "foundation/DictionaryExtensions.hpp"
#include "foundation/FormatString.hpp"
#include "foundation/SaturatingCast.hpp"
#include "hotkeys/KRVXHotKeyTextView.hpp"
#include "pane/ControlFilling.hpp"
#include "pane/KRVXPreferencePane.hpp"
#include "pane/PaneControlTable.hpp"
#include "ports/FontCatalog.hpp"
#include "settings/AppearanceDefaults.hpp"
#include "settings/SettingDeclarations.hpp"
#include "settings/SettingKeys.hpp"
#include "system/SystemVersionChecks.hpp"
#include "toolkit/Button.hpp"
#include "toolkit/ColorWell.hpp"
#include "toolkit/PopUpButton.hpp"
#include "toolkit/Slider.hpp"

#include <cmath>
#include <utility>

namespace vexto {

namespace keys = settingkeys;

namespace {

constexpr double defaultTimeout = settingdeclarations::realDefault(keys::accessibilityApiTimeout);
constexpr double defaultItemSize = settingdeclarations::realDefault(keys::itemHeight);
constexpr double smallestItemSize = settingdeclarations::minimum(keys::itemHeight);
constexpr double largestItemSize = settingdeclarations::maximum(keys::itemHeight);

std::optional<double> numberIn(const PlistDictionary& dictionary, std::string_view key)
{
    const PlistValue* value = objectForKey(dictionary, key);
    return value != nullptr ? value->doubleValue() : std::nullopt;
}

} // namespace

std::optional<std::string_view> KRVXPreferencePane::settingForControl(const View* control) const
{
    const PaneControl* row = PaneControlTable::forView(control, outlets_);
    if (row == nullptr || row->key.empty() || row->kind == ControlKind::HotKeyField) {
        return std::nullopt;
    }
    return PaneControlTable::keyOf(*row);
}

void KRVXPreferencePane::initializeSettings()
{
    const PaneOutlets& o = outlets_;
    assignHotKeyIdentifiers();
    setDefaultBool(settings(), settingdeclarations::booleanDefault(keys::showPreviews),
                   keys::showPreviews);
    migrateLegacySettings();
    for (Button* box :
         {o.addActivateItemButton, o.addCancelItemButton, o.activateOnNoModifiersButton,
          o.initiallySelectNextWindowButton, o.wrapAroundScrollingButton,
          o.showApplicationNamesButton, o.invertApplicationsSortOrderButton}) {
        fillCheckBox(box);
    }
    fillPopUp(*o.iconModePopUpButton);
    fillCheckBox(o.showDocumentIconOverlaysButton);
    fillCheckBox(o.showQuickLookButton);
    fillPopUp(*o.quickLookDelayPopUpButton);
    fillCheckBox(o.showShortcutBadgesButton);
    initializeTimeout(numberIn(settings(), keys::accessibilityApiTimeout), true, false);
    initializeActivateItemSetting(boolForSetting(keys::activateItem, settings()));
    initializeCancelItemSetting(boolForSetting(keys::cancelItem, settings()));
    for (PopUpButton* popUp :
         {o.addActivateItemPopUpButton, o.addCancelItemPopUpButton, o.afterZoomingPopUpButton,
          o.afterMinimizingPopUpButton, o.afterClosingPopUpButton}) {
        fillPopUp(*popUp);
    }
    fillCheckBox(o.processWindowsWhenDoneButton);
    for (PopUpButton* popUp :
         {o.panelDelayPopUpButton, o.panelScreenPopUpButton, o.applicationsSortOrderPopUpButton}) {
        fillPopUp(*popUp);
    }
    KRVXSetTextFieldStringValue(*o.applicationExceptionsTextField);
    KRVXSetTextFieldStringValue(*o.windowExceptionsTextField);
    initializeLayoutFromPresets(settings(), false); // without saving, nothing is written back
}

// By tag or by index, with the default the control table gives it.
void KRVXPreferencePane::fillPopUp(PopUpButton& popUp)
{
    const PaneControl* row = PaneControlTable::forView(&popUp, outlets_);
    const auto codeDefault = row != nullptr ? PaneControlTable::codeDefault(*row) : std::nullopt;
    if (!codeDefault) {
        return;
    }
    if (row->kind == ControlKind::PopUpByTag) {
        KRVXSetPopUpButtonStateFromTag(popUp, *codeDefault);
    } else {
        KRVXSetPopUpButtonState(popUp, *codeDefault);
    }
}

std::vector<std::pair<const PaneControl*, KRVXHotKeyTextView*>>
KRVXPreferencePane::hotKeyFields() const
{
    std::vector<std::pair<const PaneControl*, KRVXHotKeyTextView*>> fields;
    for (const PaneControl& row : PaneControlTable::rows()) {
        auto* field = row.kind == ControlKind::HotKeyField
                          ? static_cast<KRVXHotKeyTextView*>(PaneControlTable::view(row, outlets_))
                          : nullptr;
        if (field != nullptr) {
            fields.emplace_back(&row, field);
        }
    }
    return fields;
}

void KRVXPreferencePane::assignHotKeyIdentifiers()
{
    for (const auto& [row, field] : hotKeyFields()) {
        field->setRecorderDelegate(&hotKeyRecords_);
        field->setHotKeyIdentifier(std::string(row->key), std::string(row->direction));
    }
}

void KRVXPreferencePane::migrateLegacySettings()
{
    PlistDictionary& current = settings();
    if (const auto found = current.find(keys::showDocumentIcons); found != current.end()) {
        if (found->second.boolValue() == false) {
            setInteger(current, 0, keys::iconMode);
        }
        current.erase(found);
    }
    // A stored false is left as it is: only the true branch removes the old key.
    if (const auto found = current.find(keys::alwaysShowPanel);
        found != current.end() && found->second.boolValue() == true) {
        setInteger(current, 0, keys::panelDelay);
        current.erase(found);
    }
}

void KRVXPreferencePane::fillCheckBox(Button* checkBox)
{
    initializeSwitch(checkBox, settings(), false);
}

bool KRVXPreferencePane::boolForSetting(std::string_view key, const PlistDictionary& presets)
{
    if (const PlistValue* value = objectForKey(presets, key)) {
        return value->boolValue().value_or(false);
    }
    const PlistDictionary* defaults = defaultSettings();
    const PlistValue* fallback = defaults != nullptr ? objectForKey(*defaults, key) : nullptr;
    return fallback != nullptr && fallback->boolValue().value_or(false);
}

void KRVXPreferencePane::initializeActivateItemSetting(bool enabled)
{
    outlets_.addActivateItemPopUpButton->setEnabled(enabled);
}

void KRVXPreferencePane::initializeCancelItemSetting(bool enabled)
{
    outlets_.addCancelItemPopUpButton->setEnabled(enabled);
}

void KRVXPreferencePane::showDocumentIconOverlaysBoxForIconMode()
{
    if (View* box = outlets_.showDocumentIconOverlaysButton->superview()) {
        box->setHidden(outlets_.iconModePopUpButton->selectedTag() == 0);
    }
}

bool KRVXPreferencePane::initializeSwitch(Button* checkBox, const PlistDictionary& presets,
                                          bool setSetting)
{
    const auto key = settingForControl(checkBox);
    if (!key) {
        return false;
    }
    const bool value = boolForSetting(*key, presets);
    if (checkBox == outlets_.showDocumentIconOverlaysButton) {
        showDocumentIconOverlaysBoxForIconMode();
    } else if (checkBox == outlets_.showQuickLookButton) {
        outlets_.quickLookDelayPopUpButton->setEnabled(value);
    }
    checkBox->setState(value ? Button::onState : Button::offState);
    if (setSetting) {
        vexto::setBool(settings(), value, *key);
    }
    return value;
}

// --- slider values and their labels -----------------------------------------------------

void KRVXPreferencePane::initializeTimeout(std::optional<double> value, bool setSlider,
                                           bool setSetting, Slider* movedSlider)
{
    // A time-out that is not a finite number of seconds means nothing: the default stands in.
    double seconds = value && std::isfinite(*value) && *value >= 0.0 ? *value : defaultTimeout;
    // Dragging near the default lands on it.
    if (movedSlider != nullptr && !setSlider && std::fabs(seconds - defaultTimeout) < 0.05) {
        movedSlider->setDoubleValue(defaultTimeout);
        seconds = defaultTimeout;
    }
    const auto milliseconds = saturatingCast<unsigned long>(seconds * 1000.0);
    std::string label =
        FormatString::fill(KRVXLocalizedString("%lu ms"), {std::to_string(milliseconds)});
    if (milliseconds == 200) {
        label += KRVXLocalizedString(" (Default)");
    }
    outlets_.timeoutSliderValueTextField->setStringValue(label);
    if (setSlider) {
        outlets_.timeoutSlider->setDoubleValue(seconds);
    }
    if (setSetting) {
        setValue(PlistValue(static_cast<float>(seconds)), keys::accessibilityApiTimeout, false);
    }
}

void KRVXPreferencePane::initializeMaximumTextSize(std::optional<double> value, bool setSlider,
                                                   bool setSetting)
{
    const double size = value && !std::isnan(*value)
                            ? std::clamp(std::round(*value), smallestItemSize, largestItemSize)
                            : defaultItemSize;
    outlets_.maximumTextSizeTextField->setStringValue(FormatString::fill(
        KRVXLocalizedString("Item size: %d pt."), {std::to_string(saturatingCast<int>(size))}));
    if (setSlider) {
        outlets_.maximumTextSizeSlider->setDoubleValue(size);
    }
    if (setSetting) {
        setValue(PlistValue(static_cast<float>(size)), keys::itemHeight, false);
    }
}

void KRVXPreferencePane::initializeMaximumWindowWidth(std::optional<double> value, bool setSlider,
                                                      bool setSetting)
{
    // Below 0.01 (the stored -1 included) means as wide as needed.
    // (A fraction above 1 would not fit a float when huge, and means full width anyway.)
    const float fraction =
        value && *value >= 0.01 ? static_cast<float>(std::min(*value, 1.0)) : 1.0f;
    const char* word = fraction < 0.34f ? "narrow" : fraction < 0.67f ? "medium" : "wide";
    outlets_.maximumPaneWidthTextField->setStringValue(FormatString::fill(
        KRVXLocalizedString("Vexto panel width: %@"), {KRVXLocalizedString(word)}));
    if (setSlider) {
        outlets_.maximumPaneWidthSlider->setDoubleValue(fraction);
    }
    if (setSetting) {
        setValue(PlistValue(fraction > 0.99 ? -1.0f : fraction), keys::maximumWidth, false);
    }
}

// --- appearance -------------------------------------------------------------------------

void KRVXPreferencePane::initializeLayoutFromPresets(const PlistDictionary& presets, bool save)
{
    const PaneOutlets& o = outlets_;
    initializeFontsPopUpButton(presets, save);
    initializeMaximumTextSize(numberIn(presets, keys::itemHeight), true, save);
    initializeMaximumWindowWidth(numberIn(presets, keys::maximumWidth), true, save);
    const auto fixed = [](std::string_view key) {
        return *AppearanceDefaults::colorForKey(key);
    };
    initializeColorWell(o.backgroundColorWell, presets, fixed(keys::backgroundColor), save);
    initializeColorWell(o.selectionColorWell, presets, fixed(keys::selectionColor), save);
    initializeColorWell(o.selectionBorderColorWell, presets, fixed(keys::selectionBorderColor),
                        save);
    initializeColorWell(o.applicationNameColorWell, presets, fixed(keys::applicationNameColor),
                        save);
    initializeColorWell(o.windowNameColorWell, presets, fixed(keys::windowNameColor), save);
    initializeColorWell(o.selectionWindowNameColorWell, presets,
                        fixed(keys::selectionWindowNameColor), save);
    initializeColorWell(o.dockIndicatorBorderColorWell, presets,
                        fixed(keys::dockIndicatorBorderColor), save);
    initializeColorWell(o.keyBadgeColorWell, presets, o.selectionColorWell->color(), save);
    initializeColorWell(o.spaceBadgeColorWell, presets,
                        KRVXDumbDownSpacesSupport()
                            ? Color::calibratedWhite(0.8f, 1.0f)
                            : Color::calibratedRGB(0.28f, 0.28f, 0.36f, 0.6f),
                        save);
    initializeColorWell(o.quickLookBorderColorWell, presets, fixed(keys::previewBorderColor), save);
    for (Button* box :
         {o.panelShadowButton, o.applicationNameShadowButton, o.windowNameShadowButton}) {
        initializeSwitch(box, presets, save);
    }
    if (save) {
        saveSettings();
    }
}

void KRVXPreferencePane::initializeColorWell(ColorWell* well, const PlistDictionary& presets,
                                             const Color& defaultColor, bool setSetting)
{
    const auto key = settingForControl(well);
    if (!key) {
        return;
    }
    const auto archived = unarchivedObjectForKey(presets, *key);
    const Color* color = archived ? std::get_if<Color>(&*archived) : nullptr;
    well->setColor(color != nullptr ? *color : defaultColor);
    if (!setSetting) {
        return;
    }
    PlistDictionary& current = settings();
    if (color != nullptr) {
        archiveObject(current, *color, *key);
    } else {
        current.erase(std::string(*key));
    }
    if (well == outlets_.selectionColorWell) {
        const PlistValue* gradient = objectForKey(presets, keys::selectionGradient);
        const auto steps = gradient != nullptr ? gradient->integerValue() : std::nullopt;
        if (steps) {
            setInteger(current, *steps, keys::selectionGradient);
        } else {
            current.erase(std::string(keys::selectionGradient));
        }
        well->setNeedsDisplay();
    }
}

void KRVXPreferencePane::initializeFontsPopUpButton(const PlistDictionary& presets, bool setSetting)
{
    const PlistValue* stored = objectForKey(presets, keys::alternatePanelFont);
    std::optional<Font> font;
    if (stored != nullptr && stored->isString() && environment_.fonts != nullptr) {
        font = environment_.fonts->fontWithName(*stored->asString(), fontMenuSize);
    }
    if (setSetting) {
        if (!font) {
            return;
        }
        // The display name, unlike the font menu's choice, which stores the font name.
        settings().insert_or_assign(std::string(keys::alternatePanelFont), font->displayName());
    }
    const std::string shown = font ? font->displayName() : KRVXLocalizedString("Default");
    if (MenuItem* title = outlets_.fontsPopUpButton->itemAtIndex(0)) {
        title->setTitle(FormatString::fill(KRVXLocalizedString("Font: %@"), {shown}));
    }
}

} // namespace vexto
