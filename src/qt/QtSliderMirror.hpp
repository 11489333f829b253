#pragma once

#include "qt/QtViewMirror.hpp"

namespace vexto {

class Slider;

// A QSlider with 1000 steps over the model slider's range; moving it sets the model's value
// and sends its action, as a drag does.
class QtSliderMirror final : public QtViewMirror {
public:
    static constexpr int steps = 1000;

    QtSliderMirror(std::shared_ptr<Slider> slider, QWidget* parent);

protected:
    void syncAll() override;

private:
    Slider& slider_;
};

} // namespace vexto
