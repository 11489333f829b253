#include "pane/ControlFilling.hpp"

#include "pane/KRVXPreferencePane.hpp"
#include "toolkit/PopUpButton.hpp"
#include "toolkit/TextField.hpp"

namespace vexto {

void KRVXSetPopUpButtonState(PopUpButton& popUp, std::int64_t defaultIndex)
{
    KRVXPreferencePane* pane = KRVXPreferencePane::vexto();
    const auto key = pane != nullptr ? pane->settingForControl(&popUp) : std::nullopt;
    if (!key) {
        return;
    }
    popUp.selectItemAtIndex(static_cast<int>(pane->integerForSetting(*key, defaultIndex)));
}

void KRVXSetPopUpButtonStateFromTag(PopUpButton& popUp, std::int64_t defaultTag)
{
    KRVXPreferencePane* pane = KRVXPreferencePane::vexto();
    const auto key = pane != nullptr ? pane->settingForControl(&popUp) : std::nullopt;
    if (!key) {
        return;
    }
    const PlistValue* stored = pane->valueForSetting(*key);
    const auto tag = stored != nullptr ? stored->integerValue() : std::nullopt;
    if (!tag || !popUp.selectItemWithTag(static_cast<int>(*tag))) {
        popUp.selectItemWithTag(static_cast<int>(defaultTag));
    }
}

void KRVXSetTextFieldStringValue(TextField& field)
{
    KRVXPreferencePane* pane = KRVXPreferencePane::vexto();
    const auto key = pane != nullptr ? pane->settingForControl(&field) : std::nullopt;
    if (!key) {
        return;
    }
    const PlistValue* stored = pane->valueForSetting(*key);
    std::string text;
    if (const PlistArray* items = stored != nullptr ? stored->asArray() : nullptr) {
        for (std::size_t i = 0; i < items->size(); ++i) {
            if (i > 0) {
                text += ',';
            }
            if (const std::string* name = (*items)[i].asString()) {
                text += *name;
            }
        }
    }
    field.setStringValue(text);
}

} // namespace vexto
