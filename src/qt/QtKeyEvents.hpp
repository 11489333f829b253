#pragma once

#include <optional>

class QKeyEvent;

namespace vexto {

class Event;

// Qt's key presses in the platform's terms: its virtual key codes (from the X key code where Qt
// gives one, else from Qt's key) and its modifier word with the side bits of the modifier keys
// seen going down.
class QtKeyEvents {
public:
    static std::optional<Event> modelEvent(const QKeyEvent& event);
};

} // namespace vexto
