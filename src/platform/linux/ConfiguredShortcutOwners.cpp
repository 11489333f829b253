#include "platform/linux/ConfiguredShortcutOwners.hpp"

#include "foundation/FileSystem.hpp"
#include "foundation/XdgBaseDirectories.hpp"
#include "platform/linux/EvdevKeyCodes.hpp"

#include <sys/stat.h>

namespace vexto {

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
    for (const std::string& folder : XdgBaseDirectories::configFolders()) {
        files.push_back(FileSystem::join(folder, relative));
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
        // A FIFO planted in the file's place is refused without waiting.
        if (const auto bytes = FileSystem::readFile(current->path, largestFile)) {
            bindings_ = parse_(
                std::string_view(reinterpret_cast<const char*>(bytes->data()), bytes->size()));
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
