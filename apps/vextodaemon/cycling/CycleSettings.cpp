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
    made.activateOnNoModifiers = settings.flag(
        keys::activateOnNoModifiers, declared::booleanDefault(keys::activateOnNoModifiers));
    return made;
}

} // namespace vexto
