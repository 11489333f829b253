#pragma once

#include "pane/PaneOutlets.hpp"

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <variant>

namespace vexto {

class ActionTarget;
class TextFieldDelegate;

// What a control is to the pane: how its state becomes a stored value and which action it sends.
enum class ControlKind {
    View,            // a container, no value
    Label,           // text the pane writes
    PushButton,      // an action, no value
    CheckBox,        // a boolean
    PopUpByTag,      // the selected item's tag
    PopUpByIndex,    // the selected item's index
    PullDown,        // a menu of commands, built when it opens
    Slider,          // a number through its initialiser
    ColorWell,       // an archived colour
    ExceptionsField, // a comma-separated list of names
    HotKeyField,     // a hot-key record under the key and direction
};

using OutletMember =
    std::variant<View * PaneOutlets::*, TabView * PaneOutlets::*, TextField * PaneOutlets::*,
                 Button * PaneOutlets::*, PopUpButton * PaneOutlets::*, Slider * PaneOutlets::*,
                 ColorWell * PaneOutlets::*, KRVXHotKeyTextView * PaneOutlets::*,
                 KRVXLinkTextField * PaneOutlets::*>;

// One outlet of the pane: its name, where it is and the setting it edits.
struct PaneControl {
    std::string_view outlet;
    OutletMember member;
    std::string_view tab; // identifier of its settings tab; empty above the tabs
    ControlKind kind;
    std::string_view key = {};             // none: the control stores nothing
    std::string_view direction = {};       // hot-key fields: "Forward", "Backward" or none
    std::string_view olderSystemsKey = {}; // the key without reduced Spaces support, when other
};

// The pane's settings and controls, in one place: the automation surface's outlet names, the
// control-to-setting mapping and the code defaults used while filling all come from here.
class PaneControlTable {
public:
    static std::span<const PaneControl> rows();

    static const PaneControl* byOutlet(std::string_view name);
    static const PaneControl* byKey(std::string_view key);
    static const PaneControl* forView(const View* view, const PaneOutlets& outlets);
    static View* view(const PaneControl& row, const PaneOutlets& outlets);

    // The setting of the control on the system the pane runs on now.
    static std::string_view keyOf(const PaneControl& row);
    // The default its setting is declared with (a tag, an index or a boolean as 1 or 0): what
    // the control shows while the settings hold none. None where the declaration gives none.
    static std::optional<std::int64_t> codeDefault(const PaneControl& row);

    // Gives every control of the table its target and the action its kind sends; exception
    // fields get the text delegate instead.
    static void bindActions(const PaneOutlets& outlets, ActionTarget* target,
                            TextFieldDelegate* textDelegate);
};

} // namespace vexto
