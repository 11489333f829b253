#pragma once

#include <optional>
#include <string>

namespace vexto {

class Menu;
class MenuItem;

// The layouts menu's helpers.

inline constexpr const char* layoutFileType = "vextolayout";

// A layout's name: its file name without folder and extension ("Dark.vextolayout" is "Dark").
std::string layoutNameForPath(const std::string& path);
// A layout item: titled with the layout's name, standing for the file, with the preset image
// or the user layout image; it has no action of its own.
MenuItem& addItemForLayoutAtPath(Menu& menu, const std::string& path, bool preset);
// An item for every file of the folder whose name ends in the layout type, in the order the
// folder lists them, after one separator; nothing at all when there is none.
void addItemsForLayoutsAtPath(Menu& menu, const std::optional<std::string>& folder);
// Removes items below the first `top` until only `top` + `bottom` are left.
void removeItemsSparingAtTop(Menu& menu, int top, int bottom);
// A blank image that evens out the rows: 1 x 24 points when tall (one shared image), else 1 x 1.
void set1pxDummyImageAsHeightFix(MenuItem& item, bool tall);

} // namespace vexto
