#pragma once

#include <string_view>

// How a hot key is kept in the settings: a table under the hot-key identifier (the setting key)
// from direction to record, each record four strings. Each text stands here once.
namespace vexto::hotkeyrecord {

inline constexpr std::string_view keyCode = "Key Code";
inline constexpr std::string_view modifiers = "Modifiers";
inline constexpr std::string_view visualRepresentation = "Visual Representation";
inline constexpr std::string_view character = "Character";

inline constexpr std::string_view forward = "Forward";
inline constexpr std::string_view backward = "Backward";
// The direction of the hot keys that act once instead of stepping through a cycle.
inline constexpr std::string_view any = "Any";

} // namespace vexto::hotkeyrecord
