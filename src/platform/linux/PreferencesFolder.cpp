#include "platform/linux/PreferencesFolder.hpp"

#include "foundation/DictionaryExtensions.hpp"
#include "foundation/FileSystem.hpp"
#include "foundation/HomeDirectory.hpp"

namespace vexto {

std::string PreferencesFolder::pathForDomain(const std::string& domain)
{
    return FileSystem::join(HomeDirectory::expandTilde("~/Library/Preferences"), domain + ".plist");
}

std::optional<PlistValue> PreferencesFolder::copyAppValue(const std::string& key,
                                                          const std::string& domain)
{
    // A domain is a name, never a path.
    if (domain.empty() || domain.find('/') != std::string::npos || domain.front() == '.') {
        return std::nullopt;
    }
    const auto values = deeplyMutableDictionaryWithContentsOfFile(pathForDomain(domain));
    const PlistValue* value = values ? objectForKey(*values, key) : nullptr;
    return value != nullptr ? std::optional<PlistValue>(*value) : std::nullopt;
}

} // namespace vexto
