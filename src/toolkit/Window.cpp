#include "toolkit/Window.hpp"

#include "toolkit/Application.hpp"
#include "toolkit/View.hpp"

#include <algorithm>
#include <utility>
#include <vector>

namespace vexto {

namespace {

constexpr std::uint16_t tabKeyCode = 48;

void collectKeyViews(View& view, std::vector<View*>& out)
{
    if (view.isHidden()) {
        return;
    }
    if (view.acceptsFirstResponder()) {
        out.push_back(&view);
    }
    for (const auto& subview : view.subviews()) {
        collectKeyViews(*subview, out);
    }
}

void collectTrackingViews(View& view, std::vector<View*>& out)
{
    if (view.isHidden()) {
        return;
    }
    if (!view.trackingAreas().empty()) {
        out.push_back(&view);
    }
    for (const auto& subview : view.subviews()) {
        collectTrackingViews(*subview, out);
    }
}

} // namespace

Window::Window(Rect frame, double titleBarHeight) : frame_(frame), titleBarHeight_(titleBarHeight)
{
    setContentView(std::make_shared<View>());
}

Window::~Window()
{
    Application::shared().windowWillClose(this);
    if (contentView_) {
        contentView_->window_ = nullptr;
    }
}

Rect Window::contentRectForFrameRect(Rect frame) const
{
    return Rect(frame.minX(), frame.minY(), frame.width(),
                std::max(frame.height() - titleBarHeight_, 0.0));
}

void Window::setFrame(Rect frame, bool /*display*/, bool animate)
{
    lastAnimate_ = animate;
    if (frame == frame_) {
        return;
    }
    frame_ = frame;
    if (contentView_) {
        contentView_->setFrameSize(contentRectForFrameRect(frame).size);
    }
    notify(WindowChange::Frame);
}

void Window::setContentMinSize(Size size)
{
    if (size.width == contentMinSize_.width && size.height == contentMinSize_.height) {
        return;
    }
    contentMinSize_ = size;
    notify(WindowChange::Frame);
}

void Window::setTitle(std::string title)
{
    title_ = std::move(title);
    notify(WindowChange::Title);
}

void Window::setContentView(std::shared_ptr<View> view)
{
    if (contentView_) {
        viewWillLeave(*contentView_);
        contentView_->willMoveToWindow(nullptr);
        contentView_->window_ = nullptr;
        contentView_->didMoveToWindow();
    }
    contentView_ = std::move(view);
    if (contentView_) {
        contentView_->removeFromSuperview();
        contentView_->setFrame(Rect(Point{}, contentRectForFrameRect(frame_).size));
        contentView_->willMoveToWindow(this);
        contentView_->window_ = this;
        contentView_->didMoveToWindow();
    }
    notify(WindowChange::ContentView);
}

void Window::orderFront()
{
    if (!visible_) {
        visible_ = true;
        notify(WindowChange::Visible);
    }
}

void Window::orderOut()
{
    if (visible_) {
        visible_ = false;
        notify(WindowChange::Visible);
    }
}

void Window::makeKeyAndOrderFront()
{
    orderFront();
    Application::shared().setKeyWindow(this);
    Application::shared().setMainWindow(this);
}

void Window::makeKeyWindow()
{
    Application::shared().setKeyWindow(this);
}

bool Window::isKeyWindow() const
{
    return Application::shared().keyWindow() == this;
}

bool Window::isMainWindow() const
{
    return Application::shared().mainWindow() == this;
}

void Window::makeMainWindow()
{
    Application::shared().setMainWindow(this);
}

bool Window::makeFirstResponder(View* view)
{
    if (view == firstResponder_) {
        return true;
    }
    if (firstResponder_ != nullptr && !firstResponder_->resignFirstResponder()) {
        return false;
    }
    firstResponder_ = nullptr;
    bool accepted = true;
    if (view != nullptr && view->window() == this && view->becomeFirstResponder()) {
        firstResponder_ = view;
    } else if (view != nullptr) {
        accepted = false;
    }
    notify(WindowChange::FirstResponder);
    return accepted;
}

void Window::sendEvent(Event event)
{
    event.setWindow(this);
    Application::shared().setCurrentEvent(event);
    switch (event.type()) {
    case Event::Type::KeyDown: {
        const bool keyEquivalent =
            (event.modifierFlags() & (Event::commandKeyMask | Event::controlKeyMask)) != 0;
        if (keyEquivalent && contentView_ && contentView_->performKeyEquivalent(event)) {
            return;
        }
        if (firstResponder_ != nullptr) {
            firstResponder_->keyDown(event);
        } else {
            keyDown(event);
        }
        return;
    }
    case Event::Type::KeyUp:
        if (firstResponder_ != nullptr) {
            firstResponder_->keyUp(event);
        }
        return;
    case Event::Type::LeftMouseDown: {
        View* hit = contentView_ ? contentView_->hitTest(event.locationInWindow()) : nullptr;
        mouseDownView_ = hit;
        if (hit == nullptr) {
            return;
        }
        if (hit->acceptsFirstResponder()) {
            makeFirstResponder(hit);
        }
        hit->mouseDown(event);
        return;
    }
    case Event::Type::LeftMouseDragged:
        if (mouseDownView_ != nullptr) {
            mouseDownView_->mouseDragged(event);
        }
        return;
    case Event::Type::LeftMouseUp:
        if (View* view = std::exchange(mouseDownView_, nullptr)) {
            view->mouseUp(event);
        }
        return;
    case Event::Type::MouseMoved:
    case Event::Type::MouseEntered:
    case Event::Type::MouseExited:
        routeMouseMove(event);
        return;
    default:
        return;
    }
}

void Window::keyDown(const Event& event)
{
    if (event.keyCode() == tabKeyCode) {
        selectNextKeyView((event.modifierFlags() & Event::shiftKeyMask) == 0);
    } else {
        Application::shared().beep();
    }
}

void Window::selectNextKeyView(bool forward)
{
    std::vector<View*> keyViews;
    if (contentView_) {
        collectKeyViews(*contentView_, keyViews);
    }
    if (keyViews.empty()) {
        return;
    }
    const auto current = std::find(keyViews.begin(), keyViews.end(), firstResponder_);
    std::size_t index = 0;
    if (current != keyViews.end()) {
        const std::size_t at = static_cast<std::size_t>(current - keyViews.begin());
        index = forward ? (at + 1) % keyViews.size() : (at + keyViews.size() - 1) % keyViews.size();
    }
    makeFirstResponder(keyViews[index]);
}

void Window::routeMouseMove(const Event& event)
{
    std::vector<View*> views;
    if (contentView_) {
        collectTrackingViews(*contentView_, views);
    }
    for (View* view : views) {
        const auto areas = view->trackingAreas(); // handlers may replace the areas
        for (const auto& area : areas) {
            const Rect inWindow = view->convertRectToView(area->rect(), nullptr);
            const bool inside = inWindow.contains(event.locationInWindow());
            if (inside == area->isMouseInside()) {
                continue;
            }
            area->setMouseInside(inside);
            Event crossing =
                Event::mouse(inside ? Event::Type::MouseEntered : Event::Type::MouseExited,
                             event.locationInWindow());
            crossing.setWindow(this);
            crossing.setTrackingArea(area.get());
            if (inside) {
                area->owner()->mouseEntered(crossing);
            } else {
                area->owner()->mouseExited(crossing);
            }
        }
    }
}

void Window::postEvent(Event event, bool atStart)
{
    event.setWindow(this);
    if (atStart) {
        queue_.push_front(std::move(event));
    } else {
        queue_.push_back(std::move(event));
    }
}

std::optional<Event> Window::nextEventMatchingMask(std::uint64_t mask)
{
    const auto matching = [&] {
        return std::find_if(queue_.begin(), queue_.end(), [&](const Event& event) {
            return (mask & Event::maskFor(event.type())) != 0;
        });
    };
    auto found = matching();
    // With a front that delivers events as they come, wait for it as a tracking loop does.
    ++waitingForEvents_;
    while (found == queue_.end() && eventWaiter_ && eventWaiter_()) {
        found = matching();
    }
    --waitingForEvents_;
    if (found == queue_.end()) {
        return std::nullopt;
    }
    Event event = *found;
    queue_.erase(found);
    Application::shared().setCurrentEvent(event);
    return event;
}

void Window::viewWillLeave(View& view)
{
    if (firstResponder_ != nullptr && firstResponder_->isDescendantOf(&view)) {
        firstResponder_ = nullptr;
        notify(WindowChange::FirstResponder);
    }
    if (mouseDownView_ != nullptr && mouseDownView_->isDescendantOf(&view)) {
        mouseDownView_ = nullptr;
    }
}

} // namespace vexto
