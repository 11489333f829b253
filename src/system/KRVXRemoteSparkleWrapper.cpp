#include "system/KRVXRemoteSparkleWrapper.hpp"

#include "foundation/CalendarFormat.hpp"
#include "foundation/DaemonNotifications.hpp"
#include "foundation/DictionaryExtensions.hpp"
#include "foundation/FormatString.hpp"
#include "foundation/ProductInfo.hpp"
#include "ports/DistributedNotificationCenter.hpp"
#include "ports/ForeignPreferences.hpp"
#include "ports/Workspace.hpp"
#include "system/UserDefaultsExtensions.hpp"
#include "toolkit/Application.hpp"
#include "toolkit/Button.hpp"
#include "toolkit/TextField.hpp"

#include <algorithm>
#include <cctype>

namespace vexto {

namespace {

// An address with a scheme ("https:", "mailto:") and no blanks.
bool isAddress(std::string_view text)
{
    const auto colon = text.find(':');
    if (colon == std::string_view::npos || colon == 0 || colon + 1 == text.size() ||
        !std::isalpha(static_cast<unsigned char>(text.front()))) {
        return false;
    }
    const auto schemeLetter = [](unsigned char c) {
        return std::isalnum(c) || c == '+' || c == '-' || c == '.';
    };
    return std::all_of(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(colon),
                       schemeLetter) &&
           std::none_of(text.begin(), text.end(),
                        [](unsigned char c) { return std::isspace(c) || c < 0x20; });
}

} // namespace

KRVXRemoteSparkleWrapper& KRVXRemoteSparkleWrapper::sharedSparkleWrapper()
{
    static KRVXRemoteSparkleWrapper wrapper;
    return wrapper;
}

void KRVXRemoteSparkleWrapper::connect(Context context)
{
    disconnect();
    context_ = std::move(context);
    if (context_.center == nullptr) {
        return;
    }
    namespace names = daemonnotifications;
    context_.center->addObserver(
        this, names::named(names::daemonToPrefPaneSparkleInstruction),
        [this](const auto&, const std::optional<std::string>& object) {
            handleInstruction(object);
        },
        true);
}

void KRVXRemoteSparkleWrapper::disconnect()
{
    if (context_.center != nullptr) {
        context_.center->removeObserver(this);
    }
    context_ = Context{};
    outlets_ = Outlets{};
}

void KRVXRemoteSparkleWrapper::post(std::string_view instruction)
{
    if (context_.center == nullptr) {
        return;
    }
    namespace names = daemonnotifications;
    context_.center->post(names::named(names::prefPaneToDaemonSparkleInstruction),
                          std::string(instruction));
}

void KRVXRemoteSparkleWrapper::toggleAutomaticChecking()
{
    // The daemon flips its own setting; the box follows when the daemon says so.
    post(toggleAutomaticChecksInstruction);
}

void KRVXRemoteSparkleWrapper::checkForUpdates()
{
    post(checkNowInstruction);
}

void KRVXRemoteSparkleWrapper::visitProductPage(const View* sender)
{
    const std::string address = sender != nullptr ? sender->toolTip() : std::string();
    if (context_.workspace == nullptr || !isAddress(address) ||
        !context_.workspace->openURL(address)) {
        Application::shared().beep();
    }
}

std::optional<PlistValue> KRVXRemoteSparkleWrapper::objectForKey(std::string_view key) const
{
    if (context_.preferences == nullptr) {
        return std::nullopt;
    }
    return vexto::objectForKey(*context_.preferences, std::string(key),
                               std::string(product::bundleIdentifier));
}

bool KRVXRemoteSparkleWrapper::automaticallyChecksForUpdates() const
{
    const auto value = objectForKey(automaticChecksKey);
    return value ? value->boolValue().value_or(true) : true;
}

std::string KRVXRemoteSparkleWrapper::localized(std::string_view text) const
{
    return context_.localized ? context_.localized(text) : std::string(text);
}

void KRVXRemoteSparkleWrapper::updateControls()
{
    if (outlets_.autoUpdateCheckingSwitch == nullptr) {
        return;
    }
    updateControlsForDaemonEnabled(context_.isDaemonEnabled && context_.isDaemonEnabled());
}

void KRVXRemoteSparkleWrapper::updateControlsForDaemonEnabled(bool enabled)
{
    if (outlets_.autoUpdateCheckingSwitch == nullptr) {
        return;
    }
    if (outlets_.checkNowButton != nullptr) {
        outlets_.checkNowButton->setEnabled(enabled);
    }
    outlets_.autoUpdateCheckingSwitch->setEnabled(enabled);
    outlets_.autoUpdateCheckingSwitch->setState(enabled && automaticallyChecksForUpdates() ? 1 : 0);

    std::string status;
    std::string date;
    const auto version =
        context_.currentShortVersionString ? context_.currentShortVersionString() : std::nullopt;
    const auto recorded = objectForKey(statusKey);
    if (version && recorded && recorded->asDictionary() != nullptr) {
        statusLines(*recorded->asDictionary(), *version, status, date);
    }
    if (outlets_.statusTextField != nullptr) {
        outlets_.statusTextField->setStringValue(status);
    }
    if (outlets_.statusDateTextField != nullptr) {
        outlets_.statusDateTextField->setStringValue(date);
    }
    if (context_.updatePreferencePaneFrame) {
        context_.updatePreferencePaneFrame();
    }
}

// A status recorded by another version of the product says nothing about this one.
void KRVXRemoteSparkleWrapper::statusLines(const PlistDictionary& fields,
                                           const std::string& version, std::string& status,
                                           std::string& date) const
{
    const PlistValue* current = vexto::objectForKey(fields, "Current Version");
    const PlistValue* update = vexto::objectForKey(fields, "Update Version");
    if (current == nullptr || current->asString() == nullptr || *current->asString() != version ||
        update == nullptr || update->asString() == nullptr) {
        return;
    }
    const std::string name = context_.displayName ? context_.displayName() : "";
    const std::string& newer = *update->asString();
    status = newer.empty() ? FormatString::fill(localized("%@ is up to date"), {name})
                           : FormatString::fill(localized("%@ %@ is now available"), {name, newer});
    const PlistValue* checked = vexto::objectForKey(fields, "Check Date");
    const auto seconds =
        checked != nullptr && !checked->isString() ? checked->integerValue() : std::nullopt;
    if (seconds) {
        date = CalendarFormat::format(localized("Last check: %B %1d, %Y - %1I:%M %p"), *seconds);
    }
}

void KRVXRemoteSparkleWrapper::handleInstruction(const std::optional<std::string>& object)
{
    if (object == invalidateUpdateVersionInstruction) {
        updateControls();
    }
}

} // namespace vexto
