#pragma once

namespace vexto {

class MenuItem;
class View;

// Who sent an action: a control, or a menu item chosen from a menu.
class ActionSender {
public:
    ActionSender(View* view) : view_(view) {}
    ActionSender(MenuItem* item) : menuItem_(item) {}

    View* view() const { return view_; }
    MenuItem* menuItem() const { return menuItem_; }
    template <typename T> T* viewAs() const { return dynamic_cast<T*>(view_); }

private:
    View* view_ = nullptr;
    MenuItem* menuItem_ = nullptr;
};

} // namespace vexto
