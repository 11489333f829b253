#include "settings/LayeredSettings.hpp"

#include "foundation/DictionaryExtensions.hpp"

#include <cmath>

namespace vexto {

template <typename Usable>
const PlistValue* LayeredSettings::value(std::string_view key, Usable usable) const
{
    for (const PlistDictionary* layer : {&settings_, &defaults_}) {
        const PlistValue* found = objectForKey(*layer, key);
        if (found != nullptr && usable(*found)) {
            return found;
        }
    }
    return nullptr;
}

bool LayeredSettings::flag(std::string_view key, bool fallback) const
{
    const PlistValue* found =
        value(key, [](const PlistValue& v) { return v.boolValue().has_value(); });
    return found != nullptr ? *found->boolValue() : fallback;
}

std::optional<double> LayeredSettings::number(std::string_view key) const
{
    const PlistValue* found = value(key, [](const PlistValue& v) {
        return v.isNumber() && std::isfinite(v.doubleValue().value_or(NAN));
    });
    return found != nullptr ? found->doubleValue() : std::nullopt;
}

std::optional<std::int64_t> LayeredSettings::integer(std::string_view key) const
{
    const PlistValue* found = value(key, [](const PlistValue& v) { return v.isNumber(); });
    return found != nullptr ? found->integerValue() : std::nullopt;
}

const std::string* LayeredSettings::string(std::string_view key) const
{
    const PlistValue* found = value(key, [](const PlistValue& v) { return v.isString(); });
    return found != nullptr ? found->asString() : nullptr;
}

const PlistDictionary* LayeredSettings::dictionary(std::string_view key) const
{
    const PlistValue* found = value(key, [](const PlistValue& v) { return v.isDictionary(); });
    return found != nullptr ? found->asDictionary() : nullptr;
}

const PlistArray* LayeredSettings::array(std::string_view key) const
{
    const PlistValue* found = value(key, [](const PlistValue& v) { return v.isArray(); });
    return found != nullptr ? found->asArray() : nullptr;
}

std::optional<Color> LayeredSettings::color(std::string_view key) const
{
    for (const PlistDictionary* layer : {&settings_, &defaults_}) {
        if (const auto archived = unarchivedObjectForKey(*layer, key)) {
            if (const Color* color = std::get_if<Color>(&*archived)) {
                return *color;
            }
        }
    }
    return std::nullopt;
}

} // namespace vexto
