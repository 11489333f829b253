#include "platform/linux/KdeKeyBindings.hpp"

#include "foundation/StringExtensions.hpp"
#include "foundation/TextEncoding.hpp"
#include "platform/linux/ConfiguredShortcutOwners.hpp"
#include "ports/ShortcutOwners.hpp"

#include <algorithm>
#include <array>
#include <utility>

namespace vexto {

namespace {

using M = ShortcutOwners::Modifier;

// Qt's portable key names where they differ from the X keysym names.
constexpr std::array<std::pair<std::string_view, std::string_view>, 11> keysymOfQtName = {{
    {"Space", "space"},
    {"Esc", "Escape"},
    {"Del", "Delete"},
    {"Ins", "Insert"},
    {"PgUp", "Prior"},
    {"PgDown", "Next"},
    {"Backspace", "BackSpace"},
    {"Enter", "KP_Enter"},
    {"SysReq", "Sys_Req"},
    {"ScrollLock", "Scroll_Lock"},
    {"CapsLock", "Caps_Lock"},
}};

} // namespace

std::optional<ShortcutBinding> KdeKeyBindings::parseShortcut(std::string_view text)
{
    if (text == "none") {
        return std::nullopt;
    }
    auto binding = ShortcutBinding::fromJoinedNames(
        text, '+', [](std::string_view name) -> std::optional<unsigned> {
            if (name == "Shift") {
                return M::shift;
            }
            if (name == "Ctrl") {
                return M::control;
            }
            if (name == "Alt") {
                return M::alt;
            }
            if (name == "Meta") {
                return M::super;
            }
            return std::nullopt;
        });
    if (binding) {
        const auto renamed =
            std::find_if(keysymOfQtName.begin(), keysymOfQtName.end(),
                         [&](const auto& entry) { return entry.first == binding->keysym; });
        if (renamed != keysymOfQtName.end()) {
            binding->keysym = std::string(renamed->second);
        }
    }
    return binding;
}

std::optional<std::vector<ShortcutBinding>> KdeKeyBindings::parse(std::string_view text)
{
    // Text only: bytes that are no UTF-8 would come back from trimming as replacement
    // characters, longer than they went in.
    if (text.size() > ConfiguredShortcutOwners::largestFile ||
        text.find('\0') != std::string_view::npos || !TextEncoding::isValidUtf8(text)) {
        return std::nullopt;
    }
    std::vector<ShortcutBinding> bindings;
    for (const std::string_view rawLine : splitString(text, '\n')) {
        const std::string line = trimmedString(rawLine);
        const std::size_t equals = line.find('=');
        if (line.empty() || line.front() == '[' || line.front() == '#' ||
            equals == std::string::npos) {
            continue;
        }
        // "_k_friendly_name" and other keys of the group say nothing of shortcuts.
        const std::string key = line.substr(0, equals);
        if (key.starts_with('_')) {
            continue;
        }
        const std::vector<std::string_view> fields =
            splitString(std::string_view(line).substr(equals + 1), ',');
        const std::string name = fields.size() >= 3 && !trimmedString(fields[2]).empty()
                                     ? trimmedString(fields[2])
                                     : key;
        // KConfig writes the tab between two shortcuts escaped, as "\t".
        std::string active;
        for (std::size_t at = 0; at < fields[0].size(); ++at) {
            const bool escapedTab =
                fields[0][at] == '\\' && at + 1 < fields[0].size() && fields[0][at + 1] == 't';
            active.push_back(escapedTab ? '\t' : fields[0][at]);
            at += escapedTab ? 1 : 0;
        }
        for (const std::string_view shortcut : splitString(active, '\t')) {
            if (bindings.size() >= mostBindings) {
                return bindings;
            }
            if (auto binding = parseShortcut(trimmedString(shortcut))) {
                binding->action = name;
                bindings.push_back(std::move(*binding));
            }
        }
    }
    return bindings;
}

std::vector<std::string> KdeKeyBindings::configurationFiles()
{
    return ConfiguredShortcutOwners::xdgConfigurationFiles("kglobalshortcutsrc");
}

} // namespace vexto
