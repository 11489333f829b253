#include "widgets/ImageDrawing.hpp"

#include "toolkit/Image.hpp"

namespace vexto {

std::shared_ptr<Image> imageTintedWithColor(const std::shared_ptr<Image>& image, const Color& color,
                                            CompositingOperation operation)
{
    if (!image) {
        return nullptr;
    }
    const Size size = image->size();
    return Image::withDrawing(size, [image, color, operation, size](Canvas& canvas) {
        const Rect area(0, 0, size.width, size.height);
        canvas.drawImage(*image, area, CompositingOperation::SourceOver, 1.0f);
        canvas.fill(BezierPath::rect(area), color, operation);
    });
}

std::shared_ptr<Image> imageDarkenedWithColor(const std::shared_ptr<Image>& image,
                                              const Color& color)
{
    return imageTintedWithColor(image, color, CompositingOperation::SourceAtop);
}

void drawInRect(Canvas& canvas, const Image& image, Rect rect, const std::optional<Color>& color,
                float fraction)
{
    if (!color) {
        canvas.drawImage(image, rect, CompositingOperation::SourceOver, fraction);
        return;
    }
    canvas.saveGraphicsState();
    canvas.beginTransparencyLayer(rect);
    canvas.fillRect(rect, *color);
    canvas.drawImage(image, rect, CompositingOperation::DestinationIn, fraction);
    canvas.endTransparencyLayer();
    canvas.restoreGraphicsState();
}

} // namespace vexto
