#include "DaemonService.hpp"

#include "foundation/Bundle.hpp"
#include "foundation/DaemonNotifications.hpp"
#include "foundation/DictionaryExtensions.hpp"
#include "foundation/FileSystem.hpp"
#include "foundation/HomeDirectory.hpp"
#include "foundation/Log.hpp"
#include "foundation/ProductInfo.hpp"
#include "foundation/PropertyListCodec.hpp"
#include "foundation/UpdateInstructions.hpp"
#include "panel/PanelAppearance.hpp"
#include "panel/PanelPresenter.hpp"
#include "platform/linux/PreferencesFolder.hpp"
#include "ports/DistributedNotificationCenter.hpp"
#include "settings/SettingsFileRecovery.hpp"

#include <ctime>

namespace vexto {

namespace {

namespace names = daemonnotifications;
namespace updates = updateinstructions;

// A file in the product's folder of the user's Application Support.
std::string productFile(std::string_view name)
{
    return HomeDirectory::expandTilde(
        FileSystem::join(FileSystem::join(std::string(product::applicationSupportFolder),
                                          std::string(product::productFolderName)),
                         std::string(name)));
}

// The next number of a dotted version, and the rest after it.
long takeNumber(std::string& rest)
{
    const auto dot = rest.find('.');
    const std::string part = rest.substr(0, dot);
    rest = dot == std::string::npos ? std::string() : rest.substr(dot + 1);
    long value = 0;
    for (char digit : part) {
        if (digit < '0' || digit > '9' || value > 100000000) {
            break;
        }
        value = value * 10 + (digit - '0');
    }
    return value;
}

} // namespace

DaemonService::DaemonService(DistributedNotificationCenter& center, std::string bundlePath,
                             PanelPresenter* presenter, const FontCatalog* fonts)
    : center_(center), bundlePath_(std::move(bundlePath)), presenter_(presenter), fonts_(fonts)
{}

DaemonService::~DaemonService()
{
    center_.removeObserver(this);
}

std::string DaemonService::feedPath()
{
    return productFile("UpdateFeed.plist");
}

std::string DaemonService::defaultsPath()
{
    return PreferencesFolder::pathForDomain(std::string(product::bundleIdentifier));
}

PlistDictionary DaemonService::shippedDefaults(const std::string& bundlePath)
{
    const std::string defaultsPath = FileSystem::join(
        FileSystem::folderOf(bundlePath), std::string(product::defaultSettingsFileName));
    return usableDictionaryWithContentsOfFile(defaultsPath, "the sample panel uses built-in values")
        .value_or(PlistDictionary{});
}

int DaemonService::compareVersions(const std::string& first, const std::string& second)
{
    std::string a = first;
    std::string b = second;
    while (!a.empty() || !b.empty()) {
        const long left = takeNumber(a);
        const long right = takeNumber(b);
        if (left != right) {
            return left < right ? -1 : 1;
        }
    }
    return 0;
}

void DaemonService::start()
{
    running_ = true;
    center_.addObserver(
        this, names::named(names::updateDaemon),
        [this](const auto&, const std::optional<std::string>& object) { updateDaemon(object); },
        true);
    center_.addObserver(
        this, names::named(names::quitDaemon),
        [this](const auto&, const auto&) { quit("the pane asked"); }, true);
    center_.addObserver(
        this, names::named(names::prefPaneToDaemonSparkleInstruction),
        [this](const auto&, const std::optional<std::string>& object) {
            followInstruction(object);
        },
        true);
    // What writes cut short by an earlier end of this daemon left beside its defaults.
    SettingsFileRecovery::removeLeftoversOfInterruptedSaves(defaultsPath());
    Log::line("vextodaemon " + currentShortVersion() + " started");
    if (settingsHandler_) {
        settingsHandler_(readSettings().value_or(PlistDictionary{}), defaults());
    }
    center_.post(names::named(names::updatePane), std::nullopt);
}

void DaemonService::quit(const std::string& reason)
{
    if (!running_) {
        return;
    }
    running_ = false;
    center_.removeObserver(this);
    Log::line("vextodaemon quits: " + reason);
}

void DaemonService::catchUp()
{
    if (!running_) {
        return;
    }
    updateDaemon(std::nullopt);
    center_.post(names::named(names::updatePane), std::nullopt);
}

std::optional<PlistDictionary> DaemonService::readSettings() const
{
    const std::string path = productFile(product::settingsFileName);
    if (!FileSystem::isPresent(path)) {
        Log::line("no settings at " + path + " yet: the shipped defaults apply");
        return PlistDictionary{};
    }
    auto read = PropertyListCodec::readFile(path);
    PlistDictionary* settings = read.value ? read.value->asDictionary() : nullptr;
    if (settings == nullptr) {
        Log::line("could not read " + path + ": " +
                  (read.error.empty() ? std::string("not a dictionary") : read.error));
        return std::nullopt;
    }
    Log::line("read " + std::to_string(settings->size()) + " settings from " + path);
    return std::move(*settings);
}

const PlistDictionary& DaemonService::defaults()
{
    // The shipped defaults do not change while the daemon runs: read once.
    if (!shippedDefaults_) {
        shippedDefaults_ = shippedDefaults(bundlePath_);
    }
    return *shippedDefaults_;
}

void DaemonService::updateDaemon(const std::optional<std::string>& object)
{
    const auto settings = readSettings();
    // Settings that cannot be read leave the hot keys as they were.
    if (settings && settingsHandler_) {
        settingsHandler_(*settings, defaults());
    }
    if (object != names::dummyObject) {
        return;
    }
    Log::line(settings && showSample(*settings) ? "showing a sample panel"
                                                : "a sample panel is due");
}

bool DaemonService::showSample(const PlistDictionary& settings)
{
    if (presenter_ == nullptr) {
        return false;
    }
    return presenter_->showSample(PanelAppearance::fromSettings(settings, defaults(), fonts_));
}

void DaemonService::followInstruction(const std::optional<std::string>& object)
{
    if (object == updates::toggleAutomaticChecks) {
        toggleAutomaticChecks();
    } else if (object == updates::checkNow) {
        checkNow();
    } else {
        return;
    }
    center_.post(names::named(names::daemonToPrefPaneSparkleInstruction),
                 std::string(updates::invalidateUpdateVersion));
}

void DaemonService::toggleAutomaticChecks()
{
    PlistDictionary defaults = readDefaults();
    const std::string key(updates::automaticChecksKey);
    const PlistValue* stored = objectForKey(defaults, key);
    const bool was = stored == nullptr || stored->boolValue().value_or(true);
    defaults[key] = PlistValue(!was);
    if (writeDefaults(defaults)) {
        Log::line(std::string("automatic update checks ") + (was ? "off" : "on"));
    }
}

// The newest version the feed names: none where there is no feed (nothing newer was published),
// and a problem where there is one that cannot be used.
std::optional<std::string> DaemonService::latestVersion(std::string& problem)
{
    const std::string path = feedPath();
    if (!FileSystem::isPresent(path)) {
        return std::nullopt;
    }
    const auto feed = deeplyMutableDictionaryWithContentsOfFile(path, &problem);
    if (!feed) {
        return std::nullopt;
    }
    const PlistValue* latest = objectForKey(*feed, "Latest Version");
    if (latest == nullptr || !latest->isString()) {
        problem = "no \"Latest Version\" text";
        return std::nullopt;
    }
    return *latest->asString();
}

void DaemonService::checkNow()
{
    const std::string current = currentShortVersion();
    std::string problem;
    const auto latest = latestVersion(problem);
    if (!problem.empty()) {
        // "Up to date" is never claimed from a feed nobody could read: the last check stands.
        Log::fileNotUsed(feedPath(), problem, "no check was made");
        return;
    }
    std::string newer;
    if (latest && compareVersions(*latest, current) > 0) {
        newer = *latest;
    }
    PlistDictionary defaults = readDefaults();
    defaults[std::string(updates::statusKey)] =
        PlistDictionary{{"Current Version", current},
                        {"Update Version", newer},
                        {"Check Date", PlistValue(static_cast<std::int64_t>(std::time(nullptr)))}};
    if (writeDefaults(defaults)) {
        Log::line(newer.empty() ? "checked for updates: up to date"
                                : "checked for updates: " + newer + " is available");
    }
}

// A file that cannot be used is kept aside, as the pane keeps a damaged settings file, before the
// next write replaces it: nothing the user had is lost unseen.
PlistDictionary DaemonService::readDefaults() const
{
    const std::string path = defaultsPath();
    if (!FileSystem::exists(path)) {
        return {};
    }
    auto read = PropertyListCodec::readFile(path);
    if (read.value && read.value->isDictionary()) {
        return std::move(*read.value->asDictionary());
    }
    SettingsFileRecovery::keepAside(path, read.value ? "not a dictionary" : read.error,
                                    std::time(nullptr));
    return {};
}

bool DaemonService::writeDefaults(const PlistDictionary& defaults) const
{
    const std::string path = defaultsPath();
    const bool written = FileSystem::createDirectories(FileSystem::folderOf(path)) &&
                         writeToFileAtomically(defaults, path);
    if (!written) {
        Log::line("could not write " + path);
    }
    return written;
}

std::string DaemonService::currentShortVersion() const
{
    return Bundle(bundlePath_).infoString("CFBundleShortVersionString").value_or("");
}

} // namespace vexto
