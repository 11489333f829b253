#pragma once

#include "foundation/Color.hpp"
#include "foundation/Font.hpp"
#include "toolkit/Control.hpp"
#include "toolkit/TextAlignment.hpp"

namespace vexto {

class TextField;

class TextFieldDelegate {
public:
    virtual ~TextFieldDelegate() = default;
    virtual void controlTextDidChange(TextField& field) = 0;
};

// A one-line text: an editable field, or a label when not editable.
class TextField : public Control {
public:
    using Control::Control;
    const char* className() const override { return "TextField"; }

    bool isEditable() const { return editable_; }
    void setEditable(bool editable);
    bool isSelectable() const { return selectable_; }
    void setSelectable(bool selectable) { selectable_ = selectable; }
    bool isBordered() const { return bordered_; }
    void setBordered(bool bordered);
    bool drawsBackground() const { return drawsBackground_; }
    void setDrawsBackground(bool draws);

    const Font& font() const { return font_; }
    void setFont(Font font);
    const Color& textColor() const { return textColor_; }
    void setTextColor(Color color);
    TextAlignment alignment() const { return alignment_; }
    void setAlignment(TextAlignment alignment);
    const std::string& placeholder() const { return placeholder_; }
    void setPlaceholder(std::string placeholder) { placeholder_ = std::move(placeholder); }

    TextFieldDelegate* delegate() const { return delegate_; }
    void setDelegate(TextFieldDelegate* delegate) { delegate_ = delegate; }

    // The person changed the text (typing, pasting): the value is replaced and the delegate told.
    void userDidEditText(std::string text);

    bool acceptsFirstResponder() const override { return editable_; }

private:
    bool editable_ = false;
    bool selectable_ = false;
    bool bordered_ = false;
    bool drawsBackground_ = false;
    Font font_ = Font::systemFontOfSize(13);
    Color textColor_ = Color::calibratedWhite(0, 1);
    TextAlignment alignment_ = TextAlignment::Natural;
    std::string placeholder_;
    TextFieldDelegate* delegate_ = nullptr;
};

} // namespace vexto
