#pragma once

#include "ports/KeyboardLayout.hpp"

#include <memory>
#include <string>

struct xkb_context;
struct xkb_keymap;
struct xkb_state;

namespace vexto {

// The keyboard layout through libxkbcommon: a keymap compiled once, read for the key's unshifted
// character (not the live state, so Caps Lock does not change labels; with Num Lock for the
// keypad). On ISO keyboards (pc102, pc105) the platform's codes 0x0A and 0x32 name each other's
// keys, so recorded codes mean the same physical key as on the original platform.
class XkbKeyboardLayout final : public KeyboardLayout {
public:
    struct Names {
        std::string model;
        std::string layout;
        std::string variant;
        std::string options;
    };

    // From rule names; empty names take libxkbcommon's own defaults (XKB_DEFAULT_*).
    static std::unique_ptr<XkbKeyboardLayout> fromNames(const Names& names);
    // The desktop's layout: XKB_DEFAULT_* when set, else the system's keyboard file, else "us".
    static constexpr const char* systemKeyboardFile = "/etc/default/keyboard";
    static std::unique_ptr<XkbKeyboardLayout>
    fromEnvironment(const std::string& keyboardFile = systemKeyboardFile);
    // The layout in force on the X server (empty name: $DISPLAY); none without one.
    static std::unique_ptr<XkbKeyboardLayout> fromXServer(const std::string& displayName = {});
    // The X server's when there is one, else the environment's.
    static std::unique_ptr<XkbKeyboardLayout> forDesktop();

    ~XkbKeyboardLayout() override;
    XkbKeyboardLayout(const XkbKeyboardLayout&) = delete;
    XkbKeyboardLayout& operator=(const XkbKeyboardLayout&) = delete;

    std::optional<char16_t> characterForKeyCode(std::uint16_t keyCode) const override;

private:
    XkbKeyboardLayout(xkb_context* context, xkb_keymap* keymap, bool iso, unsigned layoutIndex = 0);

    xkb_context* context_;
    xkb_keymap* keymap_;
    xkb_state* numLockState_;
    bool iso_;
    unsigned layout_; // the group in force, for a keymap with several
};

} // namespace vexto
