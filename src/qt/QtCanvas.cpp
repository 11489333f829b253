#include "qt/QtCanvas.hpp"

#include "qt/QtFonts.hpp"
#include "toolkit/Image.hpp"

#include <QFont>
#include <QLinearGradient>
#include <QPainterPath>

#include <cmath>
#include <numbers>

namespace vexto {

namespace {

QPainter::CompositionMode qtMode(CompositingOperation operation)
{
    switch (operation) {
    case CompositingOperation::SourceAtop:
        return QPainter::CompositionMode_SourceAtop;
    case CompositingOperation::DestinationIn:
        return QPainter::CompositionMode_DestinationIn;
    case CompositingOperation::SourceOver:
        break;
    }
    return QPainter::CompositionMode_SourceOver;
}

QImage qtImage(const Bitmap& bitmap)
{
    QImage image(bitmap.rgba.data(), bitmap.width, bitmap.height, bitmap.width * 4,
                 QImage::Format_RGBA8888);
    return image.copy(); // own the pixels
}

void flip(QPainter& painter, double height)
{
    painter.translate(0, height);
    painter.scale(1, -1);
}

} // namespace

QtCanvas::QtCanvas(QPainter& painter, double viewHeight) : base_(painter), viewHeight_(viewHeight)
{
    base_.save();
    base_.setRenderHint(QPainter::Antialiasing);
    flip(base_, viewHeight_);
}

QtCanvas::~QtCanvas()
{
    while (!layers_.empty()) {
        endTransparencyLayer();
    }
    base_.restore();
}

QColor QtCanvas::qtColor(const Color& color)
{
    const Color::Rgba c = color.rgba();
    const auto unit = [](float v) {
        return std::clamp(static_cast<double>(v), 0.0, 1.0);
    };
    return QColor::fromRgbF(unit(c.red), unit(c.green), unit(c.blue), unit(c.alpha));
}

Qt::Alignment QtCanvas::qtAlignment(TextAlignment alignment)
{
    switch (alignment) {
    case TextAlignment::Right:
        return Qt::AlignRight | Qt::AlignVCenter;
    case TextAlignment::Center:
        return Qt::AlignHCenter | Qt::AlignVCenter;
    default:
        return Qt::AlignLeft | Qt::AlignVCenter;
    }
}

QPainter& QtCanvas::painter()
{
    return layers_.empty() ? base_ : *layers_.back().painter;
}

QPainterPath QtCanvas::qtPath(const BezierPath& path) const
{
    QPainterPath qt;
    const Rect r = path.bounds();
    const QRectF rect(r.minX(), r.minY(), r.width(), r.height());
    switch (path.kind()) {
    case BezierPath::Kind::Oval:
        qt.addEllipse(rect);
        break;
    case BezierPath::Kind::Polygon: {
        QPolygonF polygon;
        for (const Point& point : path.points()) {
            polygon << QPointF(point.x, point.y);
        }
        qt.addPolygon(polygon);
        qt.closeSubpath();
        break;
    }
    case BezierPath::Kind::Rect:
        if (path.isRounded()) {
            qt.addRoundedRect(rect, path.xRadius(), path.yRadius());
        } else {
            qt.addRect(rect);
        }
        break;
    }
    return qt;
}

QRectF QtCanvas::deviceRect(Rect rect) const
{
    return QRectF(rect.minX(), viewHeight_ - rect.maxY(), rect.width(), rect.height());
}

template <typename Draw> void QtCanvas::upright(Draw draw)
{
    QPainter& p = painter();
    p.save();
    p.scale(1, -1);
    p.translate(0, -viewHeight_);
    draw(p);
    p.restore();
}

void QtCanvas::saveGraphicsState()
{
    painter().save();
    stateStack_.push_back(TextState{shadow_, smoothFonts_});
}

void QtCanvas::restoreGraphicsState()
{
    painter().restore();
    if (!stateStack_.empty()) {
        shadow_ = stateStack_.back().shadow;
        smoothFonts_ = stateStack_.back().smoothFonts;
        stateStack_.pop_back();
    }
}

void QtCanvas::fill(const BezierPath& path, const Color& color, CompositingOperation operation)
{
    const QPainterPath shape = qtPath(path);
    if (shadow_) {
        // QPainter has no shadows: a copy of the shape in the shadow's colour, offset, unblurred.
        painter().fillPath(shape.translated(shadow_->offset.width, shadow_->offset.height),
                           qtColor(shadow_->color));
    }
    const QPainter::CompositionMode previous = painter().compositionMode();
    painter().setCompositionMode(qtMode(operation));
    painter().fillPath(shape, qtColor(color));
    painter().setCompositionMode(previous);
}

void QtCanvas::clip(const BezierPath& path)
{
    painter().setClipPath(qtPath(path), Qt::IntersectClip);
}

void QtCanvas::drawLinearGradient(const Gradient& gradient, Rect rect, double angle)
{
    const double radians = angle * std::numbers::pi / 180.0;
    const double dx = std::cos(radians);
    const double dy = std::sin(radians);
    const double half = (std::abs(rect.width() * dx) + std::abs(rect.height() * dy)) / 2;
    const QPointF center(rect.midX(), rect.midY());
    QLinearGradient qt(center - QPointF(dx, dy) * half, center + QPointF(dx, dy) * half);
    qt.setColorAt(0, qtColor(gradient.startColor()));
    qt.setColorAt(1, qtColor(gradient.endColor()));
    painter().fillRect(QRectF(rect.minX(), rect.minY(), rect.width(), rect.height()), qt);
}

void QtCanvas::setShadow(const std::optional<Shadow>& shadow)
{
    shadow_ = shadow;
}

void QtCanvas::setShouldSmoothFonts(bool smooth)
{
    smoothFonts_ = smooth;
}

void QtCanvas::beginTransparencyLayer(Rect rect)
{
    const QRect device = base_.transform()
                             .mapRect(QRectF(rect.minX(), rect.minY(), rect.width(), rect.height()))
                             .toAlignedRect();
    Layer layer;
    layer.image = std::make_unique<QImage>(device.size().expandedTo(QSize(1, 1)),
                                           QImage::Format_ARGB32_Premultiplied);
    layer.image->fill(Qt::transparent);
    layer.painter = std::make_unique<QPainter>(layer.image.get());
    layer.painter->setRenderHint(QPainter::Antialiasing);
    layer.origin = device.topLeft();
    // Same model coordinates as the base painter, shifted to the layer's corner.
    layer.painter->setTransform(base_.transform() *
                                QTransform::fromTranslate(-device.left(), -device.top()));
    layers_.push_back(std::move(layer));
}

void QtCanvas::endTransparencyLayer()
{
    if (layers_.empty()) {
        return;
    }
    Layer layer = std::move(layers_.back());
    layers_.pop_back();
    layer.painter->end();
    QPainter& target = painter();
    target.save();
    target.resetTransform();
    const QPoint parentOrigin = layers_.empty() ? QPoint(0, 0) : layers_.back().origin;
    target.drawImage(layer.origin - parentOrigin, *layer.image);
    target.restore();
}

void QtCanvas::drawImage(const Image& image, Rect destination, CompositingOperation operation,
                         float fraction)
{
    const QRectF target = deviceRect(destination);
    if (const Bitmap* bitmap = image.bitmap()) {
        const QImage pixels = qtImage(*bitmap);
        upright([&](QPainter& p) {
            p.setCompositionMode(qtMode(operation));
            p.setOpacity(fraction);
            p.drawImage(target, pixels);
        });
        return;
    }
    if (image.drawing() && image.size().width > 0 && image.size().height > 0) {
        // Replay the drawing at the image's own size, then place it like pixels.
        QImage rendered(
            QSize(int(std::ceil(image.size().width)), int(std::ceil(image.size().height))),
            QImage::Format_ARGB32_Premultiplied);
        rendered.fill(Qt::transparent);
        {
            QPainter imagePainter(&rendered);
            QtCanvas canvas(imagePainter, image.size().height);
            image.drawing()(canvas);
        }
        upright([&](QPainter& p) {
            p.setCompositionMode(qtMode(operation));
            p.setOpacity(fraction);
            p.drawImage(target, rendered);
        });
    }
}

void QtCanvas::drawText(const std::string& text, Rect rect, const Font& font, const Color& color,
                        TextAlignment alignment)
{
    QFont qtFont = QtFonts::qtFont(font);
    if (!smoothFonts_) {
        qtFont.setStyleStrategy(QFont::NoAntialias);
    }
    const QString qtText = QString::fromStdString(text);
    upright([&](QPainter& p) {
        p.setFont(qtFont);
        if (shadow_) {
            p.setPen(qtColor(shadow_->color));
            p.drawText(deviceRect(rect).translated(shadow_->offset.width, -shadow_->offset.height),
                       qtAlignment(alignment), qtText);
        }
        p.setPen(qtColor(color));
        p.drawText(deviceRect(rect), qtAlignment(alignment), qtText);
    });
}

} // namespace vexto
