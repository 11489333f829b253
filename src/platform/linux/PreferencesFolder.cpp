#include "platform/linux/PreferencesFolder.hpp"

#include "foundation/FileSystem.hpp"
#include "foundation/HomeDirectory.hpp"
#include "foundation/PropertyListCodec.hpp"

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
    const auto read = PropertyListCodec::readFile(pathForDomain(domain));
    const PlistDictionary* values = read.value ? read.value->asDictionary() : nullptr;
    if (values == nullptr) {
        return std::nullopt;
    }
    const auto found = values->find(key);
    return found != values->end() ? std::optional<PlistValue>(found->second) : std::nullopt;
}

} // namespace vexto
