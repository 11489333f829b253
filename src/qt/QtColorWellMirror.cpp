#include "qt/QtColorWellMirror.hpp"

#include "qt/QtCanvas.hpp"
#include "toolkit/ColorPanel.hpp"
#include "toolkit/ColorWell.hpp"

#include <QColorDialog>
#include <QMouseEvent>
#include <QPainter>

namespace vexto {

namespace {

class Swatch final : public QWidget {
public:
    Swatch(ColorWell& well, QWidget* parent) : QWidget(parent), well_(well) {}

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        const QRect outer = rect().adjusted(0, 0, -1, -1);
        painter.setPen(well_.isActive() ? palette().color(QPalette::Highlight)
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
        if (!well_.isEnabled()) {
            painter.fillRect(outer, QColor(255, 255, 255, 120));
        }
    }

    void mousePressEvent(QMouseEvent*) override
    {
        if (!well_.isEnabled()) {
            return;
        }
        well_.performClick();
        if (!well_.isActive()) {
            return;
        }
        const auto options = ColorPanel::ignoresAlpha() ? QColorDialog::ColorDialogOptions()
                                                        : QColorDialog::ShowAlphaChannel;
        const QColor chosen = QColorDialog::getColor(
            QtCanvas::qtColor(well_.color()), this, QString::fromStdString(well_.title()), options);
        if (chosen.isValid()) {
            ColorPanel::shared().userDidPickColor(
                Color::calibratedRGB(float(chosen.redF()), float(chosen.greenF()),
                                     float(chosen.blueF()), float(chosen.alphaF())));
        }
        well_.deactivate();
    }

private:
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
