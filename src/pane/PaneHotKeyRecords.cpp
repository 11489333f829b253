#include "pane/PaneHotKeyRecords.hpp"

#include "pane/KRVXPreferencePane.hpp"
#include "ports/Alerts.hpp"
#include "settings/SettingDeclarations.hpp"
#include "settings/SettingKeys.hpp"

namespace vexto {

namespace keys = settingkeys;

PlistDictionary& PaneHotKeyRecords::hotKeyRecords()
{
    return pane_.settings();
}

void PaneHotKeyRecords::hotKeyRecordsDidChange()
{
    pane_.saveSettings();
}

HotKeyRecorderDelegate::Matching PaneHotKeyRecords::hotKeyMatching()
{
    namespace declared = settingdeclarations;
    return Matching{
        pane_.boolForSetting(keys::requireExactModifierKeyMatches,
                             declared::booleanDefault(keys::requireExactModifierKeyMatches)),
        pane_.boolForSetting(keys::ignoreCapsLock, declared::booleanDefault(keys::ignoreCapsLock)),
        pane_.boolForSetting(keys::ignoreFunctionKey,
                             declared::booleanDefault(keys::ignoreFunctionKey))};
}

RunLoop& PaneHotKeyRecords::hotKeyRunLoop()
{
    return pane_.environment().runLoop;
}

const KeyboardLayout* PaneHotKeyRecords::hotKeyKeyboardLayout()
{
    return pane_.environment().keyboard;
}

HotKeyRegistrar* PaneHotKeyRecords::hotKeyRegistrar()
{
    return pane_.environment().hotKeys;
}

ShortcutOwners* PaneHotKeyRecords::hotKeyOwners()
{
    return pane_.environment().shortcutOwners;
}

std::string PaneHotKeyRecords::localizedHotKeyText(std::string_view key)
{
    return KRVXLocalizedString(key);
}

int PaneHotKeyRecords::runHotKeyAlert(const AlertRequest& alert, Window* window)
{
    return KRVXRunAlertPanel(alert.title, alert.message, alert.defaultButton, alert.alternateButton,
                             alert.otherButton, window);
}

} // namespace vexto
