#pragma once

#include "foundation/Font.hpp"

#include <any>
#include <memory>
#include <optional>
#include <string>

namespace vexto {

class ActionTarget;
class Image;
class Menu;

// One item of a menu: a title (optionally drawn in its own font), a tag, an object it stands for,
// a state mark (on 1, off 0, mixed -1), an image, a submenu, and an action; or a separator.
class MenuItem {
public:
    explicit MenuItem(std::string title = {}, std::string action = {}, int tag = 0);
    static std::shared_ptr<MenuItem> separatorItem();

    bool isSeparatorItem() const { return separator_; }

    const std::string& title() const { return title_; }
    void setTitle(std::string title);
    // The font the title is drawn in; none for the menu's own font.
    const std::optional<Font>& attributedTitleFont() const { return titleFont_; }
    void setAttributedTitleFont(std::optional<Font> font);

    int tag() const { return tag_; }
    void setTag(int tag) { tag_ = tag; }
    const std::any& representedObject() const { return representedObject_; }
    void setRepresentedObject(std::any object) { representedObject_ = std::move(object); }

    int state() const { return state_; }
    void setState(int state);
    bool isEnabled() const { return enabled_; }
    void setEnabled(bool enabled);

    const std::shared_ptr<Image>& image() const { return image_; }
    void setImage(std::shared_ptr<Image> image);

    const std::shared_ptr<Menu>& submenu() const { return submenu_; }
    void setSubmenu(std::shared_ptr<Menu> submenu);
    bool hasSubmenu() const { return submenu_ != nullptr; }

    const std::string& action() const { return action_; }
    void setAction(std::string action) { action_ = std::move(action); }
    ActionTarget* target() const { return target_; }
    void setTarget(ActionTarget* target) { target_ = target; }

    Menu* menu() const { return menu_; }

private:
    friend class Menu;
    void changed();

    std::string title_;
    std::optional<Font> titleFont_;
    int tag_ = 0;
    std::any representedObject_;
    int state_ = 0;
    bool enabled_ = true;
    bool separator_ = false;
    std::shared_ptr<Image> image_;
    std::shared_ptr<Menu> submenu_;
    std::string action_;
    ActionTarget* target_ = nullptr;
    Menu* menu_ = nullptr;
};

} // namespace vexto
