#pragma once

#include "cycling/HotKeyBinding.hpp"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>
#include <xcb/xcb.h>

namespace vexto {

class LayeredSettings;
class XcbConnection;

// The daemon's hot keys as passive grabs on the root window. Key codes follow the shared
// table from the platform's virtual key codes; Command is Super and Option is Alt, found in the
// server's modifier map. Num Lock never matters, and Caps Lock only where it is not ignored.
class X11KeyGrabs {
public:
    struct Options {
        bool ignoreCapsLock = true;
        // Left and right modifier keys count when a hot key names its sides.
        bool requireExactSides = false;

        static Options fromSettings(const LayeredSettings& settings);
    };

    explicit X11KeyGrabs(XcbConnection& connection);
    ~X11KeyGrabs();
    X11KeyGrabs(const X11KeyGrabs&) = delete;
    X11KeyGrabs& operator=(const X11KeyGrabs&) = delete;

    // Drops the old grabs and takes each binding's; answers the bindings that could not be
    // taken, each with the reason.
    struct Refusal {
        HotKeyBinding binding;
        std::string reason;
    };
    std::vector<Refusal> grab(const std::vector<HotKeyBinding>& bindings, Options options);
    void ungrabAll();
    // The server's keyboard or modifier mapping changed: the masks are read again and every
    // binding is grabbed anew.
    std::vector<Refusal> mappingChanged();

    // The binding a key press of the grabs belongs to; none for a press the grabs do not know
    // or whose modifier sides do not match.
    const HotKeyBinding* bindingFor(xcb_keycode_t key, std::uint16_t state);

    // The platform's modifier word for an X modifier state.
    std::uint64_t modifierFlags(std::uint16_t state) const;
    // The X modifier bits a key sets while down (0 for keys that are no modifiers).
    std::uint16_t modifierMaskOfKey(xcb_keycode_t key) const;
    static std::optional<std::uint16_t> virtualKey(xcb_keycode_t key);

private:
    void readModifierMap();
    std::uint16_t maskOfKeyCode(xcb_keycode_t key, std::uint16_t fallback) const;
    std::uint16_t xModifiers(std::uint64_t flags) const;
    std::vector<std::uint16_t> lockVariants(const HotKeyBinding& binding) const;
    bool sidesMatch(const HotKeyBinding& binding);

    struct Taken {
        xcb_keycode_t key;
        std::uint16_t modifiers;
    };

    XcbConnection& connection_;
    Options options_;
    std::vector<HotKeyBinding> bindings_;
    std::vector<Taken> taken_;
    // For each of the eight X modifiers, the key codes that set it.
    std::array<std::vector<xcb_keycode_t>, 8> modifierKeys_;
    std::uint16_t altMask_ = XCB_MOD_MASK_1;
    std::uint16_t superMask_ = XCB_MOD_MASK_4;
    std::uint16_t numLockMask_ = XCB_MOD_MASK_2;
};

} // namespace vexto
