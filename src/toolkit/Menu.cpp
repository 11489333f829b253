#include "toolkit/Menu.hpp"

#include "toolkit/Image.hpp"

#include <algorithm>

namespace vexto {

// --- MenuItem ---------------------------------------------------------------------------

MenuItem::MenuItem(std::string title, std::string action, int tag)
    : title_(std::move(title)), tag_(tag), action_(std::move(action))
{}

std::shared_ptr<MenuItem> MenuItem::separatorItem()
{
    auto item = std::make_shared<MenuItem>();
    item->separator_ = true;
    item->enabled_ = false;
    return item;
}

void MenuItem::changed()
{
    if (menu_ != nullptr) {
        menu_->changed();
    }
}

void MenuItem::setTitle(std::string title)
{
    title_ = std::move(title);
    changed();
}

void MenuItem::setAttributedTitleFont(std::optional<Font> font)
{
    titleFont_ = std::move(font);
    changed();
}

void MenuItem::setState(int state)
{
    state_ = state < 0 ? -1 : (state > 0 ? 1 : 0);
    changed();
}

void MenuItem::setEnabled(bool enabled)
{
    enabled_ = enabled;
    changed();
}

void MenuItem::setImage(std::shared_ptr<Image> image)
{
    image_ = std::move(image);
    changed();
}

void MenuItem::setSubmenu(std::shared_ptr<Menu> submenu)
{
    if (submenu_) {
        submenu_->supermenu_ = nullptr;
    }
    submenu_ = std::move(submenu);
    if (submenu_) {
        submenu_->supermenu_ = menu_;
    }
    changed();
}

// --- Menu -------------------------------------------------------------------------------

Menu::~Menu()
{
    for (const auto& item : items_) {
        item->menu_ = nullptr;
    }
}

void Menu::changed()
{
    observers_.notify(*this);
    if (supermenu_ != nullptr) {
        supermenu_->changed();
    }
}

MenuItem* Menu::itemAtIndex(int index) const
{
    return sharedItemAtIndex(index).get();
}

std::shared_ptr<MenuItem> Menu::sharedItemAtIndex(int index) const
{
    if (index < 0 || index >= numberOfItems()) {
        return nullptr;
    }
    return items_[static_cast<std::size_t>(index)];
}

MenuItem& Menu::addItem(std::shared_ptr<MenuItem> item)
{
    insertItem(item, numberOfItems());
    return *item;
}

MenuItem& Menu::addItemWithTitle(std::string title, std::string action, int tag)
{
    return addItem(std::make_shared<MenuItem>(std::move(title), std::move(action), tag));
}

void Menu::addSeparator()
{
    addItem(MenuItem::separatorItem());
}

void Menu::insertItem(std::shared_ptr<MenuItem> item, int index)
{
    if (!item || item->menu_ != nullptr) {
        return; // an item belongs to one menu at a time
    }
    index = std::clamp(index, 0, numberOfItems());
    item->menu_ = this;
    if (item->submenu_) {
        item->submenu_->supermenu_ = this;
    }
    items_.insert(items_.begin() + index, std::move(item));
    changed();
}

void Menu::removeItemAtIndex(int index)
{
    if (index < 0 || index >= numberOfItems()) {
        return;
    }
    const auto position = items_.begin() + index;
    (*position)->menu_ = nullptr;
    items_.erase(position);
    changed();
}

void Menu::removeAllItems()
{
    for (const auto& item : items_) {
        item->menu_ = nullptr;
    }
    items_.clear();
    changed();
}

int Menu::indexOfItem(const MenuItem* item) const
{
    for (int i = 0; i < numberOfItems(); ++i) {
        if (items_[static_cast<std::size_t>(i)].get() == item) {
            return i;
        }
    }
    return -1;
}

int Menu::indexOfItemWithTag(int tag) const
{
    for (int i = 0; i < numberOfItems(); ++i) {
        const auto& item = items_[static_cast<std::size_t>(i)];
        if (!item->isSeparatorItem() && item->tag() == tag) {
            return i;
        }
    }
    return -1;
}

int Menu::indexOfItemWithTitle(std::string_view title) const
{
    for (int i = 0; i < numberOfItems(); ++i) {
        if (items_[static_cast<std::size_t>(i)]->title() == title) {
            return i;
        }
    }
    return -1;
}

void Menu::update()
{
    if (delegate_ != nullptr) {
        delegate_->menuNeedsUpdate(*this);
    }
}

} // namespace vexto
