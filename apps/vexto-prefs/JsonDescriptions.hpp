#pragma once

#include "foundation/PlistValue.hpp"

#include <string>
#include <string_view>

namespace vexto {

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
};

} // namespace vexto
