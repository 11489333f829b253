#pragma once

#include "foundation/DictionaryExtensions.hpp"
#include "ports/ForeignPreferences.hpp"

#include <map>

namespace vexto {

// Other applications' preferences as the test writes them, domain by domain; counts the reads.
class FakeForeignPreferences final : public ForeignPreferences {
public:
    std::optional<PlistValue> copyAppValue(const std::string& key,
                                           const std::string& domain) override
    {
        ++reads;
        const auto found = domains.find(domain);
        if (found == domains.end()) {
            return std::nullopt;
        }
        const PlistValue* value = objectForKey(found->second, key);
        return value != nullptr ? std::optional<PlistValue>(*value) : std::nullopt;
    }

    std::map<std::string, PlistDictionary> domains;
    int reads = 0;
};

} // namespace vexto
