#include "toolkit/Image.hpp"

#include "ports/ImageDecoder.hpp"

namespace vexto {

std::shared_ptr<Image> Image::withBitmap(Bitmap bitmap)
{
    auto image = std::make_shared<Image>(Size{double(bitmap.width), double(bitmap.height)});
    image->bitmap_ = std::move(bitmap);
    return image;
}

std::shared_ptr<Image> Image::withDrawing(Size size, Drawing drawing)
{
    auto image = std::make_shared<Image>(size);
    image->drawing_ = std::move(drawing);
    return image;
}

std::shared_ptr<Image> Image::contentsOfFile(const std::string& path, const ImageDecoder& decoder)
{
    const auto size = decoder.pictureSize(path);
    if (!size || size->width <= 0 || size->height <= 0) {
        return nullptr;
    }
    auto image = std::make_shared<Image>(*size);
    image->path_ = path;
    image->pendingDecoder_ = &decoder;
    return image;
}

const Bitmap* Image::bitmap() const
{
    if (pendingDecoder_ != nullptr) {
        bitmap_ = pendingDecoder_->decode(path_, 1.0);
        pendingDecoder_ = nullptr;
        if (bitmap_ && (bitmap_->width <= 0 || bitmap_->height <= 0)) {
            bitmap_.reset();
        }
    }
    return bitmap_ ? &*bitmap_ : nullptr;
}

} // namespace vexto
