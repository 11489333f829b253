#pragma once

#include "platform/linux/ConfiguredShortcutOwners.hpp"
#include "platform/linux/EwmhProcessWindows.hpp"
#include "platform/linux/GnomeShortcutOwners.hpp"
#include "ports/ShortcutOwners.hpp"

#include <memory>
#include <string>
#include <string_view>
#include <utility>

struct _XDisplay;

namespace vexto {

// The shortcut owners of the session the pane runs in, chosen when asked: on a GNOME desktop
// (X11 or Wayland) its GSettings name them, on KDE Plasma its global shortcut service (else its
// kglobalshortcutsrc); on X11 under
// Openbox, i3 or Xfwm their configuration does; in another Wayland session the compositor's keys
// cannot be asked for (Unknown); under another X11 window manager the display's grab probe speaks
// alone (Free).
class DesktopShortcutOwners final : public ShortcutOwners {
public:
    // Asks `windows` which window manager runs; the keymap is the named display's (empty:
    // $DISPLAY).
    explicit DesktopShortcutOwners(EwmhProcessWindows& windows,
                                   const std::string& displayName = {});
    ~DesktopShortcutOwners() override;
    DesktopShortcutOwners(const DesktopShortcutOwners&) = delete;
    DesktopShortcutOwners& operator=(const DesktopShortcutOwners&) = delete;

    ShortcutOwner ownerOf(std::uint16_t keyCode, unsigned modifiers) override;

    // XDG_CURRENT_DESKTOP names this desktop among its own ("GNOME", "KDE").
    static bool isDesktop(std::string_view name);

private:
    // The X key code a keysym is on in the server's keymap (Xwayland's in a Wayland session).
    std::optional<unsigned> keyOfKeysym(const std::string& keysym) const;
    // The keysym name on a key, unshifted.
    std::optional<std::string> keysymOfKey(unsigned xKeyCode) const;

    EwmhProcessWindows& windows_;
    _XDisplay* display_ = nullptr;
    // The window manager last seen, and its configuration's owners (none where it has none
    // that is read).
    std::pair<std::string, std::unique_ptr<ConfiguredShortcutOwners>> configured_;
    std::unique_ptr<GnomeShortcutOwners> gnome_;
    std::unique_ptr<ShortcutOwners> kde_;
};

} // namespace vexto
