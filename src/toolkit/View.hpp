#pragma once

#include "foundation/Rect.hpp"
#include "toolkit/ObserverList.hpp"
#include "toolkit/TrackingArea.hpp"
#include "toolkit/ViewChange.hpp"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vexto {

class Canvas;
class Event;
class Window;

// A rectangle of a window, with the platform's view semantics: frames in the superview's
// unflipped coordinates, an ordered list of subviews, hidden flags, tool tips and tracking areas.
// Custom views override drawRect; the model holds no pixels.
class View : public std::enable_shared_from_this<View> {
public:
    // The platform's autoresizing flags (unflipped: MinYMargin is the bottom margin).
    enum Autoresizing : unsigned {
        NotSizable = 0,
        MinXMargin = 1,
        WidthSizable = 2,
        MaxXMargin = 4,
        MinYMargin = 8,
        HeightSizable = 16,
        MaxYMargin = 32,
    };

    struct ToolTipRect {
        int tag;
        Rect rect;
        std::function<std::string(Point)> provider;
    };

    explicit View(Rect frame = {});
    virtual ~View();
    View(const View&) = delete;
    View& operator=(const View&) = delete;

    // The kind of view, for fronts that pick a widget per kind.
    virtual const char* className() const { return "View"; }

    Rect frame() const { return frame_; }
    void setFrame(Rect frame);
    void setFrameOrigin(Point origin) { setFrame(Rect(origin, frame_.size)); }
    void setFrameSize(Size size) { setFrame(Rect(frame_.origin, size)); }
    Rect bounds() const { return Rect(0, 0, frame_.size.width, frame_.size.height); }

    bool isHidden() const { return hidden_; }
    void setHidden(bool hidden);
    bool isHiddenOrHasHiddenAncestor() const;

    int tag() const { return tag_; }
    void setTag(int tag) { tag_ = tag; }

    unsigned autoresizingMask() const { return autoresizingMask_; }
    void setAutoresizingMask(unsigned mask) { autoresizingMask_ = mask; }
    void setAutoresizesSubviews(bool autoresizes) { autoresizesSubviews_ = autoresizes; }

    // --- hierarchy ---
    View* superview() const { return superview_; }
    const std::vector<std::shared_ptr<View>>& subviews() const { return subviews_; }
    void addSubview(std::shared_ptr<View> view);
    void removeFromSuperview();
    bool isDescendantOf(const View* ancestor) const;
    Window* window() const;

    // --- coordinates; a null view means the window's base coordinates ---
    Rect convertRectToView(Rect rect, const View* view) const;
    Rect convertRectFromView(Rect rect, const View* view) const;
    Point convertPointToView(Point point, const View* view) const;
    Point convertPointFromView(Point point, const View* view) const;

    // --- drawing ---
    virtual bool isCustomDrawn() const { return false; }
    virtual void drawRect(Canvas& canvas, const Rect& dirtyRect);
    virtual bool isFlipped() const { return false; }
    bool needsDisplay() const { return needsDisplay_; }
    void setNeedsDisplay(bool needsDisplay = true);

    // --- tool tips ---
    const std::string& toolTip() const { return toolTip_; }
    void setToolTip(std::string toolTip);
    int addToolTipRect(Rect rect, std::function<std::string(Point)> provider);
    void removeAllToolTips();
    const std::vector<ToolTipRect>& toolTipRects() const { return toolTipRects_; }
    // The tip a person hovering at that local point sees: a tool-tip rectangle's, else the view's.
    std::string toolTipAtPoint(Point local) const;

    // --- a button inside ---
    // The middle of the first area in which the view tracks the mouse (a button inside it), in
    // window coordinates; none when it tracks none.
    std::optional<Point> centreOfTrackedButton() const;
    // A press and a release on that button through the window, as a person's click goes; false
    // without one, or outside a window.
    bool pressTrackedButton();
    // The Delete key, pressed while the view has the keyboard focus but takes no keys itself: a
    // view that can be cleared clears itself. False when the key means nothing to it.
    virtual bool deleteBackward() { return false; }

    // --- notices ---
    // A short message shown beside the view for a moment, where the user looks (why a key was
    // refused, say); empty when there is none.
    const std::string& notice() const { return notice_; }
    // `keyCombination`: the part of the notice that names keys in symbols (⌃⌥Z), for a front
    // that names keys in its desktop's words to name them so there too.
    void setNotice(std::string notice, std::string keyCombination = {});
    const std::string& noticeKeyCombination() const { return noticeKeys_; }

    // --- tracking areas ---
    void addTrackingArea(std::shared_ptr<TrackingArea> area);
    void removeTrackingArea(const TrackingArea* area);
    const std::vector<std::shared_ptr<TrackingArea>>& trackingAreas() const
    {
        return trackingAreas_;
    }
    virtual void updateTrackingAreas() {}

    // --- events and the responder chain ---
    virtual bool acceptsFirstResponder() const { return false; }
    virtual bool becomeFirstResponder() { return true; }
    virtual bool resignFirstResponder() { return true; }
    virtual bool acceptsFirstMouse(const Event*) const { return false; }
    virtual bool mouseDownCanMoveWindow() const { return true; }
    // True when this view's window's first responder is this very view.
    bool isFirstResponder() const;

    // Unhandled events travel up to the superview and finally to the window.
    virtual void mouseDown(const Event& event);
    virtual void mouseUp(const Event& event);
    virtual void mouseDragged(const Event& event);
    virtual void mouseEntered(const Event&) {}
    virtual void mouseExited(const Event&) {}
    virtual void keyDown(const Event& event);
    virtual void keyUp(const Event& event);
    // Offers a key equivalent to the view and its subviews; true when one took it.
    virtual bool performKeyEquivalent(const Event& event);

    // The deepest visible view under a point in the superview's coordinates, or none.
    View* hitTest(Point pointInSuperview);

    virtual void viewWillMoveToWindow(Window*) {}
    virtual void viewDidMoveToWindow() {}

    // --- observing ---
    using Observer = std::function<void(View&, ViewChange)>;
    int addObserver(Observer observer) { return observers_.add(std::move(observer)); }
    void removeObserver(int token) { observers_.remove(token); }

protected:
    void notify(ViewChange change) { observers_.notify(*this, change); }

private:
    friend class Window;

    void resizeSubviewsWithOldSize(Size oldSize);
    void resizeWithOldSuperviewSize(Size oldSize);
    void willMoveToWindow(Window* window);
    void didMoveToWindow();
    // Offset of this view's origin in window base coordinates.
    Point originInWindow() const;

    Rect frame_;
    bool hidden_ = false;
    bool needsDisplay_ = false;
    int tag_ = 0;
    unsigned autoresizingMask_ = NotSizable;
    bool autoresizesSubviews_ = true;
    View* superview_ = nullptr;
    Window* window_ = nullptr; // set on the content view only
    std::vector<std::shared_ptr<View>> subviews_;
    std::string toolTip_;
    std::string notice_;
    std::string noticeKeys_;
    std::vector<ToolTipRect> toolTipRects_;
    int lastToolTipTag_ = 0;
    std::vector<std::shared_ptr<TrackingArea>> trackingAreas_;
    ObserverList<View&, ViewChange> observers_;
};

} // namespace vexto
