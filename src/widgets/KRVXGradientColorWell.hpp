#pragma once

#include "toolkit/ActionTarget.hpp"
#include "toolkit/ColorWell.hpp"

#include <cstdint>

namespace vexto {

class KRVXGradientColorWellAccessoryView;
class KRVXGradientColorWellDelegate;
class Slider;

// A colour well that lays its gradient value's shading over its colour. While a well with a
// gradient delegate is active, the shared colour panel carries a strip with the one slider that
// sets the value; activating a well without a delegate takes the strip away again.
class KRVXGradientColorWell : public ColorWell, public ActionTarget {
public:
    using ColorWell::ColorWell;
    ~KRVXGradientColorWell() override;
    const char* className() const override { return "KRVXGradientColorWell"; }

    KRVXGradientColorWellDelegate* gradientDelegate() const { return gradientDelegate_; }
    void setGradientDelegate(KRVXGradientColorWellDelegate* delegate)
    {
        gradientDelegate_ = delegate;
    }

    // The slider shared by every gradient well, made with its strip on first use and kept for
    // the life of the process.
    static Slider& gradientValueSlider();
    // The strip holding it, or none while no gradient well was ever activated.
    static KRVXGradientColorWellAccessoryView* accessoryViewIfExists();

    void activate(bool exclusive) override;
    void setColor(Color color) override;
    void drawRect(Canvas& canvas, const Rect& dirtyRect) override;

    // The slider's action: snaps small values and hands the value to the delegate.
    void setGradientValue(Slider& sender);

    // As a target, the well answers "setGradientValue:" and "color" (the strip asks for it).
    bool respondsToSelector(std::string_view selector) const override;
    void performAction(std::string_view selector, const ActionSender& sender) override;

    // 1 to 3 steps away from flat is flat; 4 to 7 is the weakest visible shading, 8.
    static std::int64_t snappedGradientValue(std::int64_t value);

private:
    KRVXGradientColorWellDelegate* gradientDelegate_ = nullptr;
};

} // namespace vexto
