#pragma once

#include "toolkit/MenuItem.hpp"
#include "toolkit/ObserverList.hpp"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace vexto {

class Menu;

class MenuDelegate {
public:
    virtual ~MenuDelegate() = default;
    // The menu is about to open: rebuild it now.
    virtual void menuNeedsUpdate(Menu& menu) = 0;
};

// An ordered list of menu items, possibly rebuilt by its delegate each time it opens.
class Menu {
public:
    explicit Menu(std::string title = {}) : title_(std::move(title)) {}
    Menu(const Menu&) = delete;
    Menu& operator=(const Menu&) = delete;
    ~Menu();

    const std::string& title() const { return title_; }
    void setTitle(std::string title) { title_ = std::move(title); }

    int numberOfItems() const { return static_cast<int>(items_.size()); }
    const std::vector<std::shared_ptr<MenuItem>>& items() const { return items_; }
    // The item at the index, or none when out of range.
    MenuItem* itemAtIndex(int index) const;
    std::shared_ptr<MenuItem> sharedItemAtIndex(int index) const;

    MenuItem& addItem(std::shared_ptr<MenuItem> item);
    MenuItem& addItemWithTitle(std::string title, std::string action = {}, int tag = 0);
    void addSeparator();
    void insertItem(std::shared_ptr<MenuItem> item, int index);
    void removeItemAtIndex(int index);
    void removeAllItems();

    // -1 when not found.
    int indexOfItem(const MenuItem* item) const;
    int indexOfItemWithTag(int tag) const;
    int indexOfItemWithTitle(std::string_view title) const;

    MenuDelegate* delegate() const { return delegate_; }
    void setDelegate(MenuDelegate* delegate) { delegate_ = delegate; }
    // Called just before the menu opens: lets the delegate rebuild it.
    void update();

    Menu* supermenu() const { return supermenu_; }

    int addObserver(std::function<void(Menu&)> observer)
    {
        return observers_.add(std::move(observer));
    }
    void removeObserver(int token) { observers_.remove(token); }

private:
    friend class MenuItem;
    void changed();

    std::string title_;
    std::vector<std::shared_ptr<MenuItem>> items_;
    MenuDelegate* delegate_ = nullptr;
    Menu* supermenu_ = nullptr;
    ObserverList<Menu&> observers_;
};

} // namespace vexto
