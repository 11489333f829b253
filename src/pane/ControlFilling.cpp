#include "pane/ControlFilling.hpp"

#include "pane/KRVXPreferencePane.hpp"
#include "toolkit/PopUpButton.hpp"
#include "toolkit/TextField.hpp"

#include <limits>

namespace vexto {

namespace {

bool fitsInt(std::int64_t value)
{
    return value >= std::numeric_limits<int>::min() && value <= std::numeric_limits<int>::max();
}

} // namespace

void KRVXSetPopUpButtonState(PopUpButton& popUp, std::int64_t defaultIndex)
{
    KRVXPreferencePane* pane = KRVXPreferencePane::vexto();
    const auto key = pane != nullptr ? pane->settingForControl(&popUp) : std::nullopt;
    if (!key) {
        return;
    }
    // An index beyond what a menu can hold selects nothing, as any index past its end does.
    const std::int64_t index = pane->integerForSetting(*key, defaultIndex);
    popUp.selectItemAtIndex(fitsInt(index) ? static_cast<int>(index) : -1);
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
    if (!tag || !fitsInt(*tag) || !popUp.selectItemWithTag(static_cast<int>(*tag))) {
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
            // Items that are not names show as the platform's joining describes them, so that
            // the next keystroke keeps them as text instead of dropping them.
            text += (*items)[i].description();
        }
    }
    field.setStringValue(text);
}

} // namespace vexto
