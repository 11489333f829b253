#include "qt/QtColorWellMirror.hpp"

#include "qt/QtCanvas.hpp"
#include "qt/QtKeyboardFocus.hpp"
#include "toolkit/ColorPanel.hpp"
#include "toolkit/ColorWell.hpp"
#include "toolkit/Slider.hpp"

#include <QBoxLayout>
#include <QColorDialog>
#include <QMouseEvent>
#include <QPainter>

#include <utility>
#include <vector>

namespace vexto {

namespace {

// Holds the colour panel's accessory view under the colour chooser: the view is as wide as the
// dialog and keeps its own height, and its subviews follow its width as they are told to.
class AccessoryHolder final : public QWidget {
public:
    AccessoryHolder(std::shared_ptr<View> accessory, QWidget* parent)
        : QWidget(parent), accessory_(accessory), mirror_(QtViewMirror::create(accessory, this))
    {
        setFixedHeight(int(accessory_->frame().height()));
        setMinimumWidth(int(accessory_->frame().width()));
    }

protected:
    void resizeEvent(QResizeEvent*) override
    {
        accessory_->setFrameSize(Size{double(width()), accessory_->frame().height()});
        mirror_->place();
    }

private:
    std::shared_ptr<View> accessory_;
    std::unique_ptr<QtViewMirror> mirror_;
};

class Swatch final : public QWidget {
public:
    Swatch(ColorWell& well, QWidget* parent) : QWidget(parent), well_(well)
    {
        QtKeyboardFocus::takeFocusAndShowIt(this);
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        const QRect outer = rect().adjusted(0, 0, -1, -1);
        painter.setPen(well_.isActive() || hasFocus() ? palette().color(QPalette::Highlight)
                                                      : QColor(150, 150, 150));
        painter.setBrush(palette().color(QPalette::Button));
        painter.drawRect(outer);
        const QRect inner = outer.adjusted(4, 4, -3, -3);
        // A checkerboard shows through translucent colours.
        for (int y = inner.top(); y <= inner.bottom(); y += 4) {
            for (int x = inner.left(); x <= inner.right(); x += 4) {
                painter.fillRect(QRect(x, y, 4, 4).intersected(inner),
                                 ((x + y) / 4) % 2 == 0 ? Qt::white : QColor(200, 200, 200));
            }
        }
        painter.fillRect(inner, QtCanvas::qtColor(well_.color()));
        {
            // What the well adds over its colour (a gradient well's shading), in its own
            // coordinates.
            QtCanvas canvas(painter, well_.frame().height());
            well_.drawRect(canvas, well_.bounds());
        }
        if (!well_.isEnabled()) {
            painter.fillRect(outer, QColor(255, 255, 255, 120));
        }
    }

    void mousePressEvent(QMouseEvent*) override { press(); }

    // Reached with Tab, the well is pressed with Space or Return as it is clicked.
    void keyPressEvent(QKeyEvent* event) override
    {
        if (QtKeyboardFocus::isPressKey(event->key())) {
            press();
            return;
        }
        QWidget::keyPressEvent(event);
    }

    void press()
    {
        if (!well_.isEnabled()) {
            return;
        }
        well_.performClick();
        if (!well_.isActive()) {
            return;
        }
        QColorDialog dialog(QtCanvas::qtColor(well_.color()), this);
        dialog.setWindowTitle(QString::fromStdString(well_.title()));
        // Qt's own dialog, so that the panel's accessory view can sit in its layout.
        dialog.setOptions(ColorPanel::ignoresAlpha()
                              ? QColorDialog::DontUseNativeDialog
                              : QColorDialog::DontUseNativeDialog | QColorDialog::ShowAlphaChannel);
        if (const auto& accessory = ColorPanel::shared().accessoryView()) {
            auto* holder = new AccessoryHolder(accessory, &dialog);
            if (auto* box = qobject_cast<QBoxLayout*>(dialog.layout())) {
                box->insertWidget(box->count() - 1, holder); // above the buttons
            } else {
                dialog.layout()->addWidget(holder);
            }
        }
        // As the platform's colour panel does, every colour picked applies at once; Cancel puts
        // back the colour and the accessory's sliders (the gradient) as they were.
        const Color original = well_.color();
        const std::vector<std::pair<Slider*, double>> sliders =
            slidersOf(ColorPanel::shared().accessoryView().get());
        QObject::connect(&dialog, &QColorDialog::currentColorChanged, &dialog,
                         [](const QColor& color) { pick(color); });
        if (dialog.exec() != QDialog::Accepted) {
            if (well_.color() != original) {
                ColorPanel::shared().userDidPickColor(original);
            }
            for (const auto& [slider, value] : sliders) {
                if (slider->doubleValue() != value) {
                    slider->setDoubleValue(value);
                    slider->sendAction();
                }
            }
        } else {
            pick(dialog.currentColor());
        }
        well_.deactivate();
    }

private:
    static void pick(const QColor& color)
    {
        const Color picked = Color::calibratedRGB(float(color.redF()), float(color.greenF()),
                                                  float(color.blueF()), float(color.alphaF()));
        if (ColorPanel::shared().color() != picked) {
            ColorPanel::shared().userDidPickColor(picked);
        }
    }
    // The sliders of an accessory view, with their values now.
    static std::vector<std::pair<Slider*, double>> slidersOf(View* accessory)
    {
        std::vector<std::pair<Slider*, double>> found;
        if (accessory == nullptr) {
            return found;
        }
        for (const auto& child : accessory->subviews()) {
            if (auto* slider = dynamic_cast<Slider*>(child.get())) {
                found.emplace_back(slider, slider->doubleValue());
            }
        }
        return found;
    }

    ColorWell& well_;
};

} // namespace

QtColorWellMirror::QtColorWellMirror(std::shared_ptr<ColorWell> well, QWidget* parent)
    : QtViewMirror(well, new Swatch(*well, parent))
{}

void QtColorWellMirror::syncAll()
{
    widget()->update();
}

} // namespace vexto
