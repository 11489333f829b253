#pragma once

#include "foundation/Color.hpp"
#include "foundation/Rect.hpp"
#include "toolkit/Canvas.hpp"

#include <memory>
#include <optional>

namespace vexto {

class Image;

// A new image of the same size: the image drawn as it is, then its whole area filled with the
// colour using the operation.
std::shared_ptr<Image> imageTintedWithColor(const std::shared_ptr<Image>& image, const Color& color,
                                            CompositingOperation operation);
// Only the image's opaque pixels take the colour (source-atop).
std::shared_ptr<Image> imageDarkenedWithColor(const std::shared_ptr<Image>& image,
                                              const Color& color);
// Draws the image into the rectangle at the fraction; with a colour, as a one-colour silhouette
// in a layer of its own, so that nothing already drawn is touched.
void drawInRect(Canvas& canvas, const Image& image, Rect rect, const std::optional<Color>& color,
                float fraction);

} // namespace vexto
