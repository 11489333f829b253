#include "pane/SettingsStore.hpp"

#include "foundation/DictionaryExtensions.hpp"
#include "foundation/FileSystem.hpp"
#include "foundation/HomeDirectory.hpp"
#include "foundation/ProductInfo.hpp"
#include "foundation/PropertyListCodec.hpp"
#include "foundation/StringExtensions.hpp"
#include "ports/RunLoop.hpp"
#include "settings/SettingsFileRecovery.hpp"

#include <algorithm>
#include <ctime>
#include <span>

namespace vexto {

namespace {

// A save must also happen while a menu is tracked, a slider dragged or a modal panel is up.
const RunLoopModes saveModes{RunLoopMode::Default, RunLoopMode::ModalPanel,
                             RunLoopMode::EventTracking};

bool writeSettings(const std::string& path, const PlistDictionary& settings)
{
    const auto xml = PropertyListCodec::xmlFrom(settings);
    if (!xml) {
        return false;
    }
    const std::span bytes(reinterpret_cast<const std::uint8_t*>(xml->data()), xml->size());
    // A file that already holds exactly these bytes is not written again: leaving the pane, which
    // stores the tab that is most often already stored, then costs no flushes of the disk.
    if (FileSystem::fileSize(path) == bytes.size()) {
        const auto current = FileSystem::readFile(path, bytes.size());
        if (current && std::equal(current->begin(), current->end(), bytes.begin(), bytes.end())) {
            return true;
        }
    }
    return FileSystem::writeFileAtomically(path, bytes);
}

std::optional<std::string> existingFolder(const std::string& path)
{
    if (!checkFolderPathAndCreateIfNecessary(path)) {
        return std::nullopt;
    }
    return path;
}

// The settings file's dictionary, or why there is none.
struct StoredSettings {
    std::optional<PlistDictionary> dictionary;
    std::string problem;
};

// Why a settings file that is a link cannot be read, in the person's terms; none when it is no
// broken link.
std::optional<std::string> brokenLink(const std::string& path)
{
    if (!FileSystem::isSymbolicLink(path) || FileSystem::exists(path)) {
        return std::nullopt;
    }
    const auto end = FileSystem::endOfLinks(path);
    return end ? "a link to " + *end + ", which does not exist" : "a link that loops";
}

StoredSettings readStoredSettings(const std::string& path)
{
    auto read = PropertyListCodec::readFile(path);
    if (!read.value) {
        return {std::nullopt, brokenLink(path).value_or(std::move(read.error))};
    }
    if (PlistDictionary* dictionary = read.value->asDictionary()) {
        return {std::move(*dictionary), {}};
    }
    return {std::nullopt, "not a dictionary"};
}

} // namespace

SettingsStore::SettingsStore(RunLoop& runLoop, std::string defaultSettingsPath, Hooks hooks)
    : runLoop_(runLoop), defaultSettingsPath_(std::move(defaultSettingsPath)),
      hooks_(std::move(hooks))
{}

SettingsStore::~SettingsStore()
{
    runLoop_.cancelPreviousPerformRequests(this);
}

std::optional<std::string> SettingsStore::applicationSupportPath() const
{
    const std::string support =
        HomeDirectory::expandTilde(std::string(product::applicationSupportFolder));
    if (!existingFolder(support)) {
        return std::nullopt;
    }
    return existingFolder(FileSystem::join(support, std::string(product::productFolderName)));
}

std::optional<std::string> SettingsStore::userDefinedLayoutsPath() const
{
    const auto support = applicationSupportPath();
    if (!support) {
        return std::nullopt;
    }
    return existingFolder(FileSystem::join(*support, std::string(product::layoutsFolderName)));
}

std::optional<std::string> SettingsStore::settingsPath() const
{
    const auto support = applicationSupportPath();
    if (!support) {
        return std::nullopt;
    }
    return FileSystem::join(*support, std::string(product::settingsFileName));
}

const PlistDictionary* SettingsStore::defaultSettings()
{
    if (!defaultsRead_) {
        defaultsRead_ = true;
        defaults_ = usableDictionaryWithContentsOfFile(
            defaultSettingsPath_, "settings without a value of their own stay empty");
    }
    return defaults_ ? &*defaults_ : nullptr;
}

PlistDictionary& SettingsStore::revertedSettings(bool revert)
{
    if (!revert && settings_) {
        return *settings_;
    }
    bool writeDefaults = true;
    if (!revert) {
        if (const auto path = settingsPath()) {
            SettingsFileRecovery::removeLeftoversOfInterruptedSaves(*path);
            StoredSettings stored = readStoredSettings(*path);
            if (stored.dictionary) {
                settings_ = std::move(*stored.dictionary);
                return *settings_;
            }
            // A file that is there but unusable is the person's, damaged: it is kept, never
            // overwritten. If it cannot be moved, the defaults stay in memory only.
            writeDefaults =
                !FileSystem::isPresent(*path) ||
                SettingsFileRecovery::keepAside(*path, stored.problem, std::time(nullptr));
        }
    }
    // First run, a damaged file, or a revert: start again from the defaults.
    settings_.reset();
    const PlistDictionary* defaults = defaultSettings();
    auto copy = defaults != nullptr ? deepMutableAutoreleasedCopy(*defaults) : std::nullopt;
    if (!copy) {
        settings_ = PlistDictionary{};
        return *settings_;
    }
    settings_ = std::move(*copy);
    if (writeDefaults) {
        saveSettings();
    }
    return *settings_;
}

const PlistValue* SettingsStore::valueForSetting(std::string_view key)
{
    return objectForKey(settings(), key);
}

std::optional<ArchivedObject> SettingsStore::unarchivedValueForSetting(std::string_view key)
{
    return unarchivedObjectForKey(settings(), key);
}

std::int64_t SettingsStore::integerForSetting(std::string_view key, std::int64_t defaultValue)
{
    const PlistValue* value = valueForSetting(key);
    return value != nullptr ? value->integerValue().value_or(defaultValue) : defaultValue;
}

bool SettingsStore::boolForSetting(std::string_view key, bool defaultValue)
{
    const PlistValue* value = valueForSetting(key);
    return value != nullptr ? value->boolValue().value_or(defaultValue) : defaultValue;
}

void SettingsStore::setValue(const std::optional<PlistValue>& value,
                             std::optional<std::string_view> key, bool save)
{
    if (!key) {
        return;
    }
    PlistDictionary& dictionary = settings();
    if (value) {
        dictionary.insert_or_assign(std::string(*key), *value);
    } else if (const auto found = dictionary.find(*key); found != dictionary.end()) {
        dictionary.erase(found);
    }
    if (save) {
        saveSettings();
    }
}

void SettingsStore::setBool(bool value, std::string_view key)
{
    setValue(PlistValue(value), key);
}

bool SettingsStore::saveSettings()
{
    cancelSaveSettingsSoon();
    const auto path = settingsPath();
    if (path && writeSettings(*path, settings())) {
        if (hooks_.didSave) {
            hooks_.didSave();
        }
        return true;
    }
    reportSaveFailure();
    return false;
}

void SettingsStore::reportSaveFailure()
{
    const auto localized = [this](std::string_view text) {
        return hooks_.localized ? hooks_.localized(text) : std::string(text);
    };
    const std::string message =
        "Could not save settings. Please try again or send a brief bug report to <" +
        std::string(product::supportEmailAddress) + ">. Thanks!";
    if (hooks_.runAlert) {
        hooks_.runAlert(AlertRequest{
            localized("Vexto - Fatal Error"), localized(message), localized("OK"), {}, {}});
    }
}

void SettingsStore::saveSettingsSoonAfterTimerReset(bool reset)
{
    if (!reset && savingScheduled_) {
        return;
    }
    cancelSaveSettingsSoon();
    runLoop_.performAfterDelay(this, delayedSaveSelector, {}, saveDelay, saveModes,
                               [this] { saveSettingsAfterDelay(); });
    savingScheduled_ = true;
}

void SettingsStore::cancelSaveSettingsSoon()
{
    runLoop_.cancelPreviousPerformRequests(this, delayedSaveSelector,
                                           PerformArgument(static_cast<const void*>(this)));
    savingScheduled_ = false;
}

} // namespace vexto
