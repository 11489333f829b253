#include "system/UserDefaultsExtensions.hpp"

#include "foundation/StringExtensions.hpp"
#include "foundation/TextEncoding.hpp"
#include "ports/ForeignPreferences.hpp"
#include "system/SystemVersionChecks.hpp"

#include <algorithm>
#include <cctype>

namespace vexto {

namespace {

constexpr const char* dockDomain = "com.apple.dock";
constexpr const char* spacesDomain = "com.apple.spaces";
constexpr std::int64_t everySpace = 1;
constexpr std::int64_t firstListedSpace = 2;

// The length a value answers to: a text's or data's; none for values without one.
std::size_t lengthOf(const PlistValue& value)
{
    if (const std::string* text = value.asString()) {
        return TextEncoding::utf16FromUtf8(*text).size();
    }
    if (const PlistData* data = value.asData()) {
        return data->size();
    }
    return 0;
}

std::optional<PlistDictionary> bindingsOnOlderSystems(ForeignPreferences& preferences)
{
    auto bindings = objectForKey(preferences, "workspaces-app-bindings", dockDomain);
    if (!bindings || bindings->asDictionary() == nullptr) {
        return std::nullopt;
    }
    return *bindings->asDictionary();
}

std::optional<PlistDictionary> spacesBindings(ForeignPreferences& preferences)
{
    const auto spaces = objectForKey(preferences, "spaces", spacesDomain);
    const PlistArray* list = spaces ? spaces->asArray() : nullptr;
    if (list == nullptr || list->empty()) {
        return std::nullopt;
    }
    const auto bindings = objectForKey(preferences, "spaces-app-bindings", spacesDomain);
    const PlistDictionary* byApplication = bindings ? bindings->asDictionary() : nullptr;
    if (byApplication == nullptr) {
        return std::nullopt;
    }
    PlistDictionary numbers;
    for (const auto& [application, space] : *byApplication) {
        std::int64_t number = everySpace;
        if (lengthOf(space) > 0) {
            const auto found = std::find(list->begin(), list->end(), space);
            if (found == list->end()) {
                continue;
            }
            number = firstListedSpace + (found - list->begin());
        }
        numbers[asciiLowercased(application)] = PlistValue(number);
    }
    return numbers.empty() ? std::nullopt : std::optional<PlistDictionary>(std::move(numbers));
}

} // namespace

std::optional<PlistValue> objectForKey(ForeignPreferences& preferences, const std::string& key,
                                       const std::string& bundleIdentifier)
{
    if (key.empty() || bundleIdentifier.empty()) {
        return std::nullopt;
    }
    return preferences.copyAppValue(key, bundleIdentifier);
}

bool areSpacesEnabledWithApplicationBindings(ForeignPreferences& preferences,
                                             std::optional<PlistDictionary>* bindings)
{
    if (bindings != nullptr) {
        bindings->reset();
    }
    if (!KRVXSystemIsLionOrNewer()) {
        const auto workspaces = objectForKey(preferences, "workspaces", dockDomain);
        const bool enabled = workspaces && workspaces->boolValue().value_or(false);
        if (bindings != nullptr && enabled) {
            *bindings = bindingsOnOlderSystems(preferences);
        }
        return enabled;
    }
    // From 10.7 on Spaces cannot be switched off.
    if (bindings != nullptr) {
        *bindings = spacesBindings(preferences);
    }
    return true;
}

bool areSpacesEnabled(ForeignPreferences& preferences)
{
    return areSpacesEnabledWithApplicationBindings(preferences, nullptr);
}

} // namespace vexto
