#pragma once

#include "foundation/PlistValue.hpp"

#include <string>
#include <string_view>

namespace vexto {

class ColorPanel;
class Slider;
class View;
class Window;
class TabView;

// One-line JSON for what scripts print: setting values, controls and the window.
class JsonDescriptions {
public:
    static std::string string(std::string_view text);
    // Data reads {"data":"BASE64"}, with "color" added when it holds an archived colour.
    static std::string value(const PlistValue& value);
    static std::string setting(std::string_view key, const PlistValue* value);
    // `link`: the address the control's arrow opens, when it has one.
    static std::string control(std::string_view outlet, const View& view,
                               std::string_view link = {});
    static std::string window(const Window& window, const TabView* tabs);
    // The colour panel: shown or not, its colour, the title of the well it edits, and the
    // slider on its accessory strip (null without one).
    static std::string colorPanel(const ColorPanel& panel);
    // The first slider directly on a view (a colour panel's strip), or none.
    static Slider* enclosedSlider(const View& view);
};

} // namespace vexto
