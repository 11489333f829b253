#include "foundation/PlistValue.hpp"

#include "foundation/NumericText.hpp"

#include <cmath>
#include <limits>

namespace vexto {

namespace {

std::int64_t truncatedToInteger(double value)
{
    if (std::isnan(value)) {
        return 0;
    }
    constexpr double lowest = static_cast<double>(std::numeric_limits<std::int64_t>::min());
    constexpr double highest = static_cast<double>(std::numeric_limits<std::int64_t>::max());
    if (value <= lowest) {
        return std::numeric_limits<std::int64_t>::min();
    }
    if (value >= highest) {
        return std::numeric_limits<std::int64_t>::max();
    }
    return static_cast<std::int64_t>(value);
}

} // namespace

std::optional<std::int64_t> PlistValue::integerValue() const
{
    if (const auto* b = asBoolean()) {
        return *b ? 1 : 0;
    }
    if (const auto* i = asInteger()) {
        return *i;
    }
    if (const auto* r = asReal()) {
        return truncatedToInteger(*r);
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
    if (auto value = doubleValue()) {
        return static_cast<float>(*value);
    }
    return std::nullopt;
}

} // namespace vexto
