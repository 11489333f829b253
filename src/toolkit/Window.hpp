#pragma once

#include "foundation/Rect.hpp"
#include "toolkit/Event.hpp"
#include "toolkit/ObserverList.hpp"

#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>

namespace vexto {

class View;

enum class WindowChange { Frame, Visible, Key, Main, FirstResponder, Title, ContentView };

// A window: frame in screen coordinates (y upward), a content view filling it below the title
// bar, visibility, key and main status, the first responder, and a queue of events for modal
// tracking loops that the front (or a test) fills.
class Window {
public:
    // The platform's notification names, posted to the default notification centre.
    static constexpr const char* didBecomeKeyNotification = "NSWindowDidBecomeKeyNotification";
    static constexpr const char* didResignKeyNotification = "NSWindowDidResignKeyNotification";
    static constexpr const char* didBecomeMainNotification = "NSWindowDidBecomeMainNotification";
    static constexpr const char* didResignMainNotification = "NSWindowDidResignMainNotification";

    explicit Window(Rect frame, double titleBarHeight = 0);
    ~Window();
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    Rect frame() const { return frame_; }
    // Resizes the window; the content view follows, its subviews by their autoresizing flags.
    void setFrame(Rect frame, bool display, bool animate);
    bool lastFrameChangeWasAnimated() const { return lastAnimate_; }
    double titleBarHeight() const { return titleBarHeight_; }
    Rect contentRectForFrameRect(Rect frame) const;
    // The smallest the person may make the content by resizing the window.
    Size contentMinSize() const { return contentMinSize_; }
    void setContentMinSize(Size size);

    const std::string& title() const { return title_; }
    void setTitle(std::string title);

    View* contentView() const { return contentView_.get(); }
    void setContentView(std::shared_ptr<View> view);

    bool isVisible() const { return visible_; }
    void orderFront();
    void orderOut();
    void makeKeyAndOrderFront();
    void makeKeyWindow();
    bool isKeyWindow() const;
    bool isMainWindow() const;
    void makeMainWindow();

    bool isMovableByWindowBackground() const { return movableByBackground_; }
    void setMovableByWindowBackground(bool movable) { movableByBackground_ = movable; }

    // --- first responder ---
    View* firstResponder() const { return firstResponder_; }
    // Asks the current responder to resign (it may refuse: then false and nothing changes) and
    // the new one to become first responder (when it refuses, the window keeps none). A null
    // view makes the window itself the first responder.
    bool makeFirstResponder(View* view);

    // --- events ---
    // Delivers an event as the application would: keys to the first responder (key
    // equivalents first), mouse presses to the view under the mouse, mouse moves to tracking
    // areas. The event is the application's current event meanwhile.
    void sendEvent(Event event);
    // Unhandled key-downs end here: Tab and Shift-Tab move the focus along the key views.
    void keyDown(const Event& event);
    void selectNextKeyView(bool forward);

    void postEvent(Event event, bool atStart = false);
    // Takes the first queued event whose type is in the mask. When none is queued, the event
    // waiter (the front's, if any) is asked for more until it says none will come; none then.
    std::optional<Event> nextEventMatchingMask(std::uint64_t mask);
    // Lets the front deliver its pending events (blocking until some arrive); false when no
    // more will come.
    void setEventWaiter(std::function<bool()> waiter) { eventWaiter_ = std::move(waiter); }
    // True while a tracking loop waits in nextEventMatchingMask: events belong in the queue.
    bool isWaitingForEvents() const { return waitingForEvents_ > 0; }
    std::size_t queuedEventCount() const { return queue_.size(); }

    // --- observing ---
    int addObserver(std::function<void(Window&, WindowChange)> observer)
    {
        return observers_.add(std::move(observer));
    }
    void removeObserver(int token) { observers_.remove(token); }

private:
    friend class View;
    friend class Application;

    void viewWillLeave(View& view);
    void routeMouseMove(const Event& event);
    void notify(WindowChange change) { observers_.notify(*this, change); }

    Rect frame_;
    double titleBarHeight_;
    Size contentMinSize_;
    std::string title_;
    std::shared_ptr<View> contentView_;
    bool visible_ = false;
    bool movableByBackground_ = false;
    bool lastAnimate_ = false;
    View* firstResponder_ = nullptr;
    View* mouseDownView_ = nullptr;
    std::deque<Event> queue_;
    std::function<bool()> eventWaiter_;
    int waitingForEvents_ = 0;
    ObserverList<Window&, WindowChange> observers_;
};

} // namespace vexto
