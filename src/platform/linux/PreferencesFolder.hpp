#pragma once

#include "ports/ForeignPreferences.hpp"

namespace vexto {

// Other applications' preferences as property lists named after their domain in the user's
// ~/Library/Preferences, read-only and afresh at every question. A file that is missing,
// too large or not a dictionary answers nothing.
class PreferencesFolder final : public ForeignPreferences {
public:
    static std::string pathForDomain(const std::string& domain);

    std::optional<PlistValue> copyAppValue(const std::string& key,
                                           const std::string& domain) override;
};

} // namespace vexto
