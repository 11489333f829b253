#include "hotkeys/KRVXHotKeyTextView.hpp"

namespace vexto {

void KRVXHotKeyTextView::setHotKeyIdentifier(std::string identifier, std::string direction)
{
    identifier_ = std::move(identifier);
    direction_ = std::move(direction);
}

std::string KRVXHotKeyTextView::hotKeyIdentifier() const
{
    return identifier_.empty() ? std::string(unsetIdentifier) : identifier_;
}

std::string KRVXHotKeyTextView::direction() const
{
    return direction_.empty() ? std::string(anyDirection) : direction_;
}

} // namespace vexto
