#include "toolkit/TextField.hpp"

namespace vexto {

void TextField::setEditable(bool editable)
{
    editable_ = editable;
    if (editable) {
        selectable_ = true;
    }
    notify(ViewChange::Appearance);
}

void TextField::setBordered(bool bordered)
{
    bordered_ = bordered;
    notify(ViewChange::Appearance);
}

void TextField::setDrawsBackground(bool draws)
{
    drawsBackground_ = draws;
    notify(ViewChange::Appearance);
}

void TextField::setFont(Font font)
{
    font_ = std::move(font);
    notify(ViewChange::Appearance);
}

void TextField::setTextColor(Color color)
{
    textColor_ = std::move(color);
    notify(ViewChange::Appearance);
}

void TextField::setAlignment(TextAlignment alignment)
{
    alignment_ = alignment;
    notify(ViewChange::Appearance);
}

void TextField::userDidEditText(std::string text)
{
    setStringValue(std::move(text));
    if (delegate_ != nullptr) {
        delegate_->controlTextDidChange(*this);
    }
}

} // namespace vexto
