#include "foundation/HomeDirectory.hpp"

#include <cstdlib>
#include <optional>
#include <pwd.h>
#include <unistd.h>

namespace vexto {

namespace {

std::optional<std::string>& overridePath()
{
    static std::optional<std::string> path;
    return path;
}

} // namespace

std::string HomeDirectory::path()
{
    if (overridePath()) {
        return *overridePath();
    }
    if (const char* home = std::getenv("HOME"); home != nullptr && *home != '\0') {
        return home;
    }
    if (const passwd* entry = ::getpwuid(::getuid());
        entry != nullptr && entry->pw_dir != nullptr) {
        return entry->pw_dir;
    }
    return "/";
}

void HomeDirectory::setOverride(std::string path)
{
    overridePath() = std::move(path);
}

void HomeDirectory::clearOverride()
{
    overridePath().reset();
}

std::string HomeDirectory::expandTilde(const std::string& path)
{
    if (path == "~") {
        return HomeDirectory::path();
    }
    if (path.starts_with("~/")) {
        std::string home = HomeDirectory::path();
        while (home.size() > 1 && home.back() == '/') {
            home.pop_back();
        }
        return (home == "/" ? "" : home) + path.substr(1);
    }
    return path;
}

} // namespace vexto
