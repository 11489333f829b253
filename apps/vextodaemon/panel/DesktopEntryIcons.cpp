#include "panel/DesktopEntryIcons.hpp"

#include "foundation/FileSystem.hpp"
#include "foundation/HomeDirectory.hpp"
#include "foundation/StringExtensions.hpp"
#include "foundation/TextEncoding.hpp"
#include "foundation/XdgBaseDirectories.hpp"

#include <algorithm>
#include <string_view>

namespace vexto {

namespace {

// The value of `key=` in the [Desktop Entry] group, unlocalised; none where it is absent.
struct Entry {
    std::string icon;
    std::string windowClass;
};

Entry parse(std::string_view text)
{
    Entry entry;
    bool inMainGroup = false;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        std::string_view line = text.substr(0, end);
        text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
        if (!line.empty() && line.back() == '\r') {
            line.remove_suffix(1);
        }
        if (line.starts_with('[')) {
            inMainGroup = line == "[Desktop Entry]";
            continue;
        }
        if (!inMainGroup) {
            continue;
        }
        const std::size_t equals = line.find('=');
        if (equals == std::string_view::npos) {
            continue;
        }
        std::string_view key = line.substr(0, equals);
        while (!key.empty() && key.back() == ' ') {
            key.remove_suffix(1);
        }
        std::string_view value = line.substr(equals + 1);
        while (!value.empty() && value.front() == ' ') {
            value.remove_prefix(1);
        }
        if (key == "Icon" && entry.icon.empty()) {
            entry.icon = value;
        } else if (key == "StartupWMClass" && entry.windowClass.empty()) {
            entry.windowClass = value;
        }
    }
    return entry;
}

} // namespace

std::vector<std::string> DesktopEntryIcons::applicationFolders()
{
    std::vector<std::string> folders;
    for (const std::string& data : XdgBaseDirectories::dataFolders()) {
        folders.push_back(FileSystem::join(data, "applications"));
    }
    return folders;
}

DesktopEntryIcons::DesktopEntryIcons(std::vector<std::string> folders)
    : folders_(std::move(folders))
{}

std::optional<std::string> DesktopEntryIcons::iconNameFor(const std::string& windowClass)
{
    if (windowClass.empty()) {
        return std::nullopt;
    }
    if (!read_) {
        readEntries();
    }
    const std::string key = asciiLowercased(windowClass);
    for (const auto* table : {&byWindowClass_, &byFileName_}) {
        const auto found = table->find(key);
        if (found != table->end()) {
            return found->second;
        }
    }
    return std::nullopt;
}

void DesktopEntryIcons::readEntries()
{
    read_ = true;
    for (const std::string& folder : folders_) {
        std::vector<std::string> names = FileSystem::namesInFolder(folder);
        std::sort(names.begin(), names.end());
        for (const std::string& name : names) {
            if (entriesRead_ >= mostEntries) {
                return;
            }
            if (name.ends_with(".desktop")) {
                readEntry(FileSystem::join(folder, name), name);
            }
        }
    }
}

void DesktopEntryIcons::readEntry(const std::string& path, const std::string& fileName)
{
    ++entriesRead_;
    const auto bytes = FileSystem::readFile(path, largestEntry);
    if (!bytes) {
        return;
    }
    const std::string_view text(reinterpret_cast<const char*>(bytes->data()), bytes->size());
    if (!TextEncoding::isValidUtf8(text)) {
        return;
    }
    const Entry entry = parse(text);
    if (entry.icon.empty()) {
        return;
    }
    if (!entry.windowClass.empty()) {
        byWindowClass_.emplace(asciiLowercased(entry.windowClass), entry.icon);
    }
    byFileName_.emplace(asciiLowercased(fileName.substr(0, fileName.size() - 8)), entry.icon);
}

} // namespace vexto
