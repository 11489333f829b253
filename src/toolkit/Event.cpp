#include "toolkit/Event.hpp"

namespace vexto {

Event Event::key(Type type, std::uint16_t keyCode, std::uint64_t modifierFlags,
                 std::string characters, std::string charactersIgnoringModifiers)
{
    Event event;
    event.type_ = type;
    event.keyCode_ = keyCode;
    event.modifierFlags_ = modifierFlags;
    event.characters_ = std::move(characters);
    event.charactersIgnoringModifiers_ = std::move(charactersIgnoringModifiers);
    return event;
}

Event Event::mouse(Type type, Point locationInWindow, int clickCount, std::uint64_t modifierFlags)
{
    Event event;
    event.type_ = type;
    event.location_ = locationInWindow;
    event.clickCount_ = clickCount;
    event.modifierFlags_ = modifierFlags;
    return event;
}

} // namespace vexto
