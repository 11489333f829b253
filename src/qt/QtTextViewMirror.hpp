#pragma once

#include "qt/QtViewMirror.hpp"

namespace vexto {

class TextView;

// A text view painted with the model's text, colours and alignment; a click gives it the keyboard
// focus in the model window.
class QtTextViewMirror final : public QtViewMirror {
public:
    QtTextViewMirror(std::shared_ptr<TextView> view, QWidget* parent);

protected:
    void syncAll() override;
};

} // namespace vexto
