#include "settings/SettingsFileRecovery.hpp"

#include "foundation/FileSystem.hpp"
#include "foundation/Log.hpp"

#include <algorithm>
#include <vector>

namespace vexto {

namespace {

constexpr std::string_view damagedInfix = ".damaged-";

std::string nameOf(const std::string& path)
{
    const auto slash = path.rfind('/');
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

bool isTemporaryName(std::string_view name, std::string_view settingsName)
{
    if (name.size() != settingsName.size() + 7 || !name.starts_with(settingsName) ||
        name[settingsName.size()] != '.') {
        return false;
    }
    return std::all_of(name.end() - 6, name.end(), [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
    });
}

std::string timestamp(std::time_t now)
{
    std::tm local{};
    ::localtime_r(&now, &local);
    char text[32];
    std::strftime(text, sizeof text, "%Y%m%d-%H%M%S", &local);
    return text;
}

// Newest first: the names carry their time, so their order is their age.
void removeAllButTheNewest(const std::string& folder, const std::string& prefix, std::size_t kept)
{
    std::vector<std::string> damaged;
    for (std::string& name : FileSystem::namesInFolder(folder)) {
        if (name.starts_with(prefix)) {
            damaged.push_back(std::move(name));
        }
    }
    std::sort(damaged.begin(), damaged.end(), std::greater<>());
    for (std::size_t i = kept; i < damaged.size(); ++i) {
        FileSystem::removeFile(FileSystem::join(folder, damaged[i]));
    }
}

} // namespace

namespace {

void removeTemporariesBeside(const std::string& path)
{
    const std::string folder = FileSystem::folderOf(path);
    const std::string settingsName = nameOf(path);
    for (const std::string& name : FileSystem::namesInFolder(folder)) {
        if (isTemporaryName(name, settingsName)) {
            FileSystem::removeFile(FileSystem::join(folder, name));
        }
    }
}

} // namespace

void SettingsFileRecovery::removeLeftoversOfInterruptedSaves(const std::string& settingsPath)
{
    removeTemporariesBeside(settingsPath);
    // Saves through a link write their temporary file beside the file the link ends at.
    const auto end = FileSystem::endOfLinks(settingsPath);
    if (end && *end != settingsPath) {
        removeTemporariesBeside(*end);
    }
}

std::optional<std::string> SettingsFileRecovery::keepAside(const std::string& settingsPath,
                                                           std::string_view reason, std::time_t now)
{
    const std::string folder = FileSystem::folderOf(settingsPath);
    const std::string prefix = nameOf(settingsPath) + std::string(damagedInfix);
    std::string name = prefix + timestamp(now);
    for (int again = 2; FileSystem::exists(FileSystem::join(folder, name)); ++again) {
        name = prefix + timestamp(now) + "-" + std::to_string(again);
    }
    if (!FileSystem::moveFile(settingsPath, FileSystem::join(folder, name))) {
        Log::line("settings file could not be used (" + std::string(reason) +
                  ") and could not be kept aside; it stays as it is");
        return std::nullopt;
    }
    Log::line("settings file could not be used (" + std::string(reason) + "); kept it as " + name);
    removeAllButTheNewest(folder, prefix, keptDamagedFiles);
    return FileSystem::join(folder, name);
}

} // namespace vexto
