#include "foundation/DictionaryExtensions.hpp"

#include "foundation/FileSystem.hpp"
#include "foundation/Log.hpp"
#include "foundation/PropertyListCodec.hpp"
#include "foundation/TypedStreamArchiver.hpp"
#include "foundation/TypedStreamUnarchiver.hpp"

namespace vexto {

void setDefaultBool(PlistDictionary& dictionary, bool value, std::string_view key)
{
    if (!dictionary.contains(key)) {
        dictionary.emplace(std::string(key), value);
    }
}

void setDefaultInteger(PlistDictionary& dictionary, std::int64_t value, std::string_view key)
{
    if (!dictionary.contains(key)) {
        dictionary.emplace(std::string(key), static_cast<long long>(value));
    }
}

void archiveObject(PlistDictionary& dictionary, const std::optional<ArchivedObject>& object,
                   std::string_view key)
{
    if (object) {
        dictionary.insert_or_assign(std::string(key),
                                    TypedStreamArchiver::archivedDataWithRootObject(*object));
    }
}

std::optional<ArchivedObject> unarchivedObjectForKey(const PlistDictionary& dictionary,
                                                     std::string_view key)
{
    const PlistValue* value = objectForKey(dictionary, key);
    const PlistData* data = value != nullptr ? value->asData() : nullptr;
    if (data == nullptr) {
        return std::nullopt;
    }
    return TypedStreamUnarchiver::unarchiveObjectWithData(*data);
}

void takeObjectForKey(PlistDictionary& dictionary, std::string_view key,
                      const PlistDictionary& fromDictionary)
{
    if (const PlistValue* value = objectForKey(fromDictionary, key)) {
        dictionary.insert_or_assign(std::string(key), *value);
    }
}

void takeObjectsFromDictionary(PlistDictionary& dictionary, const PlistDictionary& other)
{
    for (const auto& [key, value] : other) {
        dictionary.insert_or_assign(key, value);
    }
}

std::optional<PlistDictionary> deepMutableAutoreleasedCopy(const PlistDictionary& dictionary)
{
    const auto binary = PropertyListCodec::binaryFrom(dictionary);
    if (!binary) {
        return std::nullopt;
    }
    auto result = PropertyListCodec::read(*binary);
    if (!result.value || !result.value->isDictionary()) {
        return std::nullopt;
    }
    return std::move(*result.value->asDictionary());
}

std::optional<PlistDictionary> deeplyMutableDictionaryWithContentsOfFile(const std::string& path,
                                                                         std::string* problem)
{
    auto result = PropertyListCodec::readFile(path);
    if (!result.value || !result.value->isDictionary()) {
        if (problem != nullptr) {
            *problem = result.value ? std::string("not a dictionary") : std::move(result.error);
        }
        return std::nullopt;
    }
    return std::move(*result.value->asDictionary());
}

std::optional<PlistDictionary> usableDictionaryWithContentsOfFile(const std::string& path,
                                                                  std::string_view instead)
{
    std::string problem;
    auto dictionary = deeplyMutableDictionaryWithContentsOfFile(path, &problem);
    if (!dictionary) {
        Log::fileNotUsed(path, problem, instead);
    }
    return dictionary;
}

bool writeToFileAtomically(const PlistDictionary& dictionary, const std::string& path)
{
    const auto xml = PropertyListCodec::xmlFrom(dictionary);
    return xml &&
           FileSystem::writeFileAtomically(
               path, std::span(reinterpret_cast<const std::uint8_t*>(xml->data()), xml->size()));
}

void tryToSetObject(PlistDictionary& dictionary, const std::optional<PlistValue>& object,
                    std::string_view key)
{
    if (object) {
        dictionary.insert_or_assign(std::string(key), *object);
    }
}

void setBool(PlistDictionary& dictionary, bool value, std::string_view key)
{
    dictionary.insert_or_assign(std::string(key), value);
}

void setInteger(PlistDictionary& dictionary, std::int64_t value, std::string_view key)
{
    dictionary.insert_or_assign(std::string(key), static_cast<long long>(value));
}

std::int64_t integerForKey(const PlistDictionary& dictionary, std::string_view key)
{
    const PlistValue* value = objectForKey(dictionary, key);
    return value != nullptr ? value->integerValue().value_or(0) : 0;
}

const PlistValue* objectForKey(const PlistDictionary& dictionary, std::string_view key)
{
    const auto found = dictionary.find(key);
    return found != dictionary.end() ? &found->second : nullptr;
}

const PlistValue* firstObject(const PlistArray& array)
{
    return array.empty() ? nullptr : &array.front();
}

} // namespace vexto
