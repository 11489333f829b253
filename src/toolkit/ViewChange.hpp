#pragma once

namespace vexto {

// What changed in a view, as told to its observers.
enum class ViewChange {
    Frame,
    Hidden,
    Subviews,
    Display, // needs redrawing
    ToolTip,
    Notice,
    Enabled,
    Value, // state, value, text or colour
    Title,
    Items,     // menu items or tab items
    Selection, // selected item or tab
    Appearance // fonts, colours, styles
};

} // namespace vexto
