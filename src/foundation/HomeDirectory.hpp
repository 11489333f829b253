#pragma once

#include <string>

namespace vexto {

// The user's home folder, against which "~" expands. Tests point it at a temporary folder.
class HomeDirectory {
public:
    // The override when set, else $HOME, else the password database's entry for the user.
    static std::string path();
    static void setOverride(std::string path);
    static void clearOverride();

    // "~" and "~/..." expand against path(); any other path is returned as it is.
    static std::string expandTilde(const std::string& path);
};

} // namespace vexto
