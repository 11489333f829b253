#include "toolkit/View.hpp"

#include "toolkit/Event.hpp"
#include "toolkit/Window.hpp"

#include <algorithm>

namespace vexto {

namespace {

// Shares a change of length among the flexible parts of one axis, in proportion to their
// current lengths (equally when they are all zero).
struct AxisShares {
    double before = 0;
    double length = 0;
};

AxisShares distribute(double delta, bool flexibleBefore, bool flexibleLength, bool flexibleAfter,
                      double before, double length, double after)
{
    const int count = int(flexibleBefore) + int(flexibleLength) + int(flexibleAfter);
    if (count == 0 || delta == 0) {
        return {};
    }
    const double total =
        (flexibleBefore ? before : 0) + (flexibleLength ? length : 0) + (flexibleAfter ? after : 0);
    const auto share = [&](bool flexible, double part) {
        if (!flexible) {
            return 0.0;
        }
        return total > 0 ? delta * std::max(part, 0.0) / total : delta / count;
    };
    return {share(flexibleBefore, before), share(flexibleLength, length)};
}

} // namespace

View::View(Rect frame) : frame_(frame) {}

View::~View()
{
    for (const auto& subview : subviews_) {
        subview->superview_ = nullptr;
    }
}

void View::setFrame(Rect frame)
{
    if (frame == frame_) {
        return;
    }
    const Size oldSize = frame_.size;
    frame_ = frame;
    if (oldSize != frame.size && autoresizesSubviews_) {
        resizeSubviewsWithOldSize(oldSize);
    }
    notify(ViewChange::Frame);
}

void View::resizeSubviewsWithOldSize(Size oldSize)
{
    for (const auto& subview : subviews_) {
        subview->resizeWithOldSuperviewSize(oldSize);
    }
}

void View::resizeWithOldSuperviewSize(Size oldSize)
{
    if (superview_ == nullptr || autoresizingMask_ == NotSizable) {
        return;
    }
    const Size newSize = superview_->frame_.size;
    const unsigned m = autoresizingMask_;
    const Rect f = frame_;
    const AxisShares h = distribute(newSize.width - oldSize.width, m & MinXMargin, m & WidthSizable,
                                    m & MaxXMargin, f.minX(), f.width(), oldSize.width - f.maxX());
    const AxisShares v =
        distribute(newSize.height - oldSize.height, m & MinYMargin, m & HeightSizable,
                   m & MaxYMargin, f.minY(), f.height(), oldSize.height - f.maxY());
    setFrame(Rect(f.minX() + h.before, f.minY() + v.before, f.width() + h.length,
                  f.height() + v.length));
}

void View::setHidden(bool hidden)
{
    if (hidden_ == hidden) {
        return;
    }
    hidden_ = hidden;
    notify(ViewChange::Hidden);
}

bool View::isHiddenOrHasHiddenAncestor() const
{
    for (const View* view = this; view != nullptr; view = view->superview_) {
        if (view->hidden_) {
            return true;
        }
    }
    return false;
}

void View::addSubview(std::shared_ptr<View> view)
{
    if (!view || view.get() == this || isDescendantOf(view.get())) {
        return;
    }
    const auto keep = view; // removeFromSuperview may drop the last other reference
    keep->removeFromSuperview();
    Window* newWindow = window();
    keep->willMoveToWindow(newWindow);
    keep->superview_ = this;
    subviews_.push_back(keep);
    keep->didMoveToWindow();
    notify(ViewChange::Subviews);
}

void View::removeFromSuperview()
{
    View* parent = superview_;
    if (parent == nullptr) {
        return;
    }
    if (Window* w = window(); w != nullptr) {
        w->viewWillLeave(*this);
    }
    willMoveToWindow(nullptr);
    const auto keep = shared_from_this();
    std::erase_if(parent->subviews_, [&](const auto& v) { return v.get() == this; });
    superview_ = nullptr;
    didMoveToWindow();
    parent->notify(ViewChange::Subviews);
}

void View::willMoveToWindow(Window* window)
{
    viewWillMoveToWindow(window);
    for (const auto& subview : subviews_) {
        subview->willMoveToWindow(window);
    }
}

void View::didMoveToWindow()
{
    viewDidMoveToWindow();
    for (const auto& subview : subviews_) {
        subview->didMoveToWindow();
    }
}

bool View::isDescendantOf(const View* ancestor) const
{
    for (const View* view = this; view != nullptr; view = view->superview_) {
        if (view == ancestor) {
            return true;
        }
    }
    return false;
}

Window* View::window() const
{
    const View* root = this;
    while (root->superview_ != nullptr) {
        root = root->superview_;
    }
    return root->window_;
}

Point View::originInWindow() const
{
    Point origin;
    for (const View* view = this; view != nullptr; view = view->superview_) {
        origin.x += view->frame_.origin.x;
        origin.y += view->frame_.origin.y;
    }
    return origin;
}

Rect View::convertRectToView(Rect rect, const View* view) const
{
    return Rect(convertPointToView(rect.origin, view), rect.size);
}

Rect View::convertRectFromView(Rect rect, const View* view) const
{
    return Rect(convertPointFromView(rect.origin, view), rect.size);
}

Point View::convertPointToView(Point point, const View* view) const
{
    const Point from = originInWindow();
    const Point to = view != nullptr ? view->originInWindow() : Point{};
    return Point{point.x + from.x - to.x, point.y + from.y - to.y};
}

Point View::convertPointFromView(Point point, const View* view) const
{
    const Point from = view != nullptr ? view->originInWindow() : Point{};
    const Point to = originInWindow();
    return Point{point.x + from.x - to.x, point.y + from.y - to.y};
}

void View::drawRect(Canvas&, const Rect&) {}

void View::setNeedsDisplay(bool needsDisplay)
{
    needsDisplay_ = needsDisplay;
    if (needsDisplay) {
        notify(ViewChange::Display);
    }
}

void View::setToolTip(std::string toolTip)
{
    if (toolTip_ == toolTip) {
        return;
    }
    toolTip_ = std::move(toolTip);
    notify(ViewChange::ToolTip);
}

std::optional<Point> View::centreOfTrackedButton() const
{
    if (trackingAreas_.empty()) {
        return std::nullopt;
    }
    const Rect area = trackingAreas_.front()->rect();
    return convertPointToView(Point{area.midX(), area.midY()}, nullptr);
}

bool View::pressTrackedButton()
{
    Window* target = window();
    const auto where = centreOfTrackedButton();
    if (target == nullptr || !where) {
        return false;
    }
    target->sendEvent(Event::mouse(Event::Type::MouseMoved, *where));
    target->postEvent(Event::mouse(Event::Type::LeftMouseUp, *where));
    target->sendEvent(Event::mouse(Event::Type::LeftMouseDown, *where));
    if (target->queuedEventCount() > 0) {
        target->nextEventMatchingMask(Event::maskFor(Event::Type::LeftMouseUp)); // not taken
    }
    return true;
}

void View::setNotice(std::string notice, std::string keyCombination)
{
    if (notice_ == notice && noticeKeys_ == keyCombination) {
        return;
    }
    notice_ = std::move(notice);
    noticeKeys_ = std::move(keyCombination);
    notify(ViewChange::Notice);
}

int View::addToolTipRect(Rect rect, std::function<std::string(Point)> provider)
{
    toolTipRects_.push_back({++lastToolTipTag_, rect, std::move(provider)});
    notify(ViewChange::ToolTip);
    return lastToolTipTag_;
}

void View::removeAllToolTips()
{
    toolTipRects_.clear();
    toolTip_.clear();
    notify(ViewChange::ToolTip);
}

std::string View::toolTipAtPoint(Point local) const
{
    for (const auto& tip : toolTipRects_) {
        if (tip.rect.contains(local) && tip.provider) {
            return tip.provider(local);
        }
    }
    return toolTip_;
}

void View::addTrackingArea(std::shared_ptr<TrackingArea> area)
{
    if (area) {
        trackingAreas_.push_back(std::move(area));
    }
}

void View::removeTrackingArea(const TrackingArea* area)
{
    std::erase_if(trackingAreas_, [&](const auto& a) { return a.get() == area; });
}

bool View::isFirstResponder() const
{
    const Window* w = window();
    return w != nullptr && w->firstResponder() == this;
}

void View::mouseDown(const Event& event)
{
    if (superview_ != nullptr) {
        superview_->mouseDown(event);
    }
}

void View::mouseUp(const Event& event)
{
    if (superview_ != nullptr) {
        superview_->mouseUp(event);
    }
}

void View::mouseDragged(const Event& event)
{
    if (superview_ != nullptr) {
        superview_->mouseDragged(event);
    }
}

void View::keyDown(const Event& event)
{
    if (superview_ != nullptr) {
        superview_->keyDown(event);
    } else if (Window* w = window(); w != nullptr) {
        w->keyDown(event);
    }
}

void View::keyUp(const Event& event)
{
    if (superview_ != nullptr) {
        superview_->keyUp(event);
    }
}

bool View::performKeyEquivalent(const Event& event)
{
    for (const auto& subview : subviews_) {
        if (!subview->isHidden() && subview->performKeyEquivalent(event)) {
            return true;
        }
    }
    return false;
}

View* View::hitTest(Point pointInSuperview)
{
    if (hidden_ || !frame_.contains(pointInSuperview)) {
        return nullptr;
    }
    const Point local{pointInSuperview.x - frame_.origin.x, pointInSuperview.y - frame_.origin.y};
    for (auto it = subviews_.rbegin(); it != subviews_.rend(); ++it) {
        if (View* hit = (*it)->hitTest(local)) {
            return hit;
        }
    }
    return this;
}

} // namespace vexto
