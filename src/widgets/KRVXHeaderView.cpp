#include "widgets/KRVXHeaderView.hpp"

#include "toolkit/Application.hpp"
#include "toolkit/Canvas.hpp"
#include "toolkit/NotificationCenter.hpp"
#include "toolkit/Window.hpp"
#include "widgets/KRVXDrawGradientBevelInRect.hpp"

namespace vexto {

namespace {

constexpr float cornerRadius = 8;

const Gradient& activeHeaderGradient()
{
    static const Gradient gradient(Color::calibratedWhite(0.75f, 1),
                                   Color::calibratedWhite(0.5f, 1));
    return gradient;
}

const Gradient& inactiveHeaderGradient()
{
    static const Gradient gradient(Color::calibratedWhite(0.9f, 1),
                                   Color::calibratedWhite(0.7f, 1));
    return gradient;
}

} // namespace

KRVXHeaderView::KRVXHeaderView(Rect frame) : View(frame)
{
    for (const char* name :
         {"NSWindowDidBecomeMainNotification", "NSWindowDidResignMainNotification"}) {
        NotificationCenter::defaultCenter().addObserver(
            this, name, nullptr, [this](const NotificationCenter::Notification& notification) {
                updateMainWindowStatus(notification.object);
            });
    }
}

KRVXHeaderView::~KRVXHeaderView()
{
    NotificationCenter::defaultCenter().removeObserver(this);
}

void KRVXHeaderView::updateMainWindowStatus(const void* window)
{
    if (window != nullptr && window == this->window()) {
        setNeedsDisplay(true);
    }
}

void KRVXHeaderView::drawRect(Canvas& canvas, const Rect&)
{
    const Rect b = bounds();
    const auto strip = [&](double lift) {
        return Rect(b.minX(), b.minY() + lift, b.width(), b.height() - 2);
    };
    // The light lower edge, the darker top edge, then the strip between them.
    KRVXDrawGradientBevelInRect(canvas, nullptr, Color::calibratedWhite(0.95f, 1), strip(0),
                                cornerRadius);
    const bool main =
        Application::shared().isActive() && window() != nullptr && window()->isMainWindow();
    KRVXDrawGradientBevelInRect(canvas, nullptr, Color::calibratedWhite(main ? 0.4f : 0.7f, 1),
                                strip(2), cornerRadius);
    KRVXDrawGradientBevelInRect(canvas, main ? &activeHeaderGradient() : &inactiveHeaderGradient(),
                                std::nullopt, strip(1), cornerRadius);
}

} // namespace vexto
