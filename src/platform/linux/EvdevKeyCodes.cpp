#include "platform/linux/EvdevKeyCodes.hpp"

#include <utility>

namespace vexto {

namespace {

// Each key's Linux input (evdev) code and its virtual key code.
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

constexpr std::uint32_t xKeyCodeOffset = 8;

} // namespace

std::optional<std::uint16_t> EvdevKeyCodes::virtualKeyForEvdev(std::uint16_t evdev)
{
    for (const auto& [code, virtualKey] : evdevToVirtual) {
        if (code == evdev) {
            return virtualKey;
        }
    }
    return std::nullopt;
}

std::optional<std::uint16_t> EvdevKeyCodes::evdevForVirtualKey(std::uint16_t virtualKey)
{
    for (const auto& [code, key] : evdevToVirtual) {
        if (key == virtualKey) {
            return code;
        }
    }
    return std::nullopt;
}

std::optional<std::uint16_t> EvdevKeyCodes::virtualKeyForXKeyCode(std::uint32_t xKeyCode)
{
    if (xKeyCode <= xKeyCodeOffset || xKeyCode - xKeyCodeOffset > 0xFFFF) {
        return std::nullopt;
    }
    return virtualKeyForEvdev(static_cast<std::uint16_t>(xKeyCode - xKeyCodeOffset));
}

std::optional<std::uint32_t> EvdevKeyCodes::xKeyCodeForVirtualKey(std::uint16_t virtualKey)
{
    const auto evdev = evdevForVirtualKey(virtualKey);
    return evdev ? std::optional<std::uint32_t>(*evdev + xKeyCodeOffset) : std::nullopt;
}

bool EvdevKeyCodes::isKeypad(std::uint16_t virtualKey)
{
    switch (virtualKey) {
    case 0x52:
    case 0x53:
    case 0x54:
    case 0x55:
    case 0x56:
    case 0x57:
    case 0x58:
    case 0x59:
    case 0x5B:
    case 0x5C:
    case 0x41:
    case 0x43:
    case 0x45:
    case 0x4E:
    case 0x4B:
    case 0x4C:
        return true;
    default:
        return false;
    }
}

} // namespace vexto
