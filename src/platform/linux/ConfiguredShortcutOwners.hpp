#pragma once

#include "platform/linux/ShortcutBinding.hpp"
#include "ports/ShortcutOwners.hpp"

#include <ctime>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <vector>

namespace vexto {

// A window manager's key bindings from its configuration file: the first of its files that
// exists (the user's, then the system's), read once and again only when it changes, at most
// `largestFile` bytes. A keysym is compared through the key it is on, as the window manager
// grabs it, so the layout decides as it does for the window manager.
class ConfiguredShortcutOwners final : public ShortcutOwners {
public:
    // The bindings a configuration's text holds; none for a text that is no usable one.
    using Parser =
        std::function<std::optional<std::vector<ShortcutBinding>>(std::string_view text)>;

    static constexpr std::size_t largestFile = 1024 * 1024;

    // `relative` under each of the XDG configuration folders, the user's first.
    static std::vector<std::string> xdgConfigurationFiles(const std::string& relative);

    ConfiguredShortcutOwners(std::string program, std::vector<std::string> files, Parser parse,
                             KeyOfKeysym keyOf);

    // Taken with the binding's action; Unknown where no file can be read or understood.
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

    std::string program_;
    std::vector<std::string> files_;
    Parser parse_;
    KeyOfKeysym keyOf_;
    std::optional<Stamp> read_;
    std::optional<std::vector<ShortcutBinding>> bindings_;
};

} // namespace vexto
