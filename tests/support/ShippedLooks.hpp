#pragma once

#include "foundation/DictionaryExtensions.hpp"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace vexto::test {

// The looks the sample panel is tried in: the built-in one (no settings at all) and each preset
// the pane bundle ships.
inline auto shippedLooks()
{
    return ::testing::Values(std::string(), std::string("Graphite"), std::string("Daylight"),
                             std::string("High Contrast"));
}

// "Defaults", or the preset's name without its spaces.
inline std::string lookTestName(const ::testing::TestParamInfo<std::string>& info)
{
    std::string name = info.param.empty() ? "Defaults" : info.param;
    std::erase(name, ' ');
    return name;
}

// The look's settings: empty for the built-in one, else the preset file in the bundle; none when
// that cannot be read.
inline std::optional<PlistDictionary> lookSettings(const std::string& bundle,
                                                   const std::string& look)
{
    if (look.empty()) {
        return PlistDictionary{};
    }
    return deeplyMutableDictionaryWithContentsOfFile(bundle + "/Contents/Resources/" + look +
                                                     ".vextolayout");
}

} // namespace vexto::test
