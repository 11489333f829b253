#pragma once

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
        const auto value = found->second.find(key);
        return value != found->second.end() ? std::optional<PlistValue>(value->second)
                                            : std::nullopt;
    }

    std::map<std::string, PlistDictionary> domains;
    int reads = 0;
};

} // namespace vexto
