#pragma once

#include "toolkit/Control.hpp"
#include "toolkit/Menu.hpp"

#include <memory>
#include <string>
#include <vector>

namespace vexto {

// A pop-up menu (shows and ticks its selected item) or a pull-down menu (item 0 is its title).
class PopUpButton : public Control {
public:
    explicit PopUpButton(Rect frame = {}, bool pullsDown = false);
    ~PopUpButton() override;
    const char* className() const override { return pullsDown_ ? "PullDownButton" : "PopUpButton"; }

    bool pullsDown() const { return pullsDown_; }
    Menu& menu() const { return *menu_; }
    const std::shared_ptr<Menu>& sharedMenu() const { return menu_; }
    void setMenu(std::shared_ptr<Menu> menu);

    MenuItem& addItemWithTitle(std::string title);
    void addItemsWithTitles(const std::vector<std::string>& titles);
    void removeAllItems() { menu_->removeAllItems(); }
    int numberOfItems() const { return menu_->numberOfItems(); }
    MenuItem* itemAtIndex(int index) const { return menu_->itemAtIndex(index); }
    std::vector<std::string> itemTitles() const;

    // -1 and none while nothing is selected.
    int indexOfSelectedItem() const;
    MenuItem* selectedItem() const;
    std::string titleOfSelectedItem() const;
    // The selected item's tag, or -1 with no selection.
    int selectedTag() const;

    // An index out of range leaves no item selected (-1).
    void selectItemAtIndex(int index);
    void selectItem(const MenuItem* item);
    // False when no item has the tag; the selection is then cleared (-1).
    bool selectItemWithTag(int tag);
    bool selectItemWithTitle(std::string_view title);

    // What the button shows: item 0's title for a pull-down, else the selected item's title.
    std::string title() const;

    // The person opens the menu: its delegate rebuilds it first.
    void willOpenMenu() { menu_->update(); }
    // The person chooses an item: it becomes the selected item and the item's own action is sent
    // when it has one its target handles, otherwise the button's action.
    void userDidChooseItem(MenuItem& item);

    double doubleValue() const override { return indexOfSelectedItem(); }
    void setDoubleValue(double value) override { selectItemAtIndex(static_cast<int>(value)); }
    std::string stringValue() const override { return titleOfSelectedItem(); }

private:
    void watchMenu();

    bool pullsDown_;
    std::shared_ptr<Menu> menu_;
    std::weak_ptr<MenuItem> selected_;
    int menuObserver_ = 0;
};

} // namespace vexto
