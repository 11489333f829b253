#pragma once

#include "foundation/Point.hpp"

#include <cstdint>
#include <memory>
#include <string>

namespace vexto {

class TrackingArea;
class Window;

// A key or mouse event as the platform delivers it to windows and views.
class Event {
public:
    // The platform's event type numbers.
    enum class Type : int {
        LeftMouseDown = 1,
        LeftMouseUp = 2,
        RightMouseDown = 3,
        RightMouseUp = 4,
        MouseMoved = 5,
        LeftMouseDragged = 6,
        MouseEntered = 8,
        MouseExited = 9,
        KeyDown = 10,
        KeyUp = 11,
        FlagsChanged = 12,
    };

    // Modifier-word bits: device-independent ones, and the side ("device") bits.
    static constexpr std::uint64_t capsLockKeyMask = 0x10000;
    static constexpr std::uint64_t shiftKeyMask = 0x20000;
    static constexpr std::uint64_t controlKeyMask = 0x40000;
    static constexpr std::uint64_t optionKeyMask = 0x80000;
    static constexpr std::uint64_t commandKeyMask = 0x100000;
    static constexpr std::uint64_t functionKeyMask = 0x800000;
    static constexpr std::uint64_t deviceIndependentMask = 0xFFFF0000;
    // Which key of a pair is held: set beside the modifier's own bit.
    static constexpr std::uint64_t leftControlKeyMask = 0x0001;
    static constexpr std::uint64_t leftShiftKeyMask = 0x0002;
    static constexpr std::uint64_t rightShiftKeyMask = 0x0004;
    static constexpr std::uint64_t leftCommandKeyMask = 0x0008;
    static constexpr std::uint64_t rightCommandKeyMask = 0x0010;
    static constexpr std::uint64_t leftOptionKeyMask = 0x0020;
    static constexpr std::uint64_t rightOptionKeyMask = 0x0040;
    static constexpr std::uint64_t rightControlKeyMask = 0x2000;
    static constexpr std::uint64_t sideKeyMask =
        leftControlKeyMask | leftShiftKeyMask | rightShiftKeyMask | leftCommandKeyMask |
        rightCommandKeyMask | leftOptionKeyMask | rightOptionKeyMask | rightControlKeyMask;
    static constexpr std::uint64_t shiftControlOptionCommandMask =
        shiftKeyMask | controlKeyMask | optionKeyMask | commandKeyMask;

    static constexpr std::uint64_t maskFor(Type type)
    {
        return std::uint64_t{1} << static_cast<int>(type);
    }
    static constexpr std::uint64_t anyEventMask = ~std::uint64_t{0};

    static Event key(Type type, std::uint16_t keyCode, std::uint64_t modifierFlags,
                     std::string characters, std::string charactersIgnoringModifiers);
    static Event mouse(Type type, Point locationInWindow, int clickCount = 1,
                       std::uint64_t modifierFlags = 0);

    Type type() const { return type_; }
    bool isKey() const { return type_ == Type::KeyDown || type_ == Type::KeyUp; }
    std::uint16_t keyCode() const { return keyCode_; }
    std::uint64_t modifierFlags() const { return modifierFlags_; }
    const std::string& characters() const { return characters_; }
    const std::string& charactersIgnoringModifiers() const { return charactersIgnoringModifiers_; }
    Point locationInWindow() const { return location_; }
    int clickCount() const { return clickCount_; }

    Window* window() const { return window_; }
    void setWindow(Window* window) { window_ = window; }
    // For entered and exited events: the area that was crossed.
    TrackingArea* trackingArea() const { return trackingArea_; }
    void setTrackingArea(TrackingArea* area) { trackingArea_ = area; }

private:
    Type type_ = Type::MouseMoved;
    std::uint16_t keyCode_ = 0;
    std::uint64_t modifierFlags_ = 0;
    std::string characters_;
    std::string charactersIgnoringModifiers_;
    Point location_;
    int clickCount_ = 0;
    Window* window_ = nullptr;
    TrackingArea* trackingArea_ = nullptr;
};

} // namespace vexto
