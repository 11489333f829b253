// How each kind of control turns the person's change into a stored value, what else it enables,
// hides or asks of the daemon, and whether it saves at once or a moment later.
#include "foundation/DictionaryExtensions.hpp"
#include "pane/KRVXPreferencePane.hpp"
#include "settings/AppearanceDefaults.hpp"
#include "settings/SettingDeclarations.hpp"
#include "settings/SettingKeys.hpp"
#include "toolkit/Application.hpp"
#include "toolkit/Button.hpp"
#include "toolkit/ColorWell.hpp"
#include "toolkit/PopUpButton.hpp"
#include "toolkit/Slider.hpp"

namespace vexto {

namespace keys = settingkeys;

namespace {

template <typename T> T* senderAs(const ActionSender& sender)
{
    return sender.viewAs<T>();
}

// Keys whose change alters how the daemon's panel looks, so the daemon shows a sample.
bool changesThePanelsLook(std::string_view key)
{
    return key == keys::showApplicationNames || key == keys::showShortcutBadges ||
           key.ends_with(" Shadow");
}

} // namespace

void KRVXPreferencePane::registerBindingActions()
{
    const auto bind = [this]<typename T>(const char* selector,
                                         void (KRVXPreferencePane::*method)(T&)) {
        actions_.on(selector, [this, method](const ActionSender& sender) {
            if (T* control = senderAs<T>(sender)) {
                (this->*method)(*control);
            }
        });
    };
    bind.operator()<Button>("toggleBooleanSetting:", &KRVXPreferencePane::toggleBooleanSetting);
    bind.operator()<PopUpButton>("changePopUpSetting:", &KRVXPreferencePane::changePopUpSetting);
    bind.operator()<PopUpButton>("changePopUpSettingWithTag:",
                                 &KRVXPreferencePane::changePopUpSettingWithTag);
    bind.operator()<Slider>("changeSliderSetting:", &KRVXPreferencePane::changeSliderSetting);
    bind.operator()<ColorWell>("changeColorSetting:", &KRVXPreferencePane::changeColorSetting);
    bind.operator()<PopUpButton>("chooseLayoutPresets:", &KRVXPreferencePane::chooseLayoutPresets);
    const auto bindMenuItem = [this](const char* selector,
                                     void (KRVXPreferencePane::*method)(const MenuItem&)) {
        actions_.on(selector, [this, method](const ActionSender& sender) {
            if (const MenuItem* item = sender.menuItem()) {
                (this->*method)(*item);
            }
        });
    };
    bindMenuItem("changeFont:", &KRVXPreferencePane::changeFont);
    bindMenuItem("changeFontSmoothing:", &KRVXPreferencePane::changeFontSmoothing);
}

void KRVXPreferencePane::toggleBooleanSetting(Button& checkBox)
{
    const auto key = settingForControl(&checkBox);
    if (!key) {
        return;
    }
    bool value = checkBox.state() == Button::onState;
    const PaneOutlets& o = outlets_;
    if (&checkBox == o.addActivateItemButton) {
        initializeActivateItemSetting(value);
    } else if (&checkBox == o.addCancelItemButton) {
        initializeCancelItemSetting(value);
    } else if (&checkBox == o.switchAcrossSpacesButton) {
        o.showSpaceBadgesButton->setEnabled(value);
        if (value) {
            // The check-box rule (settings, then the defaults file) in two states only: the
            // mixed state is deliberately not restored here.
            o.showSpaceBadgesButton->setState(
                boolForSetting(keys::alwaysShowSpaceBadges, settings()) ? Button::onState
                                                                        : Button::offState);
        } else {
            o.showSpaceBadgesButton->setState(Button::offState);
        }
        o.spaceBadgeColorWell->setEnabled(value);
    } else if (&checkBox == o.showSpaceBadgesButton) {
        // Mixed: badges on every Space but the current one.
        const bool mixed = checkBox.state() == Button::mixedState;
        setValue(PlistValue(mixed), keys::hideCurrentSpaceBadges, false);
        value = mixed || value;
    } else if (&checkBox == o.showQuickLookButton) {
        o.quickLookDelayPopUpButton->setEnabled(value);
    } else if (changesThePanelsLook(*key)) {
        daemon_.setUpdateDaemonWithDummyDisplay(true);
    }
    setBool(value, *key);
}

void KRVXPreferencePane::changePopUpSetting(PopUpButton& popUp)
{
    if (const auto key = settingForControl(&popUp)) {
        setValue(PlistValue(popUp.indexOfSelectedItem()), *key);
    }
}

void KRVXPreferencePane::changePopUpSettingWithTag(PopUpButton& popUp)
{
    const auto key = settingForControl(&popUp);
    if (!key) {
        return;
    }
    setValue(PlistValue(popUp.selectedTag()), *key);
    if (&popUp == outlets_.iconModePopUpButton) {
        showDocumentIconOverlaysBoxForIconMode();
    }
}

void KRVXPreferencePane::changeSliderSetting(Slider& slider)
{
    const double value = slider.doubleValue();
    if (&slider == outlets_.timeoutSlider) {
        initializeTimeout(value, false, true, &slider);
    } else {
        if (&slider == outlets_.maximumTextSizeSlider) {
            initializeMaximumTextSize(value, false, true);
        } else {
            initializeMaximumWindowWidth(value, false, true);
        }
        // A sample panel while dragging and for keyboard changes, not for the final release.
        const Event* event = Application::shared().currentEvent();
        if (event == nullptr || event->type() != Event::Type::LeftMouseUp) {
            daemon_.setUpdateDaemonWithDummyDisplay(true);
        }
    }
    store_.saveSettingsSoonAfterTimerReset(false);
}

void KRVXPreferencePane::changeColorSetting(ColorWell& well)
{
    const auto key = settingForControl(&well);
    if (!key) {
        return;
    }
    if (&well != outlets_.quickLookBorderColorWell) {
        daemon_.setUpdateDaemonWithDummyDisplay(true);
    }
    archiveObject(settings(), well.color(), *key);
    if (&well == outlets_.selectionColorWell) {
        // A key-badge colour of its own wins; otherwise the badge follows the selection.
        initializeColorWell(outlets_.keyBadgeColorWell, settings(), well.color(), false);
    }
    store_.saveSettingsSoonAfterTimerReset(false);
}

void KRVXPreferencePane::controlTextDidChange(TextField& field)
{
    const auto key = settingForControl(&field);
    if (!key) {
        return;
    }
    // Split at every comma, keeping empty pieces and blanks as typed.
    const std::string text = field.stringValue();
    PlistArray pieces;
    std::size_t start = 0;
    for (std::size_t comma = text.find(','); comma != std::string::npos;
         comma = text.find(',', start)) {
        pieces.emplace_back(text.substr(start, comma - start));
        start = comma + 1;
    }
    pieces.emplace_back(text.substr(start));
    std::optional<PlistValue> value;
    if (pieces.size() > 1 || !pieces.front().asString()->empty()) {
        value = PlistValue(std::move(pieces));
    }
    setValue(value, *key, false);
    store_.saveSettingsSoonAfterTimerReset(true);
}

void KRVXPreferencePane::changeFont(const MenuItem& item)
{
    daemon_.setUpdateDaemonWithDummyDisplay(true);
    const Font* font = std::any_cast<Font>(&item.representedObject());
    setValue(font != nullptr ? std::optional<PlistValue>(PlistValue(font->fontName()))
                             : std::nullopt,
             keys::alternatePanelFont);
    initializeFontsPopUpButton(settings(), false);
}

void KRVXPreferencePane::changeFontSmoothing(const MenuItem& item)
{
    daemon_.setUpdateDaemonWithDummyDisplay(true);
    setValue(PlistValue(item.tag()), keys::fontSmoothing);
}

std::int64_t KRVXPreferencePane::gradientValueForWell(const ColorWell* well)
{
    if (well == nullptr || well != outlets_.selectionColorWell) {
        return 0;
    }
    return integerForSetting(keys::selectionGradient,
                             settingdeclarations::integerDefault(keys::selectionGradient));
}

void KRVXPreferencePane::setGradientValue(std::int64_t value, const ColorWell* well)
{
    if (well == nullptr || well != outlets_.selectionColorWell) {
        return;
    }
    daemon_.setUpdateDaemonWithDummyDisplay(true);
    setValue(PlistValue(static_cast<long long>(value)), keys::selectionGradient, false);
    store_.saveSettingsSoonAfterTimerReset(false);
}

} // namespace vexto
