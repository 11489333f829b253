#pragma once

#include "foundation/Color.hpp"
#include "foundation/PlistValue.hpp"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vexto {

// The user's settings over the shipped defaults, as the daemon reads them: each key's value is
// the first layer's that is usable, so that a value of the wrong kind reads as absent. Both
// dictionaries must outlive this view.
class LayeredSettings {
public:
    LayeredSettings(const PlistDictionary& settings, const PlistDictionary& defaults)
        : settings_(settings), defaults_(defaults)
    {}

    // Any value that answers as a boolean (numbers and strings too).
    bool flag(std::string_view key, bool fallback) const;
    // A finite number.
    std::optional<double> number(std::string_view key) const;
    std::optional<std::int64_t> integer(std::string_view key) const;
    const std::string* string(std::string_view key) const;
    const PlistDictionary* dictionary(std::string_view key) const;
    const PlistArray* array(std::string_view key) const;
    // From the colour's archived data.
    std::optional<Color> color(std::string_view key) const;
    Color color(std::string_view key, const Color& fallback) const
    {
        return color(key).value_or(fallback);
    }

private:
    template <typename Usable> const PlistValue* value(std::string_view key, Usable usable) const;

    const PlistDictionary& settings_;
    const PlistDictionary& defaults_;
};

} // namespace vexto
