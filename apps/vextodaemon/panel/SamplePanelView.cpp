#include "panel/SamplePanelView.hpp"

#include "toolkit/Canvas.hpp"
#include "widgets/KRVXDrawGradientBevelInRect.hpp"
#include "widgets/KRVXGradientColorWellAccessoryView.hpp"

#include <algorithm>
#include <cmath>

namespace vexto {

namespace {

constexpr double gapPerItem = 0.3;
constexpr double borderWidth = 2;
constexpr double labelGap = 4;
constexpr double lineFactor = 1.5;

// Sample icons: a colour each (blue, orange, red, green, yellow), so that the row reads as
// different applications.
constexpr std::array<std::array<float, 3>, SamplePanelView::applicationCount> iconColors = {{
    {0.0f, 0.52f, 1.0f},
    {1.0f, 0.48f, 0.0f},
    {1.0f, 0.0f, 0.0f},
    {0.02f, 1.0f, 0.0f},
    {1.0f, 0.78f, 0.0f},
}};

// The icon's colour softened towards grey, at a brightness.
Color iconColor(std::size_t index, float brightness)
{
    const auto soften = [brightness](float c) {
        return brightness * (0.35f + 0.65f * c);
    };
    const auto& [r, g, b] = iconColors[index];
    return Color::calibratedRGB(soften(r), soften(g), soften(b), 1);
}

Shadow textShadow()
{
    return Shadow{Size{0, -1}, 2, Color::calibratedWhite(0, 0.6f)};
}

} // namespace

SamplePanelView::SamplePanelView(SampleAppearance appearance, double screenWidth)
    : look_(std::move(appearance))
{
    item_ = look_.itemSize;
    const auto count = static_cast<double>(applicationCount);
    const auto widthFor = [count](double item, double margin) {
        return 2 * margin + count * item + (count - 1) * item * gapPerItem;
    };
    margin_ = std::max(12.0, item_ * 0.35);
    if (look_.maximumWidth && screenWidth > 0) {
        const double limit = *look_.maximumWidth * screenWidth;
        if (widthFor(item_, margin_) > limit) {
            item_ = std::max(SampleAppearance::smallestItem,
                             (limit - 2 * margin_) / (count + (count - 1) * gapPerItem));
        }
    }
    gap_ = item_ * gapPerItem;
    labelSize_ = std::clamp(item_ * 0.22, 10.0, 24.0);
    const double labels = labelSize_ * lineFactor;
    // Under the selection, which reaches half a gap below the labels.
    const double windows =
        gap_ / 2 + labelGap + static_cast<double>(windowNames.size()) * labelSize_ * lineFactor;
    const double height = margin_ + item_ + labelGap + labels + windows + margin_;
    setFrameSize(Size{widthFor(item_, margin_) + 2 * shadowRoom, height + 2 * shadowRoom});
}

Rect SamplePanelView::panelRect() const
{
    return bounds().insetBy(shadowRoom, shadowRoom);
}

double SamplePanelView::panelCornerRadius() const
{
    return std::min(18.0, margin_);
}

Rect SamplePanelView::itemRect(std::size_t index) const
{
    const Rect panel = panelRect();
    return Rect(panel.minX() + margin_ + static_cast<double>(index) * (item_ + gap_),
                panel.maxY() - margin_ - item_, item_, item_);
}

Rect SamplePanelView::selectionRect() const
{
    const Rect item = itemRect(selectedIndex);
    const double labels = labelGap + labelSize_ * lineFactor;
    const double pad = gap_ / 2;
    return Rect(item.minX() - pad, item.minY() - labels - pad, item.width() + 2 * pad,
                item.height() + labels + 2 * pad);
}

Rect SamplePanelView::selectionFillRect() const
{
    return selectionRect().insetBy(borderWidth, borderWidth);
}

Font SamplePanelView::textFont(double size) const
{
    return look_.font ? look_.font->withSize(size) : Font::systemFontOfSize(size);
}

void SamplePanelView::drawRect(Canvas& canvas, const Rect&)
{
    canvas.saveGraphicsState();
    canvas.setShouldSmoothFonts(look_.smoothFonts);
    drawPanel(canvas);
    drawSelection(canvas);
    for (std::size_t index = 0; index < applicationCount; ++index) {
        drawItem(canvas, index);
    }
    if (look_.shortcutBadges) {
        for (std::size_t index = 0; index < applicationCount; ++index) {
            drawBadge(canvas, index);
        }
    }
    drawWindowNames(canvas);
    canvas.restoreGraphicsState();
}

void SamplePanelView::drawPanel(Canvas& canvas) const
{
    canvas.saveGraphicsState();
    if (look_.panelShadow) {
        canvas.setShadow(Shadow{Size{0, -4}, 12, Color::calibratedWhite(0, 0.45f)});
    }
    KRVXDrawGradientBevelInRect(canvas, nullptr, look_.background, panelRect(),
                                panelCornerRadius());
    canvas.restoreGraphicsState();
}

void SamplePanelView::drawSelection(Canvas& canvas) const
{
    const double radius = std::min(12.0, item_ * 0.2);
    KRVXDrawGradientBevelInRect(canvas, nullptr, look_.selectionBorder, selectionRect(), radius);
    const Rect fill = selectionFillRect();
    const double innerRadius = std::max(0.0, radius - borderWidth);
    KRVXDrawGradientBevelInRect(canvas, nullptr, look_.selection, fill, innerRadius);
    // The same shading as the selection colour well shows.
    canvas.saveGraphicsState();
    canvas.clip(BezierPath::roundedRect(fill, innerRadius, innerRadius));
    KRVXGradientColorWellAccessoryView::drawGradientWithValue(canvas, look_.selectionGradient,
                                                              fill);
    canvas.restoreGraphicsState();
}

void SamplePanelView::drawItem(Canvas& canvas, std::size_t index) const
{
    const Rect item = itemRect(index);
    const Rect icon = item.insetBy(item_ * 0.08, item_ * 0.08);
    const Gradient body(iconColor(index, 1.0f), iconColor(index, 0.7f));
    KRVXDrawGradientBevelInRect(canvas, &body, std::nullopt, icon, icon.width() * 0.22);
    const std::string_view name = applicationNames[index];
    canvas.drawText(std::string(name.substr(0, 1)), icon,
                    Font::systemFontOfSize(icon.height() * 0.5), Color::whiteColor(),
                    TextAlignment::Center);

    canvas.saveGraphicsState();
    if (look_.applicationNameShadow) {
        canvas.setShadow(textShadow());
    }
    const double labelHeight = labelSize_ * lineFactor;
    const Rect label(item.minX() - gap_ / 2, item.minY() - labelGap - labelHeight,
                     item.width() + gap_, labelHeight);
    canvas.drawText(std::string(name), label, textFont(labelSize_), look_.applicationName,
                    TextAlignment::Center);
    canvas.restoreGraphicsState();
}

void SamplePanelView::drawBadge(Canvas& canvas, std::size_t index) const
{
    const Rect item = itemRect(index);
    const double side = std::max(12.0, item_ * 0.32);
    const Rect badge(item.maxX() - side * 0.75, item.maxY() - side * 0.75, side, side);
    KRVXDrawGradientBevelInRect(canvas, nullptr, look_.keyBadge, badge, side / 2);
    canvas.drawText(std::to_string(index + 1), badge, Font::systemFontOfSize(side * 0.6),
                    Color::whiteColor(), TextAlignment::Center);
}

void SamplePanelView::drawWindowNames(Canvas& canvas) const
{
    canvas.saveGraphicsState();
    if (look_.windowNameShadow) {
        canvas.setShadow(textShadow());
    }
    const Rect panel = panelRect();
    const double lineHeight = labelSize_ * lineFactor;
    double top = selectionRect().minY() - labelGap;
    for (std::size_t line = 0; line < windowNames.size(); ++line) {
        const Rect row(panel.minX() + margin_, top - lineHeight, panel.width() - 2 * margin_,
                       lineHeight);
        if (line == 0) {
            // The selected window's row is highlighted like the selected application.
            canvas.saveGraphicsState();
            canvas.setShadow(std::nullopt);
            KRVXDrawGradientBevelInRect(canvas, nullptr, look_.selection, row, lineHeight / 2);
            canvas.restoreGraphicsState();
        }
        canvas.drawText(std::string(windowNames[line]), row, textFont(labelSize_),
                        line == 0 ? look_.selectionWindowName : look_.windowName,
                        TextAlignment::Center);
        top -= lineHeight;
    }
    canvas.restoreGraphicsState();
}

} // namespace vexto
