#pragma once

#include "qt/QtViewMirror.hpp"

namespace vexto {

class Button;

// Check boxes as QCheckBox (three-state where mixed is allowed), other buttons as QPushButton.
// A click runs the model's click, whose state order (on, off, mixed) is the one shown.
class QtButtonMirror final : public QtViewMirror {
public:
    QtButtonMirror(std::shared_ptr<Button> button, QWidget* parent);

protected:
    void syncAll() override;

private:
    Button& button_;
};

} // namespace vexto
