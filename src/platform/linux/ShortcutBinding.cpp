#include "platform/linux/ShortcutBinding.hpp"

namespace vexto {

std::optional<ShortcutBinding> ShortcutBinding::fromJoinedNames(
    std::string_view text, char separator,
    const std::function<std::optional<unsigned>(std::string_view)>& modifierNamed)
{
    ShortcutBinding binding;
    while (true) {
        const std::size_t at = text.find(separator);
        if (at == std::string_view::npos || at + 1 == text.size()) {
            break;
        }
        const auto bits = modifierNamed(text.substr(0, at));
        if (!bits) {
            return std::nullopt;
        }
        binding.modifiers |= *bits;
        text.remove_prefix(at + 1);
    }
    if (text.empty()) {
        return std::nullopt;
    }
    binding.keysym = std::string(text);
    return binding;
}

} // namespace vexto
