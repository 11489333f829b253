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
// The pop-up's longest is 3 s; a file may hold anything.
constexpr double longestPreviewDelay = 10.0;

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

// An index the pop-up does not have reads as the default.
template <typename Choice>
Choice choice(const LayeredSettings& settings, std::string_view key, long long defaultIndex,
              long long lastIndex)
{
    const long long index = settings.integer(key).value_or(defaultIndex);
    return static_cast<Choice>(index >= 0 && index <= lastIndex ? index : defaultIndex);
}

std::optional<WindowCycle::ItemPlace> ownItem(const LayeredSettings& settings,
                                              std::string_view shown, std::string_view place,
                                              bool shownByDefault, long long defaultPlace)
{
    if (!settings.flag(shown, shownByDefault)) {
        return std::nullopt;
    }
    return choice<WindowCycle::ItemPlace>(settings, place, defaultPlace, 1);
}

WindowCycle::FollowUp followUp(const LayeredSettings& settings, std::string_view key,
                               long long defaultIndex)
{
    return choice<WindowCycle::FollowUp>(settings, key, defaultIndex, 3);
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
    made.options.applicationOrder = choice<WindowCycle::ApplicationOrder>(
        settings, keys::applicationsSortOrder,
        declared::integerDefault(keys::applicationsSortOrder), 3);
    made.options.invertApplicationOrder =
        settings.flag(keys::invertApplicationsSortOrder,
                      declared::booleanDefault(keys::invertApplicationsSortOrder));
    made.shortcutBadges =
        settings.flag(keys::showShortcutBadges, declared::booleanDefault(keys::showShortcutBadges));
    made.options.leftOutApplications = strings(settings, keys::applicationExceptions);
    made.options.leftOutTitles = strings(settings, keys::windowExceptions);
    made.activateOnNoModifiers = settings.flag(
        keys::activateOnNoModifiers, declared::booleanDefault(keys::activateOnNoModifiers));
    made.options.activationItem = ownItem(settings, keys::activateItem, keys::activateItemMode,
                                          declared::booleanDefault(keys::activateItem),
                                          declared::integerDefault(keys::activateItemMode));
    made.options.cancellationItem = ownItem(settings, keys::cancelItem, keys::cancelItemMode,
                                            declared::booleanDefault(keys::cancelItem),
                                            declared::integerDefault(keys::cancelItemMode));
    made.afterZoom = followUp(settings, keys::afterZoomSelection,
                              declared::integerDefault(keys::afterZoomSelection));
    made.afterMinimize = followUp(settings, keys::afterMinimizeSelection,
                                  declared::integerDefault(keys::afterMinimizeSelection));
    made.afterClose = followUp(settings, keys::afterCloseSelection,
                               declared::integerDefault(keys::afterCloseSelection));
    made.showPreviews =
        settings.flag(keys::showPreviews, declared::booleanDefault(keys::showPreviews));
    const double previewDelay = settings.number(keys::previewDelay)
                                    .value_or(double(declared::integerDefault(keys::previewDelay)));
    made.previewDelaySeconds = std::clamp(previewDelay / 1000.0, 0.0, longestPreviewDelay);
    made.processWindowsWhenDone = settings.flag(
        keys::processWindowsWhenDone, declared::booleanDefault(keys::processWindowsWhenDone));
    return made;
}

} // namespace vexto
