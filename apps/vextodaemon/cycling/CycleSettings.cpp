#include "cycling/CycleSettings.hpp"

#include "settings/LayeredSettings.hpp"
#include "settings/SettingDeclarations.hpp"

#include <algorithm>

namespace vexto {

namespace {

namespace keys = settingkeys;
namespace declared = settingdeclarations;

// A panel held back longer than this would look like a daemon that does not answer.
constexpr double longestPanelDelay = 5.0;

// The list's texts; anything else in it is passed over. At most `mostExceptions` are kept.
std::vector<std::string> strings(const LayeredSettings& settings, std::string_view key)
{
    constexpr std::size_t mostExceptions = 1000;
    std::vector<std::string> found;
    if (const PlistArray* list = settings.array(key)) {
        for (const PlistValue& item : *list) {
            if (item.isString() && found.size() < mostExceptions) {
                found.push_back(*item.asString());
            }
        }
    }
    return found;
}

} // namespace

CycleSettings CycleSettings::fromSettings(const LayeredSettings& settings)
{
    CycleSettings made;
    made.options.stepForwardInitially = settings.flag(
        keys::stepForwardInitially, declared::booleanDefault(keys::stepForwardInitially));
    made.options.wrapAround = settings.flag(keys::wrapAroundScrolling,
                                            declared::booleanDefault(keys::wrapAroundScrolling));
    const double delay = settings.number(keys::panelDelay)
                             .value_or(double(declared::integerDefault(keys::panelDelay)));
    made.panelDelaySeconds = std::clamp(delay / 1000.0, 0.0, longestPanelDelay);
    made.switchAcrossSpaces =
        settings.flag(keys::switchAcrossSpaces, declared::booleanDefault(keys::switchAcrossSpaces));
    // A tag the pop-up does not have reads as the default.
    const auto order = settings.integer(keys::applicationsSortOrder)
                           .value_or(declared::integerDefault(keys::applicationsSortOrder));
    made.options.applicationOrder =
        order >= 0 && order <= 3 ? static_cast<WindowCycle::ApplicationOrder>(order)
                                 : static_cast<WindowCycle::ApplicationOrder>(
                                       declared::integerDefault(keys::applicationsSortOrder));
    made.options.invertApplicationOrder =
        settings.flag(keys::invertApplicationsSortOrder,
                      declared::booleanDefault(keys::invertApplicationsSortOrder));
    made.shortcutBadges =
        settings.flag(keys::showShortcutBadges, declared::booleanDefault(keys::showShortcutBadges));
    made.options.leftOutApplications = strings(settings, keys::applicationExceptions);
    made.options.leftOutTitles = strings(settings, keys::windowExceptions);
    made.activateOnNoModifiers = settings.flag(
        keys::activateOnNoModifiers, declared::booleanDefault(keys::activateOnNoModifiers));
    return made;
}

} // namespace vexto
