#include "platform/linux/GtkAccelerator.hpp"

#include "foundation/StringExtensions.hpp"
#include "ports/ShortcutOwners.hpp"

#include <algorithm>
#include <array>
#include <utility>

namespace vexto {

namespace {

using M = ShortcutOwners::Modifier;

// GTK's own names; 0 for a name that changes nothing here.
constexpr std::array<std::pair<std::string_view, unsigned>, 11> modifierNames = {{
    {"shift", M::shift},
    {"control", M::control},
    {"ctrl", M::control},
    {"ctl", M::control},
    {"primary", M::control},
    {"alt", M::alt},
    {"mod1", M::alt},
    {"meta", M::alt},
    {"super", M::super},
    {"mod4", M::super},
    {"release", 0},
}};

} // namespace

std::optional<GtkAccelerator> GtkAccelerator::parse(std::string_view text)
{
    GtkAccelerator accelerator;
    const std::string trimmed = trimmedString(text);
    text = trimmed;
    while (!text.empty() && text.front() == '<') {
        const std::size_t close = text.find('>');
        if (close == std::string_view::npos) {
            return std::nullopt;
        }
        const std::string name = asciiLowercased(text.substr(1, close - 1));
        const auto known = std::find_if(modifierNames.begin(), modifierNames.end(),
                                        [&](const auto& entry) { return entry.first == name; });
        if (known == modifierNames.end()) {
            return std::nullopt;
        }
        accelerator.modifiers |= known->second;
        text.remove_prefix(close + 1);
    }
    if (text.empty()) {
        return std::nullopt;
    }
    accelerator.keysym = std::string(text);
    return accelerator;
}

} // namespace vexto
