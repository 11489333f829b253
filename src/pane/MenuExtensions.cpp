#include "pane/MenuExtensions.hpp"

#include "foundation/FileSystem.hpp"
#include "pane/KRVXPreferencePane.hpp"
#include "toolkit/Image.hpp"
#include "toolkit/Menu.hpp"
#include "widgets/ResourceImages.hpp"

namespace vexto {

std::string layoutNameForPath(const std::string& path)
{
    const auto slash = path.rfind('/');
    std::string name = slash == std::string::npos ? path : path.substr(slash + 1);
    // A leading dot starts a hidden name, not an extension.
    const auto dot = name.rfind('.');
    if (dot != std::string::npos && dot > 0) {
        name.erase(dot);
    }
    return name;
}

MenuItem& addItemForLayoutAtPath(Menu& menu, const std::string& path, bool preset)
{
    // The shipped presets are named in the user's language; the user's own layouts as saved.
    const std::string name = layoutNameForPath(path);
    auto item = std::make_shared<MenuItem>(preset ? KRVXLocalizedString(name) : name);
    item->setRepresentedObject(path);
    item->setImage(ResourceImages::named(preset ? "KRVXSmallIcon.tiff" : "KRVXUserLayout.tiff"));
    return menu.addItem(std::move(item));
}

void addItemsForLayoutsAtPath(Menu& menu, const std::optional<std::string>& folder)
{
    if (!folder) {
        return;
    }
    bool first = true;
    for (const std::string& name : FileSystem::namesInFolder(*folder)) {
        if (!name.ends_with(layoutFileType)) {
            continue;
        }
        if (first) {
            menu.addSeparator();
            first = false;
        }
        addItemForLayoutAtPath(menu, FileSystem::join(*folder, name), false);
    }
}

void removeItemsSparingAtTop(Menu& menu, int top, int bottom)
{
    while (menu.numberOfItems() > top + bottom) {
        menu.removeItemAtIndex(top);
    }
}

void set1pxDummyImageAsHeightFix(MenuItem& item, bool tall)
{
    static const auto tallImage = std::make_shared<Image>(Size{1, 24});
    item.setImage(tall ? tallImage : std::make_shared<Image>(Size{1, 1}));
}

} // namespace vexto
