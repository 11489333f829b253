#include "widgets/ViewLayout.hpp"

#include "toolkit/TextField.hpp"
#include "toolkit/View.hpp"
#include "toolkit/Window.hpp"

#include <cmath>

namespace vexto {

namespace {

// An empty label is there only to be filled later: it takes no room.
bool takesNoRoom(const View& view)
{
    if (view.isHidden()) {
        return true;
    }
    const auto* field = dynamic_cast<const TextField*>(&view);
    return field != nullptr && !field->isEditable() && field->stringValue().empty();
}

bool beyondTolerance(float difference)
{
    return std::fabs(difference) > layoutTolerance;
}

} // namespace

float heightDifferenceNecessaryToFitSubviewsWithBottomMargin(const View& container,
                                                             float bottomMargin,
                                                             const View* reference)
{
    const Rect area = container.convertRectToView(container.bounds(), reference);
    float lowest = static_cast<float>(area.maxY());
    for (const auto& subview : container.subviews()) {
        if (takesNoRoom(*subview)) {
            continue;
        }
        const float bottom =
            static_cast<float>(container.convertRectToView(subview->frame(), reference).minY());
        if (bottom < lowest) {
            lowest = bottom;
        }
    }
    return lowest - bottomMargin;
}

void adjustHeightToFitSubviewsOfView(Window& window, const View& view, float bottomMargin)
{
    const float difference =
        heightDifferenceNecessaryToFitSubviewsWithBottomMargin(view, bottomMargin, nullptr);
    if (!beyondTolerance(difference)) {
        return;
    }
    Rect frame = window.frame();
    frame.origin.y += difference;
    frame.size.height -= difference;
    window.setFrame(frame, true, window.isVisible());
}

Rect frameByAdjustingHeightToFitSubviewsOfView(const View& receiver, const View& measured,
                                               float bottomMargin)
{
    Rect frame = receiver.frame();
    const float difference =
        heightDifferenceNecessaryToFitSubviewsWithBottomMargin(measured, bottomMargin, &receiver);
    if (beyondTolerance(difference)) {
        frame.origin.y += difference;
        frame.size.height -= difference;
    }
    return frame;
}

void moveUpByDelta(View& view, float delta)
{
    Rect frame = view.frame();
    frame.origin.y += delta;
    view.setFrame(frame);
}

void moveUpByDelta(std::span<View* const> views, float delta)
{
    for (View* view : views) {
        if (view != nullptr) {
            moveUpByDelta(*view, delta);
        }
    }
}

void setHiddenAndMoveSiblingsBelowUpByDelta(View& view, float delta)
{
    view.setHidden(true);
    View* parent = view.superview();
    if (parent == nullptr) {
        return;
    }
    const float bottom = static_cast<float>(view.frame().minY());
    const auto siblings = parent->subviews(); // moving views notifies observers: keep a copy
    for (const auto& sibling : siblings) {
        if (sibling.get() != &view && bottom > sibling->frame().minY()) {
            moveUpByDelta(*sibling, delta);
        }
    }
}

} // namespace vexto
