#pragma once

#include "foundation/PlistValue.hpp"

#include <string>
#include <string_view>

namespace vexto {

class View;

// What a host application sees of a preference pane: it loads the pane's main view, shows it,
// and tells the pane as it is selected and left. Calls go through this table of virtual
// functions only, so a pane loaded from a module runs its own code.
class PreferencePane {
public:
    virtual ~PreferencePane() = default;

    // Builds the main view (none when it cannot be built).
    virtual View* loadMainView() = 0;
    virtual View* mainView() const = 0;
    virtual void willSelect() = 0;
    virtual void didSelect() = 0;
    virtual void willUnselect() = 0;
    virtual void didUnselect() = 0;

    // For hosts that automate the pane: its controls by outlet name, its settings by key, and its
    // actions by selector. None, none and false where the pane has no such thing.
    virtual View* outletNamed(std::string_view name) const = 0;
    // The button that belongs to an outlet, such as a hot-key field's clear button; or none.
    virtual View* accessoryOfOutletNamed(std::string_view name) const = 0;
    // The address a link field's arrow opens; empty for other outlets and fields without a link.
    virtual std::string linkOfOutletNamed(std::string_view name) const = 0;
    // Where the pane keeps its settings on disk; empty when it has no such file.
    virtual std::string settingsFilePath() const = 0;
    virtual const PlistValue* valueForSettingKey(std::string_view key) = 0;
    virtual bool performActionNamed(std::string_view selector) = 0;
};

} // namespace vexto
