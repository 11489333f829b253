#include "widgets/KRVXHeaderTextField.hpp"

#include "toolkit/Application.hpp"
#include "toolkit/Canvas.hpp"
#include "toolkit/Window.hpp"

namespace vexto {

Shadow KRVXHeaderTextField::bottomShadowForWindow(const Window* window)
{
    float alpha = 1.0f;
    if (window != nullptr) {
        alpha = window->isMainWindow() && Application::shared().isActive() ? 0.7f : 0.3f;
    }
    return Shadow{Size{0, -1}, 1, Color::calibratedWhite(0, alpha)};
}

void KRVXHeaderTextField::drawCell(Canvas& canvas, Rect frame) const
{
    canvas.drawText(stringValue(), frame, font(), textColor(), alignment());
}

void KRVXHeaderTextField::drawRect(Canvas& canvas, const Rect&)
{
    canvas.saveGraphicsState();
    if (tag() != -1) {
        canvas.setShadow(bottomShadow());
    }
    drawCell(canvas, bounds());
    canvas.restoreGraphicsState();
}

} // namespace vexto
