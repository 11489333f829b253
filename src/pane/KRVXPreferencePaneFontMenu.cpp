// The font menu, built afresh at every opening from the fonts installed now, with the stored
// font and smoothing ticked.
#include "pane/KRVXPreferencePane.hpp"
#include "pane/MenuExtensions.hpp"
#include "ports/FontCatalog.hpp"
#include "settings/SettingDeclarations.hpp"
#include "settings/SettingKeys.hpp"
#include "toolkit/PopUpButton.hpp"

#include <algorithm>
#include <cctype>

namespace vexto {

namespace {

namespace keys = settingkeys;

bool caseInsensitiveLess(const std::string& a, const std::string& b)
{
    return std::lexicographical_compare(
        a.begin(), a.end(), b.begin(), b.end(),
        [](unsigned char x, unsigned char y) { return std::tolower(x) < std::tolower(y); });
}

} // namespace

std::shared_ptr<Menu> KRVXPreferencePane::fontSmoothingMenu()
{
    auto menu = std::make_shared<Menu>("Smoothing");
    const std::int64_t stored = integerForSetting(
        keys::fontSmoothing, settingdeclarations::integerDefault(keys::fontSmoothing));
    const auto add = [&](const char* title, int tag, bool ticked) {
        MenuItem& item =
            menu->addItemWithTitle(KRVXLocalizedString(title), "changeFontSmoothing:", tag);
        item.setTarget(this);
        item.setState(ticked ? 1 : 0);
    };
    add("System preferences default", 0, stored == 0);
    menu->addSeparator();
    add("Enable", 1, stored > 0);
    add("Disable", -1, stored < 0);
    return menu;
}

MenuItem& KRVXPreferencePane::addFontItem(Menu& menu, const std::string& title, const Font& font)
{
    MenuItem& item = menu.addItemWithTitle(title, "changeFont:");
    item.setAttributedTitleFont(font);
    set1pxDummyImageAsHeightFix(item, true);
    item.setRepresentedObject(font);
    item.setTarget(this);
    return item;
}

void KRVXPreferencePane::updateFontsMenu(Menu& menu)
{
    removeItemsSparingAtTop(menu, 1, 0);
    const PlistValue* stored = valueForSetting(keys::alternatePanelFont);
    const std::optional<std::string> current =
        stored != nullptr && stored->isString() ? std::optional(*stored->asString()) : std::nullopt;

    MenuItem& defaultItem = menu.addItemWithTitle(KRVXLocalizedString("Default"), "changeFont:");
    defaultItem.setTarget(this);
    set1pxDummyImageAsHeightFix(defaultItem, false);
    menu.addSeparator();
    MenuItem& smoothing = menu.addItemWithTitle(KRVXLocalizedString("Font Smoothing"));
    smoothing.setSubmenu(fontSmoothingMenu());
    set1pxDummyImageAsHeightFix(smoothing, false);
    menu.addSeparator();

    bool found = false;
    if (environment_.fonts != nullptr) {
        std::vector<std::string> families = environment_.fonts->availableFontFamilies();
        std::sort(families.begin(), families.end(), caseInsensitiveLess);
        for (const std::string& family : families) {
            found = addFontFamily(menu, family, current) || found;
        }
    }
    defaultItem.setState(found ? 0 : 1);
}

// One family's fonts live only while its item is built, so memory stays bounded by the largest
// family, however many are installed.
bool KRVXPreferencePane::addFontFamily(Menu& menu, const std::string& family,
                                       const std::optional<std::string>& current)
{
    std::vector<Font> fonts;
    for (const std::string& name : environment_.fonts->availableMembersOfFontFamily(family)) {
        if (auto font = environment_.fonts->fontWithName(name, fontMenuSize)) {
            fonts.push_back(std::move(*font));
        }
    }
    if (fonts.empty()) {
        return false;
    }
    const Font& first = fonts.front();
    const bool several = fonts.size() > 1;
    MenuItem& familyItem = addFontItem(menu, several ? family : first.displayName(), first);
    bool found = first.fontName() == current;
    if (found) {
        familyItem.setState(1);
    }
    if (!several) {
        return found;
    }
    auto submenu = std::make_shared<Menu>(family);
    for (const Font& font : fonts) {
        MenuItem& member = addFontItem(*submenu, font.displayName(), font);
        if (font.fontName() == current) {
            member.setState(1);
            found = true;
            if (familyItem.state() != 1) {
                familyItem.setState(-1);
            }
        }
    }
    familyItem.setSubmenu(std::move(submenu));
    return found;
}

} // namespace vexto
