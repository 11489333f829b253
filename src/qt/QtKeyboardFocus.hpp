#pragma once

class QWidget;

namespace vexto {

// Keyboard use of the controls that draw themselves (colour wells, hot-key fields): they are
// reached with Tab, show that they have the focus, and are pressed with a key as with a click.
class QtKeyboardFocus {
public:
    // Space, Return and Enter press a focused control.
    static bool isPressKey(int key);
    // The widget takes the focus with Tab or a click and is redrawn whenever it gains or loses it.
    static void takeFocusAndShowIt(QWidget* widget);
};

} // namespace vexto
