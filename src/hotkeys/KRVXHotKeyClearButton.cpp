#include "hotkeys/KRVXHotKeyClearButton.hpp"

#include "toolkit/Canvas.hpp"
#include "toolkit/Image.hpp"
#include "widgets/ImageDrawing.hpp"
#include "widgets/ResourceImages.hpp"

namespace vexto {

std::shared_ptr<Image> KRVXHotKeyClearButton::enabledImage()
{
    return ResourceImages::named("KRHotKeyDeleteOn.tiff");
}

std::shared_ptr<Image> KRVXHotKeyClearButton::pressedImage()
{
    // Made once from the enabled image, as that one is loaded once.
    static std::weak_ptr<Image> madeFrom;
    static std::shared_ptr<Image> pressed;
    const auto enabled = enabledImage();
    if (enabled != madeFrom.lock()) {
        pressed = imageDarkenedWithColor(enabled, Color::calibratedWhite(0, 0.1f));
        madeFrom = enabled;
    }
    return pressed;
}

std::shared_ptr<Image> KRVXHotKeyClearButton::disabledImage()
{
    return ResourceImages::named("KRHotKeyDeleteOff.tiff");
}

void KRVXHotKeyClearButton::drawRect(Canvas& canvas, const Rect&)
{
    const auto image = isHighlighted() ? pressedImage()
                       : isEnabled()   ? enabledImage()
                                       : disabledImage();
    if (!image) {
        return;
    }
    const double y = isFlipped() ? frame().height() : 0;
    canvas.drawImage(*image, Rect(0, y, image->size().width, image->size().height),
                     CompositingOperation::SourceOver, 1.0f);
}

void KRVXHotKeyClearButton::mouseDown(const Event& event)
{
    if (!isEnabled()) {
        return;
    }
    setHighlighted(true);
    Button::mouseDown(event);
    setHighlighted(false);
}

} // namespace vexto
