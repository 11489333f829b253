#pragma once

#include <cstdint>
#include <string>

namespace vexto {

// What the desktop says of one key combination: nobody uses it, somebody does (and who, for
// what, and where that is set), or it cannot be asked.
struct ShortcutOwner {
    enum class Answer { Free, Taken, Unknown };

    Answer answer = Answer::Free;
    std::string program;      // "Openbox"
    std::string action;       // "NextWindow"
    std::string configuredIn; // the file or service that says so

    bool operator==(const ShortcutOwner&) const = default;
};

// The window manager's and the desktop's own shortcuts, as their settings name them. A probe
// of the display tells only that a key is held; this tells by whom, and also where no probe can
// see (a Wayland compositor's keys).
class ShortcutOwners {
public:
    virtual ~ShortcutOwners() = default;
    // The modifiers of a combination, as desktops name them (Option is Alt, Command is Super).
    enum Modifier : unsigned { shift = 1, control = 2, alt = 4, super = 8 };

    // The combination of the platform's virtual key code and `Modifier` bits.
    virtual ShortcutOwner ownerOf(std::uint16_t keyCode, unsigned modifiers) = 0;
};

} // namespace vexto
