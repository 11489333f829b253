#include "platform/linux/X11HotKeyRegistrar.hpp"

#include "platform/linux/EvdevKeyCodes.hpp"

#include <X11/Xlib.h>
#include <X11/keysym.h>

namespace vexto {

namespace {

// Xlib reports errors asynchronously to one process-wide handler: while a probe runs, a refused
// grab is noted here instead of ending the process.
bool grabRefused = false;

int noteRefusal(Display*, XErrorEvent* error)
{
    if (error->error_code == BadAccess) {
        grabRefused = true;
    }
    return 0;
}

unsigned xModifiers(std::uint32_t carbon)
{
    unsigned mask = 0;
    mask |= (carbon & 0x0100) != 0 ? Mod4Mask : 0;    // Command
    mask |= (carbon & 0x0800) != 0 ? Mod1Mask : 0;    // Option
    mask |= (carbon & 0x1000) != 0 ? ControlMask : 0; // Control
    mask |= (carbon & 0x0200) != 0 ? ShiftMask : 0;   // Shift
    return mask;
}

} // namespace

X11HotKeyRegistrar::X11HotKeyRegistrar(const std::string& displayName)
{
    display_ = XOpenDisplay(displayName.empty() ? nullptr : displayName.c_str());
}

X11HotKeyRegistrar::~X11HotKeyRegistrar()
{
    if (display_ != nullptr) {
        XCloseDisplay(display_);
    }
}

// Every lock state a press may come with: none, Caps Lock, Num Lock, both.
X11HotKeyRegistrar::LockVariants X11HotKeyRegistrar::lockVariants() const
{
    const unsigned numLock = numLockMask();
    return {0u, LockMask, numLock, LockMask | numLock};
}

unsigned X11HotKeyRegistrar::numLockMask() const
{
    unsigned mask = 0;
    XModifierKeymap* map = XGetModifierMapping(display_);
    const KeyCode numLock = XKeysymToKeycode(display_, XK_Num_Lock);
    for (int modifier = 0; map != nullptr && numLock != 0 && modifier < 8; ++modifier) {
        for (int i = 0; i < map->max_keypermod; ++i) {
            if (map->modifiermap[modifier * map->max_keypermod + i] == numLock) {
                mask = 1u << modifier;
            }
        }
    }
    if (map != nullptr) {
        XFreeModifiermap(map);
    }
    return mask;
}

void X11HotKeyRegistrar::ungrab(const Grab& grab, const LockVariants& locks, std::size_t count)
{
    for (std::size_t i = 0; i < count && i < locks.size(); ++i) {
        XUngrabKey(display_, grab.keyCode, grab.modifiers | locks[i], DefaultRootWindow(display_));
    }
    XSync(display_, False);
}

bool X11HotKeyRegistrar::registerHotKey(std::uint16_t keyCode, std::uint32_t carbonModifiers,
                                        std::uint32_t identifier)
{
    if (display_ == nullptr) {
        return true;
    }
    const auto xKeyCode = EvdevKeyCodes::xKeyCodeForVirtualKey(keyCode);
    if (!xKeyCode || *xKeyCode > 255) {
        return false; // a key X11 cannot name cannot be held by the daemon either
    }
    const Grab grab{static_cast<int>(*xKeyCode), xModifiers(carbonModifiers)};
    const LockVariants locks = lockVariants();
    XSync(display_, False);
    const auto previous = XSetErrorHandler(noteRefusal);
    std::size_t grabbed = 0;
    bool refused = false;
    for (unsigned lock : locks) {
        grabRefused = false;
        XGrabKey(display_, grab.keyCode, grab.modifiers | lock, DefaultRootWindow(display_), False,
                 GrabModeAsync, GrabModeAsync);
        XSync(display_, False);
        if (grabRefused) {
            refused = true;
            break;
        }
        ++grabbed;
    }
    XSetErrorHandler(previous);
    if (refused) {
        ungrab(grab, locks, grabbed);
        return false;
    }
    grabs_[identifier] = grab;
    return true;
}

void X11HotKeyRegistrar::unregisterHotKey(std::uint32_t identifier)
{
    const auto found = grabs_.find(identifier);
    if (display_ == nullptr || found == grabs_.end()) {
        return;
    }
    const LockVariants locks = lockVariants();
    ungrab(found->second, locks, locks.size());
    grabs_.erase(found);
}

} // namespace vexto
