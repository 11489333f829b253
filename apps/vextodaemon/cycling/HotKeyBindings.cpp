#include "cycling/HotKeyBindings.hpp"

#include "foundation/DictionaryExtensions.hpp"
#include "foundation/HotKeyRecordFormat.hpp"
#include "settings/LayeredSettings.hpp"
#include "settings/SettingKeys.hpp"

#include <optional>

namespace vexto {

namespace {

namespace keys = settingkeys;
using A = DaemonAction;

constexpr HotKeyBindings::Row rows[] = {
    {keys::cycleAllWindows, A::CycleAllWindows},
    {keys::cycleNonMinimizedWindows, A::CycleNonMinimizedWindows},
    {keys::cycleMinimizedWindows, A::CycleMinimizedWindows},
    {keys::cycleAllWindowsOfFrontmostApplication, A::CycleAllWindowsOfFrontmostApplication},
    {keys::cycleNonMinimizedWindowsOfFrontmostApplication,
     A::CycleNonMinimizedWindowsOfFrontmostApplication},
    {keys::cycleMinimizedWindowsOfFrontmostApplication,
     A::CycleMinimizedWindowsOfFrontmostApplication},
    {keys::additionalZoomFrontmostWindow, A::ZoomFrontmostWindow},
    {keys::additionalMinimizeFrontmostWindow, A::MinimizeFrontmostWindow},
    {keys::additionalCloseFrontmostWindow, A::CloseFrontmostWindow},
    {keys::additionalDeminimizeAllMinimizedWindows, A::DeminimizeAllMinimizedWindows},
    {keys::additionalDeminimizeMinimizedWindowsOfFrontmostApplication,
     A::DeminimizeMinimizedWindowsOfFrontmostApplication},
    {keys::additionalCloseAllMinimizedWindows, A::CloseAllMinimizedWindows},
    {keys::additionalCloseMinimizedWindowsOfFrontmostApplication,
     A::CloseMinimizedWindowsOfFrontmostApplication},
};

// The record's number: an integer or the decimal text the pane writes.
std::optional<std::int64_t> recordNumber(const PlistDictionary& record, std::string_view field)
{
    const PlistValue* value = objectForKey(record, field);
    if (value == nullptr || !(value->isNumber() || value->isString())) {
        return std::nullopt;
    }
    return value->integerValue();
}

std::optional<HotKeyBinding> binding(const PlistDictionary& table, std::string_view direction,
                                     const HotKeyBindings::Row& row, StepDirection step)
{
    const PlistValue* found = objectForKey(table, direction);
    const PlistDictionary* record = found != nullptr ? found->asDictionary() : nullptr;
    if (record == nullptr) {
        return std::nullopt;
    }
    const auto keyCode = recordNumber(*record, hotkeyrecord::keyCode);
    const auto modifiers = recordNumber(*record, hotkeyrecord::modifiers);
    if (!keyCode || !modifiers) {
        return std::nullopt;
    }
    HotKeyBinding made;
    made.action = row.action;
    made.direction = step;
    // Only the low 16 bits name the key; the modifier word is kept whole, as recorded.
    made.keyCode = static_cast<std::uint16_t>(*keyCode);
    made.modifiers = static_cast<std::uint32_t>(*modifiers);
    if (const PlistValue* text = objectForKey(*record, hotkeyrecord::visualRepresentation);
        text != nullptr && text->isString()) {
        made.text = *text->asString();
    }
    return made;
}

} // namespace

std::span<const HotKeyBindings::Row> HotKeyBindings::table()
{
    return rows;
}

std::vector<HotKeyBinding> HotKeyBindings::fromSettings(const LayeredSettings& settings)
{
    std::vector<HotKeyBinding> bindings;
    for (const Row& row : rows) {
        const PlistDictionary* table = settings.dictionary(row.settingKey);
        if (table == nullptr) {
            continue;
        }
        const bool cycles = startsCycle(row.action);
        const auto add = [&](std::string_view direction, StepDirection step) {
            if (auto made = binding(*table, direction, row, step)) {
                bindings.push_back(std::move(*made));
            }
        };
        if (cycles) {
            add(hotkeyrecord::forward, StepDirection::Forward);
            add(hotkeyrecord::backward, StepDirection::Backward);
        } else {
            add(hotkeyrecord::any, StepDirection::Forward);
        }
    }
    return bindings;
}

} // namespace vexto
