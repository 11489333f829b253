#pragma once

#include "qt/QtViewMirror.hpp"

namespace vexto {

// Views that draw themselves: painted through the QPainter canvas, with mouse presses, drags,
// releases and moves sent to the model window in its own coordinates.
class QtCustomViewMirror final : public QtViewMirror {
public:
    QtCustomViewMirror(std::shared_ptr<View> view, QWidget* parent);

protected:
    // What it draws follows its state: a change of it (enabled, value, title) repaints it.
    void syncAll() override;
};

} // namespace vexto
