#include "platform/linux/ConfiguredShortcutOwners.hpp"

#include "platform/linux/EvdevKeyCodes.hpp"

#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vexto {

namespace {

std::string environment(const char* name)
{
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

// A regular file's text, refused past the bound; none when it cannot be read. A FIFO planted in
// the file's place must not hold the pane, so the file is opened without waiting.
std::optional<std::string> boundedText(const std::string& path, std::size_t largest)
{
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
    if (descriptor < 0) {
        return std::nullopt;
    }
    struct stat status {};
    std::optional<std::string> text;
    if (::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) &&
        static_cast<std::size_t>(status.st_size) <= largest) {
        std::string read(static_cast<std::size_t>(status.st_size), '\0');
        std::size_t got = 0;
        while (got < read.size()) {
            const ssize_t part = ::read(descriptor, read.data() + got, read.size() - got);
            if (part <= 0) {
                break;
            }
            got += static_cast<std::size_t>(part);
        }
        read.resize(got);
        text = std::move(read);
    }
    ::close(descriptor);
    return text;
}

} // namespace

bool ConfiguredShortcutOwners::Stamp::operator==(const Stamp& other) const
{
    return path == other.path && device == other.device && inode == other.inode &&
           size == other.size && modified.tv_sec == other.modified.tv_sec &&
           modified.tv_nsec == other.modified.tv_nsec;
}

std::vector<std::string>
ConfiguredShortcutOwners::xdgConfigurationFiles(const std::string& relative)
{
    std::vector<std::string> files;
    std::string home = environment("XDG_CONFIG_HOME");
    if (home.empty() && !environment("HOME").empty()) {
        home = environment("HOME") + "/.config";
    }
    if (!home.empty()) {
        files.push_back(home + "/" + relative);
    }
    std::string dirs = environment("XDG_CONFIG_DIRS");
    if (dirs.empty()) {
        dirs = "/etc/xdg";
    }
    for (std::size_t at = 0; at <= dirs.size();) {
        const std::size_t colon = std::min(dirs.find(':', at), dirs.size());
        if (colon > at) {
            files.push_back(dirs.substr(at, colon - at) + "/" + relative);
        }
        at = colon + 1;
    }
    return files;
}

ConfiguredShortcutOwners::ConfiguredShortcutOwners(std::string program,
                                                   std::vector<std::string> files, Parser parse,
                                                   KeyOfKeysym keyOf)
    : program_(std::move(program)), files_(std::move(files)), parse_(std::move(parse)),
      keyOf_(std::move(keyOf))
{}

void ConfiguredShortcutOwners::refresh()
{
    // Window managers read the first file that exists; so does this.
    std::optional<Stamp> current;
    for (const std::string& path : files_) {
        struct stat status {};
        if (::stat(path.c_str(), &status) == 0) {
            current = Stamp{path, status.st_dev, status.st_ino, status.st_size, status.st_mtim};
            break;
        }
    }
    if (current == read_) {
        return;
    }
    read_ = current;
    bindings_.reset();
    if (current) {
        if (const auto text = boundedText(current->path, largestFile)) {
            bindings_ = parse_(*text);
        }
    }
}

ShortcutOwner ConfiguredShortcutOwners::ownerOf(std::uint16_t keyCode, unsigned modifiers)
{
    refresh();
    if (!bindings_) {
        return {ShortcutOwner::Answer::Unknown, program_, {}, read_ ? read_->path : ""};
    }
    const auto xKeyCode = EvdevKeyCodes::xKeyCodeForVirtualKey(keyCode);
    if (!xKeyCode) {
        return {};
    }
    for (const ShortcutBinding& binding : *bindings_) {
        if (binding.modifiers == modifiers && keyOf_(binding.keysym) == *xKeyCode) {
            return {ShortcutOwner::Answer::Taken, program_, binding.action, read_->path};
        }
    }
    return {};
}

} // namespace vexto
