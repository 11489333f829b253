#include "qt/QtKeyEvents.hpp"

#include "platform/linux/EvdevKeyCodes.hpp"
#include "toolkit/Event.hpp"
#include "toolkit/ModifierSides.hpp"

#include <QKeyEvent>

#include <array>
#include <utility>

namespace vexto {

namespace {

// Without an X key code (offscreen, synthetic events): Qt's keys on a US keyboard.
std::optional<std::uint16_t> virtualKeyForQtKey(int key)
{
    static constexpr std::array<std::uint16_t, 26> letters{
        0x00, 0x0B, 0x08, 0x02, 0x0E, 0x03, 0x05, 0x04, 0x22, 0x26, 0x28, 0x25, 0x2E,
        0x2D, 0x1F, 0x23, 0x0C, 0x0F, 0x01, 0x11, 0x20, 0x09, 0x0D, 0x07, 0x10, 0x06};
    static constexpr std::array<std::uint16_t, 10> digits{0x1D, 0x12, 0x13, 0x14, 0x15,
                                                          0x17, 0x16, 0x1A, 0x1C, 0x19};
    static constexpr std::array<std::uint16_t, 19> functionKeys{
        0x7A, 0x78, 0x63, 0x76, 0x60, 0x61, 0x62, 0x64, 0x65, 0x6D,
        0x67, 0x6F, 0x69, 0x6B, 0x71, 0x6A, 0x40, 0x4F, 0x50};
    if (key >= Qt::Key_A && key <= Qt::Key_Z) {
        return letters[static_cast<std::size_t>(key - Qt::Key_A)];
    }
    if (key >= Qt::Key_0 && key <= Qt::Key_9) {
        return digits[static_cast<std::size_t>(key - Qt::Key_0)];
    }
    if (key >= Qt::Key_F1 && key <= Qt::Key_F19) {
        return functionKeys[static_cast<std::size_t>(key - Qt::Key_F1)];
    }
    switch (key) {
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        return 0x30;
    case Qt::Key_Space:
        return 0x31;
    case Qt::Key_Return:
        return 0x24;
    case Qt::Key_Enter:
        return 0x4C;
    case Qt::Key_Escape:
        return 0x35;
    case Qt::Key_Backspace:
        return 0x33;
    case Qt::Key_Delete:
        return 0x75;
    case Qt::Key_Left:
        return 0x7B;
    case Qt::Key_Right:
        return 0x7C;
    case Qt::Key_Down:
        return 0x7D;
    case Qt::Key_Up:
        return 0x7E;
    case Qt::Key_Home:
        return 0x73;
    case Qt::Key_End:
        return 0x77;
    case Qt::Key_PageUp:
        return 0x74;
    case Qt::Key_PageDown:
        return 0x79;
    default:
        return std::nullopt;
    }
}

std::optional<std::uint16_t> virtualKey(const QKeyEvent& event)
{
    if (const auto code = EvdevKeyCodes::virtualKeyForXKeyCode(event.nativeScanCode())) {
        return code;
    }
    return virtualKeyForQtKey(event.key());
}

// The keyboard is one for the whole process, whichever window its keys go to.
ModifierSides& modifierSides()
{
    static ModifierSides sides;
    return sides;
}

// Qt says which modifiers are held, not on which side: the sides come from the modifier keys'
// own presses and releases.
std::uint64_t modifierWord(Qt::KeyboardModifiers modifiers)
{
    std::uint64_t word = 0;
    if (modifiers & Qt::ShiftModifier) {
        word |= Event::shiftKeyMask;
    }
    if (modifiers & Qt::ControlModifier) {
        word |= Event::controlKeyMask;
    }
    if (modifiers & Qt::AltModifier) {
        word |= Event::optionKeyMask;
    }
    if (modifiers & Qt::MetaModifier) {
        word |= Event::commandKeyMask;
    }
    return modifierSides().withDeviceBits(word);
}

// Modifier keys change the modifier word; they are no keys of their own for the pane.
bool isModifierKey(int key)
{
    switch (key) {
    case Qt::Key_Shift:
    case Qt::Key_Control:
    case Qt::Key_Alt:
    case Qt::Key_AltGr:
    case Qt::Key_Meta:
    case Qt::Key_Super_L:
    case Qt::Key_Super_R:
    case Qt::Key_Hyper_L:
    case Qt::Key_Hyper_R:
    case Qt::Key_CapsLock:
    case Qt::Key_NumLock:
    case Qt::Key_ScrollLock:
        return true;
    default:
        return false;
    }
}

} // namespace

std::optional<Event> QtKeyEvents::modelEvent(const QKeyEvent& event)
{
    if (isModifierKey(event.key())) {
        if (const auto keyCode = virtualKey(event)) {
            modifierSides().noteKey(*keyCode, event.type() != QEvent::KeyRelease);
        }
        return std::nullopt;
    }
    const auto keyCode = virtualKey(event);
    if (!keyCode) {
        return std::nullopt;
    }
    const auto type =
        event.type() == QEvent::KeyRelease ? Event::Type::KeyUp : Event::Type::KeyDown;
    std::string characters = event.text().toStdString();
    if (*keyCode == 0x30) {
        characters = "\t";
    } else if (*keyCode == 0x35) {
        characters = "\x1b";
    }
    // Ignoring modifiers: the key's own character; a letter's as typed with Shift alone.
    std::string ignoring = characters;
    if (event.key() >= Qt::Key_A && event.key() <= Qt::Key_Z) {
        const char letter = static_cast<char>('a' + (event.key() - Qt::Key_A));
        ignoring = std::string(1, (event.modifiers() & Qt::ShiftModifier) ? letter - 32 : letter);
    } else if (event.key() == Qt::Key_Space) {
        ignoring = " ";
    }
    return Event::key(type, *keyCode, modifierWord(event.modifiers()), characters, ignoring);
}

} // namespace vexto
