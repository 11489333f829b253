#include "toolkit/TextView.hpp"

#include "foundation/TextEncoding.hpp"
#include "toolkit/Event.hpp"

#include <algorithm>

namespace vexto {

void TextView::setString(std::string text)
{
    text_ = std::move(text);
    selection_ = TextRange{std::min(selection_.location, length()), 0};
    notify(ViewChange::Value);
}

std::size_t TextView::length() const
{
    return TextEncoding::utf16FromUtf8(text_).size();
}

void TextView::setSelectedRange(TextRange range)
{
    const std::size_t total = length();
    range.location = std::min(range.location, total);
    range.length = std::min(range.length, total - range.location);
    if (range == selection_) {
        return;
    }
    selection_ = range;
    notify(ViewChange::Selection);
}

void TextView::selectAll()
{
    setSelectedRange(selectionRangeForProposedRange(TextRange{0, length()}));
}

void TextView::setFont(Font font)
{
    font_ = std::move(font);
    notify(ViewChange::Appearance);
}

void TextView::setTextColor(Color color)
{
    textColor_ = std::move(color);
    notify(ViewChange::Appearance);
}

void TextView::setBackgroundColor(Color color)
{
    backgroundColor_ = std::move(color);
    notify(ViewChange::Appearance);
}

void TextView::setParagraphStyle(ParagraphStyle style)
{
    paragraphStyle_ = style;
    notify(ViewChange::Appearance);
}

void TextView::keyDown(const Event& event)
{
    if (!editable_ || event.characters().empty()) {
        View::keyDown(event);
        return;
    }
    // Replace the selection with the typed characters.
    std::u16string units = TextEncoding::utf16FromUtf8(text_);
    const std::u16string typed = TextEncoding::utf16FromUtf8(event.characters());
    units.replace(selection_.location, selection_.length, typed);
    text_ = TextEncoding::utf8FromUtf16(units);
    selection_ = TextRange{selection_.location + typed.size(), 0};
    notify(ViewChange::Value);
}

} // namespace vexto
