#pragma once

#include "foundation/Color.hpp"
#include "foundation/Font.hpp"
#include "toolkit/ParagraphStyle.hpp"
#include "toolkit/View.hpp"

#include <cstddef>
#include <string>

namespace vexto {

// A range of text in UTF-16 code units, as the platform counts characters.
struct TextRange {
    std::size_t location = 0;
    std::size_t length = 0;
    friend bool operator==(const TextRange&, const TextRange&) = default;
};

// A text view: text, selection, font, paragraph style and colours. It takes the keyboard focus.
class TextView : public View {
public:
    using View::View;
    const char* className() const override { return "TextView"; }
    // Whether the text is a key combination in symbols (a hot key), which a front may show in
    // the desktop's own words.
    virtual bool showsKeyCombination() const { return false; }

    const std::string& string() const { return text_; }
    virtual void setString(std::string text);

    // True while every key, the window's own shortcuts included, belongs to this view.
    virtual bool takesEveryKey() const { return false; }
    // Length in UTF-16 code units.
    std::size_t length() const;

    TextRange selectedRange() const { return selection_; }
    void setSelectedRange(TextRange range);
    // Where a selection the person asked for really lands; subclasses may widen it.
    virtual TextRange selectionRangeForProposedRange(TextRange proposed) const { return proposed; }
    void selectAll();

    const Font& font() const { return font_; }
    void setFont(Font font);
    const Color& textColor() const { return textColor_; }
    void setTextColor(Color color);
    const Color& backgroundColor() const { return backgroundColor_; }
    void setBackgroundColor(Color color);
    const ParagraphStyle& paragraphStyle() const { return paragraphStyle_; }
    void setParagraphStyle(ParagraphStyle style);
    bool isEditable() const { return editable_; }
    void setEditable(bool editable) { editable_ = editable; }

    bool acceptsFirstResponder() const override { return true; }
    void keyDown(const Event& event) override;

private:
    std::string text_;
    TextRange selection_;
    Font font_ = Font::systemFontOfSize(13);
    Color textColor_ = Color::calibratedWhite(0, 1);
    Color backgroundColor_ = Color::calibratedWhite(1, 1);
    ParagraphStyle paragraphStyle_;
    bool editable_ = true;
};

} // namespace vexto
