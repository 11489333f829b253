#include "qt/QtSliderMirror.hpp"

#include "toolkit/Slider.hpp"

#include <QSlider>

#include <cmath>

namespace vexto {

QtSliderMirror::QtSliderMirror(std::shared_ptr<Slider> slider, QWidget* parent)
    : QtViewMirror(slider, new QSlider(Qt::Horizontal, parent)), slider_(*slider)
{
    auto* widget = static_cast<QSlider*>(this->widget());
    widget->setRange(0, steps);
    QObject::connect(widget, &QSlider::valueChanged, widget, [this](int position) {
        if (pushing_) {
            return;
        }
        const double span = slider_.maxValue() - slider_.minValue();
        slider_.setDoubleValue(slider_.minValue() + span * position / steps);
        slider_.sendAction();
    });
}

void QtSliderMirror::syncAll()
{
    auto* widget = static_cast<QSlider*>(this->widget());
    const QSignalBlocker block(widget);
    widget->setEnabled(slider_.isEnabled());
    const double span = slider_.maxValue() - slider_.minValue();
    const double fraction = span != 0 ? (slider_.doubleValue() - slider_.minValue()) / span : 0;
    widget->setValue(int(std::lround(fraction * steps)));
}

} // namespace vexto
