#pragma once

#include "foundation/Color.hpp"

#include <string>
#include <variant>

namespace vexto {

// What the pane's archives hold: colours, and the strings that name catalog colours.
using ArchivedObject = std::variant<Color, std::string>;

} // namespace vexto
