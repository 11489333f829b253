#pragma once

#include "platform/linux/OpenboxKeyBindings.hpp"
#include "ports/ShortcutOwners.hpp"

#include <ctime>
#include <functional>
#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace vexto {

// Openbox's key bindings, from the first of its configuration files that exists (the user's,
// then the system's), read once and again only when the file changes. A keysym is compared
// through the key it is on, as Openbox grabs it, so the layout decides as it does for Openbox.
class OpenboxShortcutOwners final : public ShortcutOwners {
public:
    // The X key code a keysym name is on; none for a name the keymap lacks.
    using KeyOfKeysym = std::function<std::optional<unsigned>(const std::string& keysym)>;

    // $XDG_CONFIG_HOME/openbox/rc.xml (else ~/.config), then each of $XDG_CONFIG_DIRS (else
    // /etc/xdg).
    static std::vector<std::string> configurationFiles();

    OpenboxShortcutOwners(std::vector<std::string> files, KeyOfKeysym keyOf);

    // Taken with the action's name; Unknown where no file can be read or understood.
    ShortcutOwner ownerOf(std::uint16_t keyCode, unsigned modifiers) override;

private:
    struct Stamp {
        std::string path;
        dev_t device = 0;
        ino_t inode = 0;
        off_t size = -1;
        timespec modified{};
        bool operator==(const Stamp& other) const;
    };
    // Reads the bindings again when another file is in force or the file changed.
    void refresh();

    std::vector<std::string> files_;
    KeyOfKeysym keyOf_;
    std::optional<Stamp> read_;
    std::optional<std::vector<OpenboxKeyBindings::Binding>> bindings_;
};

} // namespace vexto
