#pragma once

#include "qt/QtViewMirror.hpp"

namespace vexto {

class TextField;

// Editable fields as QLineEdit (each edit reaches the model and its delegate), labels as QLabel.
class QtTextFieldMirror final : public QtViewMirror {
public:
    QtTextFieldMirror(std::shared_ptr<TextField> field, QWidget* parent);

protected:
    void syncAll() override;

private:
    TextField& field_;
};

} // namespace vexto
