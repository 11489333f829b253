#include "KeyCombination.hpp"

#include "toolkit/Event.hpp"

#include <array>
#include <charconv>
#include <utility>
#include <vector>

namespace vexto {

namespace {

struct NamedModifier {
    std::string_view name;
    std::uint64_t flags;
};

// A modifier named without a side is pressed on the left, as a keyboard would report it.
constexpr NamedModifier modifiers[] = {
    {"cmd", Event::commandKeyMask | Event::leftCommandKeyMask},
    {"lcmd", Event::commandKeyMask | Event::leftCommandKeyMask},
    {"rcmd", Event::commandKeyMask | Event::rightCommandKeyMask},
    {"opt", Event::optionKeyMask | Event::leftOptionKeyMask},
    {"lopt", Event::optionKeyMask | Event::leftOptionKeyMask},
    {"ropt", Event::optionKeyMask | Event::rightOptionKeyMask},
    {"ctrl", Event::controlKeyMask | Event::leftControlKeyMask},
    {"lctrl", Event::controlKeyMask | Event::leftControlKeyMask},
    {"rctrl", Event::controlKeyMask | Event::rightControlKeyMask},
    {"shift", Event::shiftKeyMask | Event::leftShiftKeyMask},
    {"lshift", Event::shiftKeyMask | Event::leftShiftKeyMask},
    {"rshift", Event::shiftKeyMask | Event::rightShiftKeyMask},
    {"fn", Event::functionKeyMask},
    {"caps", Event::capsLockKeyMask},
};

struct NamedKey {
    std::string_view name;
    std::uint16_t code;
    std::string_view characters;
};

// The platform's virtual key codes (ANSI layout).
constexpr NamedKey keys[] = {
    {"a", 0, "a"},          {"s", 1, "s"},      {"d", 2, "d"},      {"f", 3, "f"},
    {"h", 4, "h"},          {"g", 5, "g"},      {"z", 6, "z"},      {"x", 7, "x"},
    {"c", 8, "c"},          {"v", 9, "v"},      {"b", 11, "b"},     {"q", 12, "q"},
    {"w", 13, "w"},         {"e", 14, "e"},     {"r", 15, "r"},     {"y", 16, "y"},
    {"t", 17, "t"},         {"1", 18, "1"},     {"2", 19, "2"},     {"3", 20, "3"},
    {"4", 21, "4"},         {"6", 22, "6"},     {"5", 23, "5"},     {"9", 25, "9"},
    {"7", 26, "7"},         {"8", 28, "8"},     {"0", 29, "0"},     {"o", 31, "o"},
    {"u", 32, "u"},         {"i", 34, "i"},     {"p", 35, "p"},     {"l", 37, "l"},
    {"j", 38, "j"},         {"k", 40, "k"},     {"n", 45, "n"},     {"m", 46, "m"},
    {"return", 36, "\r"},   {"tab", 48, "\t"},  {"space", 49, " "}, {"delete", 51, "\x7f"},
    {"escape", 53, "\x1b"}, {"f1", 122, ""},    {"f2", 120, ""},    {"f3", 99, ""},
    {"f4", 118, ""},        {"f5", 96, ""},     {"f6", 97, ""},     {"f7", 98, ""},
    {"f8", 100, ""},        {"f9", 101, ""},    {"f10", 109, ""},   {"f11", 103, ""},
    {"f12", 111, ""},       {"f13", 105, ""},   {"f14", 107, ""},   {"f15", 113, ""},
    {"f16", 106, ""},       {"f17", 64, ""},    {"f18", 79, ""},    {"f19", 80, ""},
    {"left", 123, ""},      {"right", 124, ""}, {"down", 125, ""},  {"up", 126, ""},
};

std::vector<std::string_view> split(std::string_view text, char separator)
{
    std::vector<std::string_view> parts;
    std::size_t start = 0;
    for (std::size_t at = text.find(separator); at != std::string_view::npos;
         at = text.find(separator, start)) {
        parts.push_back(text.substr(start, at - start));
        start = at + 1;
    }
    parts.push_back(text.substr(start));
    return parts;
}

} // namespace

std::optional<KeyCombination> KeyCombination::parse(std::string_view text)
{
    const auto parts = split(text, '+');
    KeyCombination combination;
    for (std::size_t i = 0; i + 1 < parts.size(); ++i) {
        bool known = false;
        for (const NamedModifier& modifier : modifiers) {
            if (modifier.name == parts[i]) {
                combination.modifierFlags |= modifier.flags;
                known = true;
            }
        }
        if (!known) {
            return std::nullopt;
        }
    }
    const std::string_view key = parts.back();
    if (key.starts_with("keycode=")) {
        const std::string_view digits = key.substr(8);
        unsigned code = 0;
        const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), code);
        if (result.ec != std::errc() || result.ptr != digits.data() + digits.size() ||
            code > 0xFFFF) {
            return std::nullopt;
        }
        combination.keyCode = static_cast<std::uint16_t>(code);
        return combination;
    }
    for (const NamedKey& named : keys) {
        if (named.name == key) {
            combination.keyCode = named.code;
            std::string characters(named.characters);
            if ((combination.modifierFlags & Event::shiftKeyMask) != 0 && characters.size() == 1 &&
                characters[0] >= 'a' && characters[0] <= 'z') {
                characters[0] = static_cast<char>(characters[0] - 'a' + 'A');
            }
            combination.characters = characters;
            combination.charactersIgnoringModifiers = characters;
            return combination;
        }
    }
    return std::nullopt;
}

} // namespace vexto
