#include "widgets/KRVXGradientColorWell.hpp"

#include "toolkit/ColorPanel.hpp"
#include "toolkit/Slider.hpp"
#include "widgets/KRVXGradientColorWellAccessoryView.hpp"
#include "widgets/KRVXGradientColorWellDelegate.hpp"

#include <memory>

namespace vexto {

namespace {

constexpr double minimumGradientValue = -60;
constexpr double maximumGradientValue = 60;
constexpr double shadingInset = 6;

std::shared_ptr<KRVXGradientColorWellAccessoryView>& singletonAccessoryView()
{
    static std::shared_ptr<KRVXGradientColorWellAccessoryView> view;
    return view;
}

std::shared_ptr<KRVXGradientColorWellAccessoryView> makeAccessoryView()
{
    using Strip = KRVXGradientColorWellAccessoryView;
    const ColorPanel* panel = ColorPanel::sharedIfExists();
    const double width = panel != nullptr ? panel->frame().width() : 0;
    auto strip = std::make_shared<Strip>(Rect(0, 0, width, Strip::stripHeight));
    strip->setAutoresizingMask(View::WidthSizable | View::MaxYMargin);

    const Rect sliderFrame = strip->frame().insetBy(Strip::sliderSideInset, 0);
    auto slider = std::make_shared<Slider>(sliderFrame, minimumGradientValue, maximumGradientValue);
    slider->setSmall(true);
    slider->setAction("setGradientValue:");
    slider->sizeToFit();
    const double fittedHeight = slider->frame().height();
    slider->setFrame(Rect(sliderFrame.minX(),
                          (Strip::stripHeight - Strip::squareMargin + 1 - fittedHeight) * 0.5 + 6,
                          sliderFrame.width(), fittedHeight));
    slider->setAutoresizingMask(View::WidthSizable | View::MaxYMargin);
    strip->addSubview(slider);
    return strip;
}

} // namespace

KRVXGradientColorWell::~KRVXGradientColorWell()
{
    // The shared slider outlives every well; it must not send to one that is gone.
    if (auto& strip = singletonAccessoryView()) {
        Slider* slider = strip->enclosedSliderWithTarget(nullptr, {});
        if (slider != nullptr && slider->target() == this) {
            slider->setTarget(nullptr);
        }
    }
}

Slider& KRVXGradientColorWell::gradientValueSlider()
{
    auto& strip = singletonAccessoryView();
    if (!strip) {
        strip = makeAccessoryView();
    }
    return *strip->enclosedSliderWithTarget(nullptr, {});
}

KRVXGradientColorWellAccessoryView* KRVXGradientColorWell::accessoryViewIfExists()
{
    return singletonAccessoryView().get();
}

void KRVXGradientColorWell::activate(bool exclusive)
{
    if (gradientDelegate_ == nullptr && ColorPanel::sharedIfExists() == nullptr) {
        ColorWell::activate(exclusive);
        return;
    }
    ColorPanel& panel = ColorPanel::shared();
    if (gradientDelegate_ != nullptr) {
        Slider& slider = gradientValueSlider();
        slider.setTarget(this);
        slider.setDoubleValue(static_cast<double>(gradientDelegate_->gradientValueForWell(this)));
        singletonAccessoryView()->setNeedsDisplay();
        panel.setAccessoryView(singletonAccessoryView());
    } else {
        panel.setAccessoryView(nullptr);
    }
    ColorWell::activate(exclusive);
}

void KRVXGradientColorWell::setColor(Color color)
{
    ColorWell::setColor(std::move(color));
    if (gradientDelegate_ != nullptr && singletonAccessoryView()) {
        singletonAccessoryView()->setNeedsDisplay();
    }
}

void KRVXGradientColorWell::drawRect(Canvas& canvas, const Rect& dirtyRect)
{
    ColorWell::drawRect(canvas, dirtyRect);
    const std::int64_t value =
        gradientDelegate_ != nullptr ? gradientDelegate_->gradientValueForWell(this) : 0;
    KRVXGradientColorWellAccessoryView::drawGradientWithValue(
        canvas, value, bounds().insetBy(shadingInset, shadingInset));
}

std::int64_t KRVXGradientColorWell::snappedGradientValue(std::int64_t value)
{
    if (value > 7 || value < -7) {
        return value;
    }
    if (value >= -3 && value <= 3) {
        return 0;
    }
    return value > 0 ? 8 : -8;
}

void KRVXGradientColorWell::setGradientValue(Slider& sender)
{
    const std::int64_t dragged = sender.integerValue();
    const std::int64_t value = snappedGradientValue(dragged);
    if (dragged >= -7 && dragged <= 7) {
        sender.setDoubleValue(static_cast<double>(value));
    }
    if (gradientDelegate_ != nullptr) {
        gradientDelegate_->setGradientValue(value, this);
    }
    setNeedsDisplay();
}

bool KRVXGradientColorWell::respondsToSelector(std::string_view selector) const
{
    return selector == "setGradientValue:" || selector == "color";
}

void KRVXGradientColorWell::performAction(std::string_view selector, const ActionSender& sender)
{
    if (selector != "setGradientValue:") {
        return;
    }
    if (auto* slider = sender.viewAs<Slider>()) {
        setGradientValue(*slider);
    }
}

} // namespace vexto
