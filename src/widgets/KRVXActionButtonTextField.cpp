#include "widgets/KRVXActionButtonTextField.hpp"

#include "toolkit/ActionSender.hpp"
#include "toolkit/ActionTarget.hpp"
#include "toolkit/Application.hpp"
#include "toolkit/Canvas.hpp"
#include "toolkit/Event.hpp"
#include "toolkit/Image.hpp"
#include "toolkit/TrackingArea.hpp"
#include "toolkit/Window.hpp"

namespace vexto {

namespace {

constexpr double trackingMargin = 3;

} // namespace

KRVXActionButtonTextField::KRVXActionButtonTextField(Rect frame) : KRVXHeaderTextField(frame) {}

KRVXActionButtonTextField::~KRVXActionButtonTextField()
{
    updateTrackingAreaForWindow(nullptr);
}

void KRVXActionButtonTextField::setActionButtonImage(std::shared_ptr<Image> image)
{
    image_ = std::move(image);
    setNeedsDisplay(true);
}

void KRVXActionButtonTextField::setToolTip(std::string toolTip)
{
    buttonToolTip_ = std::move(toolTip);
    KRVXHeaderTextField::setToolTip({});
}

Rect KRVXActionButtonTextField::effectiveActionButtonFrame() const
{
    const Rect button = cell_.actionButtonFrameForCellFrame(bounds());
    return button.isEmpty() ? Rect() : button.insetBy(-trackingMargin, -trackingMargin);
}

void KRVXActionButtonTextField::updateTrackingAreaForWindow(Window* window)
{
    if (trackingArea_) {
        removeTrackingArea(trackingArea_.get());
        trackingArea_.reset();
        removeAllToolTips();
    }
    const Rect frame = effectiveActionButtonFrame();
    if (window == nullptr || frame.isEmpty()) {
        return;
    }
    trackingArea_ = std::make_shared<TrackingArea>(frame, this);
    addTrackingArea(trackingArea_);
    if (!buttonToolTip_.empty()) {
        addToolTipRect(frame, [this](Point point) { return toolTipAtButton(point); });
    }
}

void KRVXActionButtonTextField::setStringValue(std::string value)
{
    KRVXHeaderTextField::setStringValue(std::move(value));
    updateTrackingAreaForWindow(window()); // the button moves with the text
}

void KRVXActionButtonTextField::mouseEntered(const Event&)
{
    if (!action().empty()) {
        cell_.setHovered(true);
        setNeedsDisplay(true);
    }
}

void KRVXActionButtonTextField::mouseExited(const Event&)
{
    cell_.setHovered(false);
    setNeedsDisplay(true);
}

// In a window movable by its background, a drag that starts here may move the window: from the
// field up, every view must let it.
bool KRVXActionButtonTextField::canDragWindow() const
{
    const Window* window = this->window();
    if (window == nullptr || !window->isMovableByWindowBackground()) {
        return false;
    }
    for (const View* view = this; view != nullptr; view = view->superview()) {
        if (!view->mouseDownCanMoveWindow()) {
            return false;
        }
        if (view == window->contentView()) {
            return true;
        }
    }
    return true;
}

void KRVXActionButtonTextField::mouseDown(const Event& event)
{
    if (action().empty()) {
        return; // swallowed: a field without an action is no button
    }
    bool live = true;
    const bool canDrag = canDragWindow();
    const Rect button = effectiveActionButtonFrame();
    bool pushedCursor = false;
    bool inside = false;
    bool shownPressed = false;
    Event current = event;
    for (bool first = true;; first = false) {
        if (!first && current.type() == Event::Type::LeftMouseDragged && canDrag && live) {
            cell_.setHovered(false);
            live = false;
            if (inside && !pushedCursor) {
                Application::shared().pushCursor("arrow");
                pushedCursor = true;
            }
        }
        inside = live && button.contains(convertPointFromView(current.locationInWindow(), nullptr));
        if (first && !inside) {
            live = false; // a press that starts off the button never arms it
        }
        if (inside != shownPressed) {
            cell_.setClicked(inside);
            shownPressed = inside;
            displayPressedState();
        }
        if (current.type() == Event::Type::LeftMouseUp) {
            break;
        }
        const auto next =
            window() != nullptr
                ? window()->nextEventMatchingMask(Event::maskFor(Event::Type::LeftMouseUp) |
                                                  Event::maskFor(Event::Type::LeftMouseDragged))
                : std::nullopt;
        if (!next) {
            break; // nothing more comes: as if released where the mouse was last seen
        }
        current = *next;
    }
    if (inside && current.type() == Event::Type::LeftMouseUp) {
        cell_.setClicked(false);
        // Straight to the target, not through the application's dispatch.
        ActionTarget* target = this->target();
        if (target != nullptr && target->respondsToSelector(action())) {
            target->performAction(action(), ActionSender(this));
        }
    } else {
        cell_.setClicked(false);
        cell_.setHovered(false);
    }
    setNeedsDisplay(true);
    if (pushedCursor) {
        Application::shared().popCursor();
    }
}

void KRVXActionButtonTextField::drawCell(Canvas& canvas, Rect frame) const
{
    cell_.drawWithFrame(canvas, frame);
}

void KRVXActionButtonTextField::drawRect(Canvas& canvas, const Rect& dirtyRect)
{
    if (!cell_.isHovered() && !cell_.isClicked()) {
        KRVXHeaderTextField::drawRect(canvas, dirtyRect);
        return;
    }
    drawCell(canvas, bounds());
}

} // namespace vexto
