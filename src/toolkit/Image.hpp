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
// An image read from a file knows its size at once and decodes its pixels when first drawn: a
// pane that is never drawn (a headless run) never decodes one.
class Image {
public:
    using Drawing = std::function<void(Canvas&)>;

    explicit Image(Size size) : size_(size) {}

    static std::shared_ptr<Image> withBitmap(Bitmap bitmap);
    static std::shared_ptr<Image> withDrawing(Size size, Drawing drawing);
    // The file's image, measured now; none when it cannot be read. The decoder must outlive
    // the image, as the pane's services outlive the pane.
    static std::shared_ptr<Image> contentsOfFile(const std::string& path,
                                                 const ImageDecoder& decoder);

    Size size() const { return size_; }
    void setSize(Size size) { size_ = size; }
    const std::string& path() const { return path_; }
    // The pixels; none for a drawing, and for a file whose pixels turned out unreadable.
    const Bitmap* bitmap() const;
    const Drawing& drawing() const { return drawing_; }

private:
    Size size_;
    std::string path_;
    mutable std::optional<Bitmap> bitmap_;
    mutable const ImageDecoder* pendingDecoder_ = nullptr; // set until the file is decoded
    Drawing drawing_;
};

} // namespace vexto
