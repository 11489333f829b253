#pragma once

#include "foundation/Rect.hpp"

#include <span>

namespace vexto {

class View;
class Window;

// Fitting windows and views to their visible content, and closing the gaps that hidden rows
// leave. Unflipped containers only: "up" is a larger y. Differences are single precision, and a
// difference of 0.9 pt or less is ignored.

inline constexpr double layoutTolerance = 0.9;

// How far the container may shrink (positive) or must grow (negative) so that its lowest
// visible subview sits `bottomMargin` above its bottom edge, measured in the coordinates of
// `reference` (none: the window's). Hidden subviews and empty labels take no room.
float heightDifferenceNecessaryToFitSubviewsWithBottomMargin(const View& container,
                                                             float bottomMargin,
                                                             const View* reference);

// Moves the window's bottom edge (its top stays) so that the view's content fits with the margin.
void adjustHeightToFitSubviewsOfView(Window& window, const View& view, float bottomMargin);

// The receiver's frame with its bottom edge moved so that the measured view's content fits;
// the receiver itself is not changed.
Rect frameByAdjustingHeightToFitSubviewsOfView(const View& receiver, const View& measured,
                                               float bottomMargin);

// Moves the view up by delta (down when negative).
void moveUpByDelta(View& view, float delta);
// The same for each view given; null entries are passed over.
void moveUpByDelta(std::span<View* const> views, float delta);

// Hides the view and moves every sibling whose bottom edge lies below the view's up by delta.
void setHiddenAndMoveSiblingsBelowUpByDelta(View& view, float delta);

} // namespace vexto
