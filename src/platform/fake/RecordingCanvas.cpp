#include "platform/fake/RecordingCanvas.hpp"

#include "foundation/NumericText.hpp"
#include "toolkit/Image.hpp"

namespace vexto {

std::string RecordingCanvas::describe(double value)
{
    return NumericText::shortestText(value);
}

std::string RecordingCanvas::describe(Rect rect)
{
    return describe(rect.minX()) + "," + describe(rect.minY()) + " " + describe(rect.width()) +
           "x" + describe(rect.height());
}

std::string RecordingCanvas::describe(const BezierPath& path)
{
    if (path.kind() == BezierPath::Kind::Oval) {
        return "oval " + describe(path.bounds());
    }
    if (path.kind() == BezierPath::Kind::Polygon) {
        std::string points = "polygon";
        for (const Point& point : path.points()) {
            points += " " + describe(point.x) + "," + describe(point.y);
        }
        return points;
    }
    if (!path.isRounded()) {
        return "rect " + describe(path.bounds());
    }
    return "rounded " + describe(path.bounds()) + " r=" + describe(path.xRadius()) +
           (path.xRadius() == path.yRadius() ? "" : "/" + describe(path.yRadius()));
}

std::string RecordingCanvas::describe(const Color& color)
{
    switch (color.space()) {
    case Color::Space::CalibratedWhite:
    case Color::Space::DeviceWhite:
        return "w=" + NumericText::shortestText(color.component(0)) +
               " a=" + NumericText::shortestText(color.alpha());
    default: {
        const Color::Rgba c = color.rgba();
        return "rgb=" + NumericText::shortestText(c.red) + "," +
               NumericText::shortestText(c.green) + "," + NumericText::shortestText(c.blue) +
               " a=" + NumericText::shortestText(c.alpha);
    }
    }
}

void RecordingCanvas::saveGraphicsState()
{
    ++depth_;
    operations_.push_back("save");
}

void RecordingCanvas::restoreGraphicsState()
{
    --depth_;
    operations_.push_back("restore");
}

namespace {

constexpr const char* operationNames[] = {"source-over", "source-atop", "destination-in"};

} // namespace

void RecordingCanvas::fill(const BezierPath& path, const Color& color,
                           CompositingOperation operation)
{
    std::string line = "fill " + describe(path) + " " + describe(color);
    if (operation != CompositingOperation::SourceOver) {
        line += std::string(" ") + operationNames[static_cast<int>(operation)];
    }
    operations_.push_back(std::move(line));
}

void RecordingCanvas::clip(const BezierPath& path)
{
    operations_.push_back("clip " + describe(path));
}

void RecordingCanvas::drawLinearGradient(const Gradient& gradient, Rect rect, double angle)
{
    operations_.push_back("gradient " + describe(rect) + " angle=" + describe(angle) + " from " +
                          describe(gradient.startColor()) + " to " + describe(gradient.endColor()));
}

void RecordingCanvas::setShouldSmoothFonts(bool smooth)
{
    operations_.push_back(smooth ? "smooth fonts" : "smooth fonts off");
}

void RecordingCanvas::setShadow(const std::optional<Shadow>& shadow)
{
    if (!shadow) {
        operations_.push_back("shadow none");
        return;
    }
    operations_.push_back("shadow offset=" + describe(shadow->offset.width) + "," +
                          describe(shadow->offset.height) +
                          " blur=" + describe(shadow->blurRadius) + " " + describe(shadow->color));
}

void RecordingCanvas::beginTransparencyLayer(Rect rect)
{
    operations_.push_back("begin layer " + describe(rect));
}

void RecordingCanvas::endTransparencyLayer()
{
    operations_.push_back("end layer");
}

void RecordingCanvas::drawImage(const Image& image, Rect destination,
                                CompositingOperation operation, float fraction)
{
    operations_.push_back("image " + describe(image.size().width) + "x" +
                          describe(image.size().height) + " in " + describe(destination) + " " +
                          operationNames[static_cast<int>(operation)] +
                          " fraction=" + describe(fraction));
}

void RecordingCanvas::drawText(const std::string& text, Rect rect, const Font& font,
                               const Color& color, TextAlignment)
{
    operations_.push_back("text \"" + text + "\" in " + describe(rect) +
                          " font=" + font.fontName() + " " + describe(font.pointSize()) + " " +
                          describe(color));
}

} // namespace vexto
