#include "foundation/PlistValue.hpp"

#include "foundation/NumericText.hpp"
#include "foundation/SaturatingCast.hpp"

#include <cmath>
#include <ctime>
#include <limits>

namespace vexto {

std::optional<std::int64_t> PlistValue::integerValue() const
{
    if (const auto* b = asBoolean()) {
        return *b ? 1 : 0;
    }
    if (const auto* i = asInteger()) {
        return *i;
    }
    if (const auto* r = asReal()) {
        return saturatingCast<std::int64_t>(*r);
    }
    if (const auto* s = asString()) {
        return NumericText::leadingInteger(*s);
    }
    return std::nullopt;
}

std::optional<bool> PlistValue::boolValue() const
{
    if (const auto* b = asBoolean()) {
        return *b;
    }
    if (const auto* i = asInteger()) {
        return *i != 0;
    }
    if (const auto* r = asReal()) {
        return *r != 0.0;
    }
    if (const auto* s = asString()) {
        return NumericText::leadingBoolean(*s);
    }
    return std::nullopt;
}

std::optional<double> PlistValue::doubleValue() const
{
    if (const auto* b = asBoolean()) {
        return *b ? 1.0 : 0.0;
    }
    if (const auto* i = asInteger()) {
        return static_cast<double>(*i);
    }
    if (const auto* r = asReal()) {
        return *r;
    }
    if (const auto* s = asString()) {
        return NumericText::leadingReal(*s);
    }
    return std::nullopt;
}

std::optional<float> PlistValue::floatValue() const
{
    const auto value = doubleValue();
    if (!value) {
        return std::nullopt;
    }
    // Beyond the float range the platform gives infinity; a plain conversion would be undefined.
    constexpr double largest = std::numeric_limits<float>::max();
    if (*value > largest || *value < -largest) {
        return *value > 0 ? std::numeric_limits<float>::infinity()
                          : -std::numeric_limits<float>::infinity();
    }
    return static_cast<float>(*value);
}

namespace {

std::string hexDescription(const PlistData& data)
{
    static constexpr char digits[] = "0123456789abcdef";
    std::string out = "<";
    for (std::size_t i = 0; i < data.size(); ++i) {
        if (i > 0 && i % 4 == 0) {
            out += ' ';
        }
        out += digits[data[i] >> 4];
        out += digits[data[i] & 15];
    }
    return out + ">";
}

std::string dateDescription(const PlistDate& date)
{
    const double unixSeconds =
        std::floor(date.secondsSinceReferenceDate + PlistDate::unixTimeOfReferenceDate);
    // Outside what a calendar can show, the seconds themselves are the description.
    if (!(std::fabs(unixSeconds) < 1e15)) {
        return NumericText::shortestText(date.secondsSinceReferenceDate);
    }
    const auto seconds = static_cast<std::time_t>(unixSeconds);
    std::tm utc{};
    ::gmtime_r(&seconds, &utc);
    char text[64];
    std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S +0000", &utc);
    return text;
}

} // namespace

std::string PlistValue::description() const
{
    switch (type()) {
    case Type::Boolean:
        return *asBoolean() ? "1" : "0";
    case Type::Integer:
        return std::to_string(*asInteger());
    case Type::Real:
        return NumericText::shortestText(*asReal());
    case Type::String:
        return *asString();
    case Type::Data:
        return hexDescription(*asData());
    case Type::Date:
        return dateDescription(*asDate());
    case Type::Array: {
        std::string out = "(";
        for (const PlistValue& item : *asArray()) {
            out += (out.size() > 1 ? ", " : "") + item.description();
        }
        return out + ")";
    }
    case Type::Dictionary: {
        std::string out = "{";
        for (const auto& [key, item] : *asDictionary()) {
            out += key + " = " + item.description() + "; ";
        }
        return out + "}";
    }
    }
    return {};
}

} // namespace vexto
