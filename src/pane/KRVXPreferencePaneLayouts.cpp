// Appearance layouts: the pull-down built afresh at every opening, and choosing, opening and
// saving a layout.
#include "foundation/DictionaryExtensions.hpp"
#include "foundation/Log.hpp"
#include "pane/KRVXPreferencePane.hpp"
#include "pane/MenuExtensions.hpp"
#include "ports/FilePanels.hpp"
#include "settings/SettingKeys.hpp"
#include "toolkit/Application.hpp"
#include "toolkit/Button.hpp"
#include "toolkit/ColorWell.hpp"
#include "toolkit/PopUpButton.hpp"

namespace vexto {

namespace {

namespace keys = settingkeys;

constexpr int fixedTopItems = 2; // the pull-down's title and "Default Appearance"
constexpr int openItemTag = -1;
constexpr int saveItemTag = -2;

} // namespace

void KRVXPreferencePane::menuNeedsUpdate(Menu& menu)
{
    if (outlets_.layoutPresetsPopUpButton != nullptr &&
        &menu == &outlets_.layoutPresetsPopUpButton->menu()) {
        updateLayoutsMenu(menu);
    } else if (outlets_.fontsPopUpButton != nullptr &&
               &menu == &outlets_.fontsPopUpButton->menu()) {
        updateFontsMenu(menu);
    }
}

void KRVXPreferencePane::updateLayoutsMenu(Menu& menu)
{
    removeItemsSparingAtTop(menu, fixedTopItems, 0);
    addItemsForLayoutsAtPath(menu, store_.userDefinedLayoutsPath());
    addItemsForLayoutsAtPath(menu, environment_.sharedLayoutsFolder.empty()
                                       ? std::string(sharedLayoutsPath)
                                       : environment_.sharedLayoutsFolder);
    menu.addSeparator();
    for (const std::string& preset : bundle_.pathsForResourcesOfType(layoutFileType)) {
        addItemForLayoutAtPath(menu, preset, true);
    }
    menu.addSeparator();
    menu.addItemWithTitle(KRVXLocalizedString("Open..."), {}, openItemTag);
    menu.addItemWithTitle(KRVXLocalizedString("Save..."), {}, saveItemTag);
}

namespace {

std::optional<PlistDictionary> readLayout(const std::string& path)
{
    return usableDictionaryWithContentsOfFile(path, "the built-in look is shown instead");
}

} // namespace

void KRVXPreferencePane::chooseLayoutPresets(PopUpButton& popUp)
{
    const MenuItem* item = popUp.selectedItem();
    std::optional<PlistDictionary> layout;
    if (popUp.indexOfSelectedItem() > 0 && item != nullptr) {
        if (item->tag() == saveItemTag) {
            saveLayout(item->title());
            return;
        }
        if (item->tag() == openItemTag) {
            const auto path = chooseLayoutPathForSaving(false, item->title());
            if (!path) {
                return;
            }
            layout = readLayout(*path);
        } else if (const auto* path = std::any_cast<std::string>(&item->representedObject())) {
            layout = readLayout(*path);
        }
    }
    // No layout, or one that cannot be read, is the default appearance.
    daemon_.setUpdateDaemonWithDummyDisplay(true);
    initializeLayoutFromPresets(layout.value_or(PlistDictionary{}), true);
}

void KRVXPreferencePane::saveLayout(const std::string& title)
{
    const auto path = chooseLayoutPathForSaving(true, title);
    if (!path) {
        return;
    }
    PlistDictionary layout;
    for (std::string_view key : {keys::selectionGradient, keys::itemHeight, keys::maximumWidth,
                                 keys::alternatePanelFont}) {
        takeObjectForKey(layout, key, settings());
    }
    const PaneOutlets& o = outlets_;
    const std::initializer_list<const View*> controls = {
        o.backgroundColorWell,          o.selectionColorWell,  o.selectionBorderColorWell,
        o.applicationNameColorWell,     o.windowNameColorWell, o.selectionWindowNameColorWell,
        o.dockIndicatorBorderColorWell, o.keyBadgeColorWell,   o.spaceBadgeColorWell,
        o.quickLookBorderColorWell,     o.panelShadowButton,   o.applicationNameShadowButton,
        o.windowNameShadowButton};
    for (const View* control : controls) {
        storeLayout(layout, control);
    }
    if (!writeToFileAtomically(layout, *path)) {
        Log::line("could not write <" + *path + ">");
        Application::shared().beep();
    }
}

void KRVXPreferencePane::storeLayout(PlistDictionary& layout, const View* control)
{
    const auto key = settingForControl(control);
    if (!key) {
        return;
    }
    takeObjectForKey(layout, *key, settings());
}

std::optional<std::string> KRVXPreferencePane::chooseLayoutPathForSaving(bool saving,
                                                                         const std::string& title)
{
    if (environment_.filePanels == nullptr) {
        return std::nullopt;
    }
    FilePanelRequest request;
    request.saving = saving;
    request.title = title;
    request.allowedFileType = layoutFileType;
    if (saving) {
        request.directory = store_.userDefinedLayoutsPath();
        request.nameFieldStringValue = KRVXLocalizedString("Untitled");
    }
    return environment_.filePanels->runModal(request);
}

} // namespace vexto
