#pragma once

#include "qt/QtViewMirror.hpp"

namespace vexto {

class ColorWell;

// A colour well as a swatch. A click activates the well as the platform's does; the choice made in
// Qt's colour dialog then reaches the model through the shared colour panel.
class QtColorWellMirror final : public QtViewMirror {
public:
    QtColorWellMirror(std::shared_ptr<ColorWell> well, QWidget* parent);

protected:
    void syncAll() override;
};

} // namespace vexto
