#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace vexto {

class PlistValue;

using PlistArray = std::vector<PlistValue>;
using PlistDictionary = std::map<std::string, PlistValue, std::less<>>;
using PlistData = std::vector<std::uint8_t>;

// A point in time as the property-list format counts it: seconds since 2001-01-01 00:00:00 UTC.
// Property lists keep dates to the whole second, within what 32 bits of seconds reach
// (1933 to 2069): the range libplist can write in either format.
struct PlistDate {
    static constexpr double earliestSeconds = -2147483648.0;
    static constexpr double latestSeconds = 2147483647.0;
    // The reference date itself, in seconds since 1970-01-01 00:00:00 UTC.
    static constexpr double unixTimeOfReferenceDate = 978307200.0;
    double secondsSinceReferenceDate = 0.0;
    friend bool operator==(const PlistDate&, const PlistDate&) = default;
};

// One property-list value. Copies are deep, so a copied dictionary is "deeply mutable" on its own.
class PlistValue {
public:
    enum class Type { Boolean, Integer, Real, String, Data, Date, Array, Dictionary };

    PlistValue() : storage_(false) {}
    PlistValue(bool value) : storage_(value) {}
    PlistValue(int value) : storage_(static_cast<std::int64_t>(value)) {}
    PlistValue(long value) : storage_(static_cast<std::int64_t>(value)) {}
    PlistValue(long long value) : storage_(static_cast<std::int64_t>(value)) {}
    PlistValue(double value) : storage_(value) {}
    PlistValue(float value) : storage_(static_cast<double>(value)) {}
    PlistValue(std::string value) : storage_(std::move(value)) {}
    PlistValue(std::string_view value) : storage_(std::string(value)) {}
    PlistValue(const char* value) : storage_(std::string(value)) {}
    PlistValue(PlistData value) : storage_(std::move(value)) {}
    PlistValue(PlistDate value) : storage_(value) {}
    PlistValue(PlistArray value) : storage_(std::move(value)) {}
    PlistValue(PlistDictionary value) : storage_(std::move(value)) {}

    Type type() const { return static_cast<Type>(storage_.index()); }

    bool isBoolean() const { return type() == Type::Boolean; }
    bool isInteger() const { return type() == Type::Integer; }
    bool isReal() const { return type() == Type::Real; }
    bool isNumber() const { return isInteger() || isReal(); }
    bool isString() const { return type() == Type::String; }
    bool isData() const { return type() == Type::Data; }
    bool isDate() const { return type() == Type::Date; }
    bool isArray() const { return type() == Type::Array; }
    bool isDictionary() const { return type() == Type::Dictionary; }

    // Typed access; none (a null pointer) when the value is of another type.
    const bool* asBoolean() const { return std::get_if<bool>(&storage_); }
    const std::int64_t* asInteger() const { return std::get_if<std::int64_t>(&storage_); }
    const double* asReal() const { return std::get_if<double>(&storage_); }
    const std::string* asString() const { return std::get_if<std::string>(&storage_); }
    const PlistData* asData() const { return std::get_if<PlistData>(&storage_); }
    const PlistDate* asDate() const { return std::get_if<PlistDate>(&storage_); }
    const PlistArray* asArray() const { return std::get_if<PlistArray>(&storage_); }
    PlistArray* asArray() { return std::get_if<PlistArray>(&storage_); }
    const PlistDictionary* asDictionary() const { return std::get_if<PlistDictionary>(&storage_); }
    PlistDictionary* asDictionary() { return std::get_if<PlistDictionary>(&storage_); }

    // The platform's number conversions: answered by numbers, booleans and strings only;
    // data, dates, arrays and dictionaries do not answer, so callers fall back to their default.
    std::optional<std::int64_t> integerValue() const;
    std::optional<bool> boolValue() const;
    std::optional<double> doubleValue() const;
    std::optional<float> floatValue() const;

    // The text the platform's description gives: a string as it is, a number as its digits, a
    // boolean as 1 or 0, data as <0a0b0c0d 0e>, a date as "2001-01-01 00:00:00 +0000", arrays
    // and dictionaries in the old-style property-list notation.
    std::string description() const;

    friend bool operator==(const PlistValue&, const PlistValue&) = default;

private:
    std::variant<bool, std::int64_t, double, std::string, PlistData, PlistDate, PlistArray,
                 PlistDictionary>
        storage_;
};

} // namespace vexto
