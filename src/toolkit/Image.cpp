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
    auto bitmap = decoder.decode(path, 1.0);
    if (!bitmap || bitmap->width <= 0 || bitmap->height <= 0) {
        return nullptr;
    }
    auto image = withBitmap(std::move(*bitmap));
    image->path_ = path;
    return image;
}

} // namespace vexto
