#include "platform/linux/DesktopShortcutOwners.hpp"

#include "foundation/StringExtensions.hpp"
#include "platform/linux/I3KeyBindings.hpp"
#include "platform/linux/KdeGlobalAccelOwners.hpp"
#include "platform/linux/KdeKeyBindings.hpp"
#include "platform/linux/OpenboxKeyBindings.hpp"
#include "platform/linux/WaylandSession.hpp"
#include "platform/linux/XfceKeyBindings.hpp"

#include <X11/XKBlib.h>
#include <X11/Xlib.h>
#include <algorithm>
#include <cstdlib>
#include <string_view>

namespace vexto {

DesktopShortcutOwners::DesktopShortcutOwners(EwmhProcessWindows& windows,
                                             const std::string& displayName)
    : windows_(windows)
{
    display_ = XOpenDisplay(displayName.empty() ? nullptr : displayName.c_str());
}

bool DesktopShortcutOwners::isDesktop(std::string_view name)
{
    const char* desktops = std::getenv("XDG_CURRENT_DESKTOP");
    const auto names = splitString(desktops != nullptr ? desktops : "", ':');
    return std::find(names.begin(), names.end(), name) != names.end();
}

std::optional<unsigned> DesktopShortcutOwners::keyOfKeysym(const std::string& keysym) const
{
    if (display_ == nullptr) {
        return std::nullopt;
    }
    const KeySym symbol = XStringToKeysym(keysym.c_str());
    const KeyCode code = symbol != NoSymbol ? XKeysymToKeycode(display_, symbol) : 0;
    return code != 0 ? std::optional<unsigned>(code) : std::nullopt;
}

DesktopShortcutOwners::~DesktopShortcutOwners()
{
    if (display_ != nullptr) {
        XCloseDisplay(display_);
    }
}

std::optional<std::string> DesktopShortcutOwners::keysymOfKey(unsigned xKeyCode) const
{
    if (display_ == nullptr || xKeyCode > 255) {
        return std::nullopt;
    }
    const KeySym symbol = XkbKeycodeToKeysym(display_, static_cast<KeyCode>(xKeyCode), 0, 0);
    const char* name = symbol != NoSymbol ? XKeysymToString(symbol) : nullptr;
    return name != nullptr ? std::optional<std::string>(name) : std::nullopt;
}

ShortcutOwner DesktopShortcutOwners::ownerOf(std::uint16_t keyCode, unsigned modifiers)
{
    const auto keyOf = [this](const std::string& keysym) {
        return keyOfKeysym(keysym);
    };
    if (isDesktop("KDE") && display_ != nullptr) {
        if (!kde_) {
            kde_ = std::make_unique<KdeGlobalAccelOwners>(
                [this](unsigned key) { return keysymOfKey(key); },
                std::make_unique<ConfiguredShortcutOwners>(
                    "KDE", KdeKeyBindings::configurationFiles(), &KdeKeyBindings::parse, keyOf));
        }
        return kde_->ownerOf(keyCode, modifiers);
    }
    if (isDesktop("GNOME") && display_ != nullptr) {
        if (!gnome_) {
            gnome_ = std::make_unique<GnomeShortcutOwners>(keyOf);
        }
        return gnome_->ownerOf(keyCode, modifiers);
    }
    if (WaylandSession::isCurrent() || display_ == nullptr) {
        return {ShortcutOwner::Answer::Unknown, {}, {}, {}};
    }
    // The window manager's own configuration, read by the program that names itself so.
    const std::string manager = windows_.windowManagerName();
    if (manager != configured_.first) {
        configured_.first = manager;
        configured_.second.reset();
        if (manager == "Openbox") {
            configured_.second = std::make_unique<ConfiguredShortcutOwners>(
                "Openbox", OpenboxKeyBindings::configurationFiles(), &OpenboxKeyBindings::parse,
                keyOf);
        } else if (manager == "i3") {
            configured_.second = std::make_unique<ConfiguredShortcutOwners>(
                "i3", I3KeyBindings::configurationFiles(), &I3KeyBindings::parse, keyOf);
        } else if (manager == "Xfwm4") {
            configured_.second = std::make_unique<ConfiguredShortcutOwners>(
                "Xfce", XfceKeyBindings::configurationFiles(), &XfceKeyBindings::parse, keyOf);
        }
    }
    return configured_.second ? configured_.second->ownerOf(keyCode, modifiers) : ShortcutOwner{};
}

} // namespace vexto
