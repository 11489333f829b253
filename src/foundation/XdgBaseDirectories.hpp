#pragma once

#include <string>
#include <vector>

namespace vexto {

// The folders where desktop programs keep their data and configuration, as the XDG base
// directory rules name them: the user's own first, then the system's in their order. Relative
// entries are passed over, as the rules say.
class XdgBaseDirectories {
public:
    // $XDG_DATA_HOME (else ~/.local/share), then $XDG_DATA_DIRS (else /usr/local/share and
    // /usr/share).
    static std::vector<std::string> dataFolders();
    // $XDG_CONFIG_HOME (else ~/.config), then $XDG_CONFIG_DIRS (else /etc/xdg).
    static std::vector<std::string> configFolders();
};

} // namespace vexto
