#pragma once

#include "foundation/Bitmap.hpp"
#include "foundation/Size.hpp"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace vexto {

class Canvas;
class ImageDecoder;

// An image of a size in points whose content is either decoded pixels or a drawing that is
// replayed onto whatever canvas draws the image (so tinted copies need no pixels of their own).
class Image {
public:
    using Drawing = std::function<void(Canvas&)>;

    explicit Image(Size size) : size_(size) {}

    static std::shared_ptr<Image> withBitmap(Bitmap bitmap);
    static std::shared_ptr<Image> withDrawing(Size size, Drawing drawing);
    // Read straight from the file; none when it cannot be read.
    static std::shared_ptr<Image> contentsOfFile(const std::string& path,
                                                 const ImageDecoder& decoder);

    Size size() const { return size_; }
    void setSize(Size size) { size_ = size; }
    const std::string& path() const { return path_; }
    const Bitmap* bitmap() const { return bitmap_ ? &*bitmap_ : nullptr; }
    const Drawing& drawing() const { return drawing_; }

private:
    Size size_;
    std::string path_;
    std::optional<Bitmap> bitmap_;
    Drawing drawing_;
};

} // namespace vexto
