#pragma once

#include <functional>
#include <memory>

namespace vexto {

class AccessibilityStatus;
class DescriptorWatcher;
class FontCatalog;
class HotKeyRegistrar;
class ImageDecoder;
class KeyboardLayout;
class ProcessWindows;
class ShortcutOwners;

// What the desktop's libraries (X11, xkbcommon, fontconfig, libtiff) provide, made by the desktop
// module. The module is loaded only when one of them is first needed, so that a start that needs
// none of them (a headless run) does not load those libraries at all.
class DesktopServices {
public:
    virtual ~DesktopServices() = default;

    // The installed fonts.
    virtual const FontCatalog& fonts() = 0;
    // Image files' pixels.
    virtual const ImageDecoder& images() = 0;
    // The desktop's keyboard layout, compiled now.
    virtual std::unique_ptr<KeyboardLayout> keyboardLayout() = 0;
    // The display's hot keys, windows and assistive access.
    virtual HotKeyRegistrar& hotKeys() = 0;
    virtual ProcessWindows& windows() = 0;
    virtual AccessibilityStatus& accessibility() = 0;
    // Who uses a key combination: the window manager's or the desktop's own shortcuts.
    virtual ShortcutOwners& shortcutOwners() = 0;
    // Tells of moves to another virtual desktop while the returned watch lives.
    virtual std::shared_ptr<void> watchDesktops(DescriptorWatcher& loop,
                                                std::function<void()> activeDesktopDidChange) = 0;

    // The module's one instance, loaded on first use from beside the shared runtime; none (and
    // one log line) when it cannot be loaded.
    static DesktopServices* shared();
};

} // namespace vexto
