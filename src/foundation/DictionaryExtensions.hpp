#pragma once

#include "foundation/ArchivedObject.hpp"
#include "foundation/PlistValue.hpp"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vexto {

// Helpers on settings dictionaries and arrays, with the platform's semantics: none never
// overwrites or removes, values that do not answer give the caller's fallback.

// Stores the value only when the key is absent; an existing value is never overwritten.
void setDefaultBool(PlistDictionary& dictionary, bool value, std::string_view key);
void setDefaultInteger(PlistDictionary& dictionary, std::int64_t value, std::string_view key);

// Stores the object's archive under the key; a none object leaves the key as it is.
void archiveObject(PlistDictionary& dictionary, const std::optional<ArchivedObject>& object,
                   std::string_view key);
// The key's data unarchived; none when absent, not data, or not a readable archive.
std::optional<ArchivedObject> unarchivedObjectForKey(const PlistDictionary& dictionary,
                                                     std::string_view key);

// Copies the other dictionary's value for the key in; leaves the key untouched when it has none.
void takeObjectForKey(PlistDictionary& dictionary, std::string_view key,
                      const PlistDictionary& fromDictionary);
// Copies every entry of the other dictionary in, overwriting.
void takeObjectsFromDictionary(PlistDictionary& dictionary, const PlistDictionary& other);

// A copy made by a binary property-list round trip; none when the dictionary cannot be written.
std::optional<PlistDictionary> deepMutableAutoreleasedCopy(const PlistDictionary& dictionary);
// The file's property list when it is a dictionary; none when unreadable or of another kind, with
// why in `problem`.
std::optional<PlistDictionary>
deeplyMutableDictionaryWithContentsOfFile(const std::string& path, std::string* problem = nullptr);
// The same, where a file that cannot be used is a fallback the person should be able to explain:
// one line says why and what is done `instead`.
std::optional<PlistDictionary> usableDictionaryWithContentsOfFile(const std::string& path,
                                                                  std::string_view instead);
// Writes the dictionary as an XML property list, atomically; false when nothing was written.
bool writeToFileAtomically(const PlistDictionary& dictionary, const std::string& path);

// Sets only when an object is given.
void tryToSetObject(PlistDictionary& dictionary, const std::optional<PlistValue>& object,
                    std::string_view key);
void setBool(PlistDictionary& dictionary, bool value, std::string_view key);
void setInteger(PlistDictionary& dictionary, std::int64_t value, std::string_view key);
// The value's integer value, or 0 when absent or when it does not answer.
std::int64_t integerForKey(const PlistDictionary& dictionary, std::string_view key);

// The value for the key, or a null pointer.
const PlistValue* objectForKey(const PlistDictionary& dictionary, std::string_view key);
// The first element, or a null pointer when the array is empty.
const PlistValue* firstObject(const PlistArray& array);

} // namespace vexto
