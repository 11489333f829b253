#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace vexto {

// The icon a program's desktop entry names, for windows that publish no icon of their own: the
// entry whose StartupWMClass is the window's class, else the entry named after the class. The
// entries are read once, from the folders of the XDG base directories, and every file is bounded.
class DesktopEntryIcons {
public:
    // The `applications` folders of $XDG_DATA_HOME and $XDG_DATA_DIRS, in their order of
    // precedence.
    static std::vector<std::string> applicationFolders();

    explicit DesktopEntryIcons(std::vector<std::string> folders = applicationFolders());

    // The Icon value (a theme icon's name or an absolute path), compared without case.
    std::optional<std::string> iconNameFor(const std::string& windowClass);

    // Reading stops at these.
    static constexpr std::size_t mostEntries = 5000;
    static constexpr std::size_t largestEntry = 64 * 1024;

private:
    void readEntries();
    void readEntry(const std::string& path, const std::string& fileName);

    std::vector<std::string> folders_;
    bool read_ = false;
    std::size_t entriesRead_ = 0;
    // Lower-cased StartupWMClass, and lower-cased file name without ".desktop", to the icon;
    // the first folder to name one wins.
    std::map<std::string, std::string> byWindowClass_;
    std::map<std::string, std::string> byFileName_;
};

} // namespace vexto
