#include "toolkit/PopUpButton.hpp"

namespace vexto {

PopUpButton::PopUpButton(Rect frame, bool pullsDown)
    : Control(frame), pullsDown_(pullsDown), menu_(std::make_shared<Menu>())
{
    watchMenu();
}

PopUpButton::~PopUpButton()
{
    menu_->removeObserver(menuObserver_);
}

void PopUpButton::watchMenu()
{
    menuObserver_ = menu_->addObserver([this](Menu&) { notify(ViewChange::Items); });
}

void PopUpButton::setMenu(std::shared_ptr<Menu> menu)
{
    if (!menu) {
        return;
    }
    menu_->removeObserver(menuObserver_);
    menu_ = std::move(menu);
    selected_.reset();
    watchMenu();
    notify(ViewChange::Items);
}

MenuItem& PopUpButton::addItemWithTitle(std::string title)
{
    return menu_->addItemWithTitle(std::move(title));
}

void PopUpButton::addItemsWithTitles(const std::vector<std::string>& titles)
{
    for (const auto& title : titles) {
        addItemWithTitle(title);
    }
}

std::vector<std::string> PopUpButton::itemTitles() const
{
    std::vector<std::string> titles;
    for (const auto& item : menu_->items()) {
        titles.push_back(item->title());
    }
    return titles;
}

int PopUpButton::indexOfSelectedItem() const
{
    const auto item = selected_.lock();
    return item ? menu_->indexOfItem(item.get()) : -1;
}

MenuItem* PopUpButton::selectedItem() const
{
    return menu_->itemAtIndex(indexOfSelectedItem());
}

std::string PopUpButton::titleOfSelectedItem() const
{
    const MenuItem* item = selectedItem();
    return item != nullptr ? item->title() : std::string();
}

int PopUpButton::selectedTag() const
{
    const MenuItem* item = selectedItem();
    return item != nullptr ? item->tag() : -1;
}

void PopUpButton::selectItemAtIndex(int index)
{
    const auto item = menu_->sharedItemAtIndex(index);
    if (!pullsDown_) {
        if (MenuItem* previous = selectedItem(); previous != nullptr && previous != item.get()) {
            previous->setState(0);
        }
        if (item) {
            item->setState(1);
        }
    }
    selected_ = item;
    notify(ViewChange::Selection);
}

void PopUpButton::selectItem(const MenuItem* item)
{
    selectItemAtIndex(menu_->indexOfItem(item));
}

bool PopUpButton::selectItemWithTag(int tag)
{
    const int index = menu_->indexOfItemWithTag(tag);
    selectItemAtIndex(index);
    return index >= 0;
}

bool PopUpButton::selectItemWithTitle(std::string_view title)
{
    const int index = menu_->indexOfItemWithTitle(title);
    selectItemAtIndex(index);
    return index >= 0;
}

std::string PopUpButton::title() const
{
    if (pullsDown_) {
        const MenuItem* first = menu_->itemAtIndex(0);
        return first != nullptr ? first->title() : std::string();
    }
    return titleOfSelectedItem();
}

void PopUpButton::userDidChooseItem(MenuItem& item)
{
    if (!isEnabled() || !item.isEnabled() || item.isSeparatorItem()) {
        return;
    }
    if (item.menu() == menu_.get()) {
        selectItem(&item);
    }
    if (sendAction(item.action(), item.target(), ActionSender(&item))) {
        return;
    }
    sendAction();
}

} // namespace vexto
