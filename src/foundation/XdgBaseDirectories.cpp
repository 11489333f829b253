#include "foundation/XdgBaseDirectories.hpp"

#include "foundation/HomeDirectory.hpp"
#include "foundation/StringExtensions.hpp"

#include <cstdlib>

namespace vexto {

namespace {

std::vector<std::string> folders(const char* homeVariable, const char* usualHome,
                                 const char* dirsVariable, const char* usualDirs)
{
    const char* home = std::getenv(homeVariable);
    std::vector<std::string> found = {home != nullptr && home[0] == '/'
                                          ? std::string(home)
                                          : HomeDirectory::expandTilde(usualHome)};
    const char* dirs = std::getenv(dirsVariable);
    for (const std::string_view dir :
         splitString(dirs != nullptr && *dirs != '\0' ? dirs : usualDirs, ':')) {
        if (!dir.empty() && dir.front() == '/') {
            found.emplace_back(dir);
        }
    }
    return found;
}

} // namespace

std::vector<std::string> XdgBaseDirectories::dataFolders()
{
    return folders("XDG_DATA_HOME", "~/.local/share", "XDG_DATA_DIRS",
                   "/usr/local/share:/usr/share");
}

std::vector<std::string> XdgBaseDirectories::configFolders()
{
    return folders("XDG_CONFIG_HOME", "~/.config", "XDG_CONFIG_DIRS", "/etc/xdg");
}

} // namespace vexto
