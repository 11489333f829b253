#include "qt/QtKeyEvents.hpp"

#include "toolkit/Event.hpp"

#include <QKeyEvent>

#include <array>
#include <utility>

namespace vexto {

namespace {

// Linux input (evdev) codes to the platform's virtual key codes; X key codes are these plus 8.
constexpr std::pair<std::uint16_t, std::uint16_t> evdevToVirtual[] = {
    {30, 0x00},  {31, 0x01},  {32, 0x02},  {33, 0x03},  {35, 0x04},  {34, 0x05},  {44, 0x06},
    {45, 0x07},  {46, 0x08},  {47, 0x09},  {48, 0x0B},  {16, 0x0C},  {17, 0x0D},  {18, 0x0E},
    {19, 0x0F},  {21, 0x10},  {20, 0x11},  {24, 0x1F},  {22, 0x20},  {23, 0x22},  {25, 0x23},
    {38, 0x25},  {36, 0x26},  {37, 0x28},  {49, 0x2D},  {50, 0x2E},  {2, 0x12},   {3, 0x13},
    {4, 0x14},   {5, 0x15},   {6, 0x17},   {7, 0x16},   {8, 0x1A},   {9, 0x1C},   {10, 0x19},
    {11, 0x1D},  {13, 0x18},  {12, 0x1B},  {26, 0x21},  {27, 0x1E},  {39, 0x29},  {40, 0x27},
    {41, 0x32},  {43, 0x2A},  {51, 0x2B},  {52, 0x2F},  {53, 0x2C},  {86, 0x0A},  {124, 0x5D},
    {89, 0x5E},  {121, 0x5F}, {28, 0x24},  {15, 0x30},  {57, 0x31},  {14, 0x33},  {1, 0x35},
    {111, 0x75}, {110, 0x72}, {102, 0x73}, {107, 0x77}, {104, 0x74}, {109, 0x79}, {105, 0x7B},
    {106, 0x7C}, {108, 0x7D}, {103, 0x7E}, {127, 0x6E}, {125, 0x37}, {126, 0x36}, {42, 0x38},
    {54, 0x3C},  {56, 0x3A},  {100, 0x3D}, {29, 0x3B},  {97, 0x3E},  {58, 0x39},  {59, 0x7A},
    {60, 0x78},  {61, 0x63},  {62, 0x76},  {63, 0x60},  {64, 0x61},  {65, 0x62},  {66, 0x64},
    {67, 0x65},  {68, 0x6D},  {87, 0x67},  {88, 0x6F},  {183, 0x69}, {184, 0x6B}, {185, 0x71},
    {186, 0x6A}, {187, 0x40}, {188, 0x4F}, {189, 0x50}, {82, 0x52},  {79, 0x53},  {80, 0x54},
    {81, 0x55},  {75, 0x56},  {76, 0x57},  {77, 0x58},  {71, 0x59},  {72, 0x5B},  {73, 0x5C},
    {83, 0x41},  {55, 0x43},  {78, 0x45},  {74, 0x4E},  {98, 0x4B},  {96, 0x4C},
};

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
    const quint32 xKeyCode = event.nativeScanCode();
    if (xKeyCode > 8) {
        for (const auto& [evdev, virtualCode] : evdevToVirtual) {
            if (evdev == xKeyCode - 8) {
                return virtualCode;
            }
        }
    }
    return virtualKeyForQtKey(event.key());
}

// Qt does not tell left from right here: the left side's device bit stands in.
std::uint64_t modifierWord(Qt::KeyboardModifiers modifiers)
{
    std::uint64_t word = 0;
    if (modifiers & Qt::ShiftModifier) {
        word |= Event::shiftKeyMask | 0x0002;
    }
    if (modifiers & Qt::ControlModifier) {
        word |= Event::controlKeyMask | 0x0001;
    }
    if (modifiers & Qt::AltModifier) {
        word |= Event::optionKeyMask | 0x0020;
    }
    if (modifiers & Qt::MetaModifier) {
        word |= Event::commandKeyMask | 0x0008;
    }
    return word;
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
