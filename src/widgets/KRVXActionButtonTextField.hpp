#pragma once

#include "widgets/KRVXActionButtonTextFieldCell.hpp"
#include "widgets/KRVXHeaderTextField.hpp"

#include <memory>
#include <string>

namespace vexto {

class Image;
class TrackingArea;

// A one-line text followed by a small image that acts as a button: lit under the mouse, pressed
// while held, and sending the field's action to its target when released on it. Without an
// action the button neither lights up nor tracks; without an image there is no button.
class KRVXActionButtonTextField : public KRVXHeaderTextField {
public:
    explicit KRVXActionButtonTextField(Rect frame = {});
    ~KRVXActionButtonTextField() override;
    KRVXActionButtonTextField(const KRVXActionButtonTextField&) = delete;
    KRVXActionButtonTextField& operator=(const KRVXActionButtonTextField&) = delete;

    const char* className() const override { return "KRVXActionButtonTextField"; }

    KRVXActionButtonTextFieldCell& actionButtonTextFieldCell() { return cell_; }
    const KRVXActionButtonTextFieldCell& actionButtonTextFieldCell() const { return cell_; }

    const std::shared_ptr<Image>& actionButtonImage() const { return image_; }
    void setActionButtonImage(std::shared_ptr<Image> image);
    const std::string& actionButtonToolTip() const { return buttonToolTip_; }
    // The tool tip shows over the button only; the field keeps none of its own.
    void setToolTip(std::string toolTip);
    std::string toolTipAtButton(Point) const { return buttonToolTip_; }

    // Clears the hovered look without redrawing.
    void unhover() { cell_.setHovered(false); }
    // The button's frame grown by 3 points on each side: where the mouse is tracked and clicks
    // count. Empty without an image.
    Rect effectiveActionButtonFrame() const;
    const TrackingArea* trackingArea() const { return trackingArea_.get(); }
    void updateTrackingAreaForWindow(Window* window);

    void setStringValue(std::string value) override;
    void updateTrackingAreas() override { updateTrackingAreaForWindow(window()); }
    void viewWillMoveToWindow(Window* window) override { updateTrackingAreaForWindow(window); }
    bool acceptsFirstMouse(const Event*) const override { return true; }
    // A label: a window movable by its background moves from it too.
    bool mouseDownCanMoveWindow() const override { return !isEditable(); }
    void mouseEntered(const Event& event) override;
    void mouseExited(const Event& event) override;
    // Tracks the mouse until it is released, synchronously, as a button does.
    void mouseDown(const Event& event) override;
    void drawRect(Canvas& canvas, const Rect& dirtyRect) override;

protected:
    void drawCell(Canvas& canvas, Rect frame) const override;
    // While the mouse is held, the pressed look is shown the moment it changes.
    virtual void displayPressedState() { setNeedsDisplay(true); }

private:
    bool canDragWindow() const;

    KRVXActionButtonTextFieldCell cell_{*this};
    std::shared_ptr<Image> image_;
    std::string buttonToolTip_;
    std::shared_ptr<TrackingArea> trackingArea_;
};

} // namespace vexto
