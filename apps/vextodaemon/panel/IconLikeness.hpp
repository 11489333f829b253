#pragma once

#include "foundation/Bitmap.hpp"

namespace vexto {

// Whether two icons show the same picture, whatever their sizes: a window that publishes its
// program's own icon gets no overlay of it. Both are seen through a coarse grid of their
// pixels, weighted by opacity, and compared there.
bool iconsLookAlike(const Bitmap& one, const Bitmap& other);

} // namespace vexto
