#pragma once

#include <QString>

#include <string_view>

namespace vexto {

// A combination as the desktop names it ("Ctrl+Shift+F5", "Alt+Tab", "Meta+Space"), from the
// symbols a hot-key field shows (⌃⇧F5, ⌥⇥, ⌘Space). Symbols it cannot name in words (a left or
// right modifier of an exact match, an unknown key) come back as they are.
class QtKeyNames {
public:
    static QString nativeText(std::string_view symbols);
};

} // namespace vexto
