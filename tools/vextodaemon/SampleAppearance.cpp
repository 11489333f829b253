#include "SampleAppearance.hpp"

#include "foundation/DictionaryExtensions.hpp"
#include "ports/FontCatalog.hpp"
#include "settings/AppearanceDefaults.hpp"
#include "settings/SettingDeclarations.hpp"
#include "settings/SettingKeys.hpp"

#include <algorithm>
#include <cmath>

namespace vexto {

namespace {

namespace keys = settingkeys;

// The settings' value for the key, else the defaults'.
class LayeredSettings {
public:
    LayeredSettings(const PlistDictionary& settings, const PlistDictionary& defaults)
        : settings_(settings), defaults_(defaults)
    {}

    // The first layer's value for the key that is usable, so that a value of the wrong kind
    // reads as absent.
    template <typename Usable> const PlistValue* value(std::string_view key, Usable usable) const
    {
        for (const PlistDictionary* layer : {&settings_, &defaults_}) {
            const PlistValue* found = objectForKey(*layer, key);
            if (found != nullptr && usable(*found)) {
                return found;
            }
        }
        return nullptr;
    }

    std::optional<Color> color(std::string_view key) const
    {
        for (const PlistDictionary* layer : {&settings_, &defaults_}) {
            if (const auto archived = unarchivedObjectForKey(*layer, key)) {
                if (const Color* color = std::get_if<Color>(&*archived)) {
                    return *color;
                }
            }
        }
        return std::nullopt;
    }

    Color color(std::string_view key, const Color& fallback) const
    {
        return color(key).value_or(fallback);
    }

    bool flag(std::string_view key, bool fallback) const
    {
        const PlistValue* found =
            value(key, [](const PlistValue& v) { return v.boolValue().has_value(); });
        return found != nullptr ? *found->boolValue() : fallback;
    }

    std::optional<double> number(std::string_view key) const
    {
        const PlistValue* found = value(key, [](const PlistValue& v) {
            return v.isNumber() && std::isfinite(v.doubleValue().value_or(NAN));
        });
        return found != nullptr ? found->doubleValue() : std::nullopt;
    }

    std::optional<std::int64_t> integer(std::string_view key) const
    {
        const PlistValue* found = value(key, [](const PlistValue& v) { return v.isNumber(); });
        return found != nullptr ? found->integerValue() : std::nullopt;
    }

    const std::string* string(std::string_view key) const
    {
        const PlistValue* found = value(key, [](const PlistValue& v) { return v.isString(); });
        return found != nullptr ? found->asString() : nullptr;
    }

private:
    const PlistDictionary& settings_;
    const PlistDictionary& defaults_;
};

Color fixedDefault(std::string_view key)
{
    return AppearanceDefaults::colorForKey(key).value_or(Color::whiteColor());
}

std::optional<Font> panelFont(const LayeredSettings& settings, const FontCatalog* fonts,
                              double size)
{
    const std::string* name = settings.string(keys::alternatePanelFont);
    if (name == nullptr || name->empty()) {
        return std::nullopt;
    }
    if (fonts != nullptr) {
        if (auto font = fonts->fontWithName(*name, size)) {
            return font;
        }
    }
    // A display name ("DejaVu Sans Bold"), as layouts store it: the desktop finds the face.
    return Font(*name, *name, *name, size);
}

} // namespace

SampleAppearance SampleAppearance::fromSettings(const PlistDictionary& userSettings,
                                                const PlistDictionary& defaults,
                                                const FontCatalog* fonts)
{
    const LayeredSettings settings(userSettings, defaults);
    SampleAppearance look;
    look.background = settings.color(keys::backgroundColor, fixedDefault(keys::backgroundColor));
    look.selection = settings.color(keys::selectionColor, fixedDefault(keys::selectionColor));
    look.selectionBorder =
        settings.color(keys::selectionBorderColor, fixedDefault(keys::selectionBorderColor));
    look.applicationName =
        settings.color(keys::applicationNameColor, fixedDefault(keys::applicationNameColor));
    look.windowName = settings.color(keys::windowNameColor, fixedDefault(keys::windowNameColor));
    look.selectionWindowName = settings.color(keys::selectionWindowNameColor,
                                              fixedDefault(keys::selectionWindowNameColor));
    // Without a colour of its own the key badge follows the selection.
    look.keyBadge = settings.color(keys::keyBadgeColor, look.selection);

    look.selectionGradient =
        settings.integer(keys::selectionGradient)
            .value_or(settingdeclarations::integerDefault(keys::selectionGradient));

    look.itemSize = std::clamp(settings.number(keys::itemHeight)
                                   .value_or(settingdeclarations::realDefault(keys::itemHeight)),
                               smallestItem, largestItem);
    if (const auto width = settings.number(keys::maximumWidth); width && *width >= 0.01) {
        look.maximumWidth = std::min(*width, 1.0);
    }
    look.smoothFonts = settings.integer(keys::fontSmoothing)
                           .value_or(settingdeclarations::integerDefault(keys::fontSmoothing)) >= 0;

    look.panelShadow = settings.flag(keys::panelShadow, true);
    look.applicationNameShadow = settings.flag(keys::applicationNameShadow, true);
    look.windowNameShadow = settings.flag(keys::windowNameShadow, false);
    look.shortcutBadges = settings.flag(keys::showShortcutBadges, true);
    look.onMouseScreen = settings.flag(keys::showPanelOnMouseScreen, false);
    look.font = panelFont(settings, fonts, 13);
    return look;
}

} // namespace vexto
