#include "foundation/Bundle.hpp"

#include "foundation/DictionaryExtensions.hpp"
#include "foundation/FileSystem.hpp"
#include "foundation/Localization.hpp"
#include "foundation/Log.hpp"

#include <algorithm>
#include <set>

namespace vexto {

Bundle::Bundle(std::string path) : path_(std::move(path)) {}

std::string Bundle::resourcePath() const
{
    return FileSystem::join(FileSystem::join(path_, "Contents"), "Resources");
}

namespace {

// Said once per file and process: the information is read afresh at every question.
void reportUnusableInformation(const std::string& path, const std::string& problem)
{
    static std::set<std::string> reported;
    if (reported.insert(path).second) {
        Log::fileNotUsed(path, problem, "the bundle's name, version and executable are unknown");
    }
}

} // namespace

std::optional<PlistDictionary> Bundle::uncachedPreferencePaneInfo() const
{
    const std::string path = FileSystem::join(FileSystem::join(path_, "Contents"), "Info.plist");
    std::string problem;
    auto info = deeplyMutableDictionaryWithContentsOfFile(path, &problem);
    if (!info && FileSystem::exists(path)) {
        reportUnusableInformation(path, problem);
    }
    return info;
}

std::vector<std::string> Bundle::pathsForResourcesOfType(std::string_view type) const
{
    const std::string suffix = "." + std::string(type);
    std::vector<std::string> paths;
    for (const std::string& name : FileSystem::namesInFolder(resourcePath())) {
        if (name.size() > suffix.size() && name.ends_with(suffix)) {
            paths.push_back(FileSystem::join(resourcePath(), name));
        }
    }
    std::sort(paths.begin(), paths.end());
    return paths;
}

std::optional<std::string> Bundle::infoString(std::string_view key) const
{
    const auto info = uncachedPreferencePaneInfo();
    const PlistValue* value = info ? objectForKey(*info, key) : nullptr;
    if (value == nullptr || !value->isString()) {
        return std::nullopt;
    }
    return *value->asString();
}

std::string Bundle::pathForUncachedPreferencePaneResourceFile(std::string_view name) const
{
    return FileSystem::join(resourcePath(), std::string(name));
}

const StringsTable* Bundle::stringsTable(std::string_view table) const
{
    auto found = tables_.find(table);
    if (found == tables_.end()) {
        std::optional<StringsTable> loaded;
        for (const std::string& folder : Localization::preferredLocalizationFolders()) {
            const std::string path = FileSystem::join(FileSystem::join(resourcePath(), folder),
                                                      std::string(table) + ".strings");
            std::string problem;
            loaded = StringsTable::load(path, &problem);
            if (loaded) {
                break;
            }
            if (FileSystem::exists(path)) {
                Log::fileNotUsed(path, problem, "its texts are not shown");
            }
        }
        found = tables_.emplace(std::string(table), std::move(loaded)).first;
    }
    return found->second ? &*found->second : nullptr;
}

std::string Bundle::localizedString(std::string_view key, std::string_view value,
                                    std::string_view table) const
{
    const StringsTable* strings = stringsTable(table);
    const std::string* text = strings != nullptr ? strings->find(key) : nullptr;
    if (text == nullptr && !key.empty()) {
        Localization::noteMissingTranslation(key);
    }
    const std::string_view found = text != nullptr ? std::string_view(*text)
                                   : value.empty() ? key
                                                   : value;
    return Localization::isPseudoLocale() ? Localization::pseudoLocalized(found)
                                          : std::string(found);
}

} // namespace vexto
