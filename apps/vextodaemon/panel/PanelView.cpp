#include "panel/PanelView.hpp"

#include "foundation/TextEncoding.hpp"
#include "ports/TextMetrics.hpp"
#include "toolkit/Canvas.hpp"
#include "toolkit/Image.hpp"
#include "widgets/KRVXDrawGradientBevelInRect.hpp"
#include "widgets/KRVXGradientColorWellAccessoryView.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>

namespace vexto {

namespace {

constexpr double gapPerItem = 0.3;
constexpr double borderWidth = 2;
constexpr double labelGap = 4;
constexpr double lineFactor = 1.5;

// Generic icons: a colour each (blue, orange, red, green, yellow), so that the row reads as
// different applications.
constexpr std::array<std::array<float, 3>, 5> iconColors = {{
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
    const auto& [r, g, b] = iconColors[index % iconColors.size()];
    return Color::calibratedRGB(soften(r), soften(g), soften(b), 1);
}

Shadow textShadow()
{
    return Shadow{Size{0, -1}, 2, Color::calibratedWhite(0, 0.6f)};
}

// The first character of a name, whole.
std::string initial(const std::string& name)
{
    if (name.empty()) {
        return "?";
    }
    std::size_t end = 0;
    TextEncoding::nextCodePoint(name, end);
    return name.substr(0, end);
}

// "1" to "9", then "a" to "z": what a badge shows and a typed key picks.
// The badge of the program at `index` among the programs of the row.
std::string badgeText(std::size_t index)
{
    if (index < 9) {
        return std::to_string(index + 1);
    }
    return index < 9 + 26 ? std::string(1, char('a' + (index - 9))) : std::string();
}

} // namespace

PanelView::PanelView(PanelAppearance appearance, PanelContent content, double screenWidth,
                     const TextMetrics* metrics)
    : look_(std::move(appearance)), content_(std::move(content)), metrics_(metrics)
{
    item_ = look_.itemSize;
    const auto count = static_cast<double>(std::max<std::size_t>(content_.applications.size(), 1));
    const auto widthFor = [count](double item, double margin) {
        return 2 * margin + count * item + (count - 1) * item * gapPerItem;
    };
    margin_ = std::max(12.0, item_ * 0.35);
    // A panel never grows past the screen; the appearance may bound it further.
    double limit = screenWidth > 0 ? screenWidth - 2 * shadowRoom : 0;
    if (look_.maximumWidth && screenWidth > 0) {
        limit = std::min(limit, *look_.maximumWidth * screenWidth);
    }
    if (limit > 0 && widthFor(item_, margin_) > limit) {
        item_ = std::max(PanelAppearance::smallestItem,
                         (limit - 2 * margin_) / (count + (count - 1) * gapPerItem));
    }
    gap_ = item_ * gapPerItem;
    labelSize_ = std::clamp(item_ * 0.22, 10.0, 24.0);
    const double icons = showsIcons() ? item_ : 0;
    // Under the selection, which reaches half a gap below the labels.
    const double windows =
        gap_ / 2 + labelGap + static_cast<double>(listedWindowCount()) * labelSize_ * lineFactor;
    const double height = margin_ + icons + labelHeight() + windows + margin_;
    // A row of few items is widened, items centred, so that the windows' names listed under it
    // keep room to be read; the room is the same whichever application is selected, so that a
    // step never resizes the panel.
    const double row = widthFor(item_, margin_);
    const double readable = 2 * margin_ + labelSize_ * readableNameWidth;
    const double width = std::max(row, limit > 0 ? std::min(readable, limit) : readable);
    rowInset_ = (width - row) / 2;
    setFrameSize(Size{width + 2 * shadowRoom, height + 2 * shadowRoom});
}

double PanelView::labelHeight() const
{
    const double line = labelSize_ * lineFactor;
    if (!look_.showApplicationNames) {
        // Without names or icons the row still needs room to show its selection.
        return showsIcons() ? 0 : line;
    }
    return (showsIcons() ? labelGap : 0) + line;
}

std::size_t PanelView::listedWindowCount() const
{
    const PanelContent::Application* selected = content_.selected();
    return selected != nullptr ? std::min(selected->windows.size(), mostListedWindows) : 0;
}

std::size_t PanelView::firstListedWindow() const
{
    const PanelContent::Application* selected = content_.selected();
    if (selected == nullptr || selected->windows.size() <= mostListedWindows) {
        return 0;
    }
    const std::size_t last = selected->windows.size() - mostListedWindows;
    return std::min(content_.selectedWindow >= mostListedWindows / 2
                        ? content_.selectedWindow - mostListedWindows / 2
                        : 0,
                    last);
}

Rect PanelView::panelRect() const
{
    return bounds().insetBy(shadowRoom, shadowRoom);
}

double PanelView::panelCornerRadius() const
{
    return std::min(18.0, margin_);
}

Rect PanelView::itemRect(std::size_t index) const
{
    const Rect panel = panelRect();
    const double height = showsIcons() ? item_ : 0;
    return Rect(panel.minX() + rowInset_ + margin_ + static_cast<double>(index) * (item_ + gap_),
                panel.maxY() - margin_ - height, item_, height);
}

Rect PanelView::selectionRect() const
{
    // With nothing selected: an empty place at the row's start, at the row's height.
    const bool any = content_.selected() != nullptr;
    const Rect item = itemRect(any ? content_.selectedApplication : 0);
    const double labels = labelHeight();
    const double pad = gap_ / 2;
    return Rect(item.minX() - pad, item.minY() - labels - pad, any ? item.width() + 2 * pad : 0,
                item.height() + labels + 2 * pad);
}

Rect PanelView::selectionFillRect() const
{
    return selectionRect().insetBy(borderWidth, borderWidth);
}

Rect PanelView::windowRowRect(std::size_t line) const
{
    const Rect panel = panelRect();
    const double lineHeight = labelSize_ * lineFactor;
    const double top = selectionRect().minY() - labelGap - static_cast<double>(line) * lineHeight;
    return Rect(panel.minX() + margin_, top - lineHeight, panel.width() - 2 * margin_, lineHeight);
}

std::optional<std::size_t> PanelView::cycleIndexAt(Point point) const
{
    for (std::size_t index = 0; index < content_.applications.size(); ++index) {
        const Rect item = itemRect(index);
        const Rect reach(item.minX() - gap_ / 2, item.minY() - labelHeight(), item.width() + gap_,
                         item.height() + labelHeight());
        if (reach.contains(point) && !content_.applications[index].windows.empty()) {
            return content_.applications[index].windows.front().cycleIndex;
        }
    }
    const PanelContent::Application* selected = content_.selected();
    for (std::size_t line = 0; line < listedWindowCount(); ++line) {
        if (windowRowRect(line).contains(point)) {
            return selected->windows[firstListedWindow() + line].cycleIndex;
        }
    }
    return std::nullopt;
}

std::optional<std::vector<Rect>> PanelView::takeSelectionOf(const PanelContent& content)
{
    const auto sameWindows = [](const PanelContent::Window& a, const PanelContent::Window& b) {
        return a.title == b.title && a.cycleIndex == b.cycleIndex && a.icon == b.icon;
    };
    const auto sameApplication = [&](const PanelContent::Application& a,
                                     const PanelContent::Application& b) {
        return a.name == b.name && a.key == b.key && a.icon == b.icon && a.overlay == b.overlay &&
               a.kind == b.kind &&
               std::equal(a.windows.begin(), a.windows.end(), b.windows.begin(), b.windows.end(),
                          sameWindows);
    };
    if (!std::equal(content_.applications.begin(), content_.applications.end(),
                    content.applications.begin(), content.applications.end(), sameApplication)) {
        return std::nullopt;
    }
    const std::size_t listedBefore = listedWindowCount();
    std::vector<Rect> changed = {selectionRect(), windowListArea()};
    const std::size_t previous = content_.selectedApplication;
    content_.selectedApplication = content.selectedApplication;
    content_.selectedWindow = content.selectedWindow;
    if (listedWindowCount() != listedBefore) {
        return std::nullopt; // the panel's height changes with the listed windows
    }
    setNeedsDisplay(true);
    changed.push_back(selectionRect());
    // The neighbours' badges and labels reach into the selection's area.
    for (const std::size_t selected : {previous, content_.selectedApplication}) {
        for (const std::size_t index : {selected - 1, selected, selected + 1}) {
            if (index < content_.applications.size()) {
                changed.push_back(itemArea(index));
            }
        }
    }
    return changed;
}

Rect PanelView::itemArea(std::size_t index) const
{
    const Rect item = itemRect(index);
    const double badge = std::max(12.0, item_ * 0.32) * 0.25;
    return Rect(item.minX() - gap_ / 2, item.minY() - labelHeight() - gap_ / 2,
                item.width() + gap_ + badge, item.height() + labelHeight() + gap_ + badge);
}

Rect PanelView::windowListArea() const
{
    const std::size_t rows = listedWindowCount();
    return rows == 0 ? Rect() : windowRowRect(0).unionWith(windowRowRect(rows - 1));
}

Font PanelView::textFont(double size) const
{
    return look_.font ? look_.font->withSize(size) : Font::systemFontOfSize(size);
}

std::string PanelView::fitted(const std::string& text, double width, const Font& font) const
{
    if (metrics_ == nullptr || metrics_->widthOfString(text, font) <= width) {
        return text;
    }
    // The longest start of the text that fits with the ellipsis, cut between characters.
    std::vector<std::size_t> ends;
    for (std::size_t at = 0; at < text.size();) {
        TextEncoding::nextCodePoint(text, at);
        ends.push_back(at);
    }
    const std::string ellipsis = "\u2026";
    const auto fits = [&](std::size_t count) {
        return count == 0 ||
               metrics_->widthOfString(text.substr(0, ends[count - 1]) + ellipsis, font) <= width;
    };
    std::size_t low = 0;
    std::size_t high = ends.size();
    while (low < high) {
        const std::size_t middle = (low + high + 1) / 2;
        if (fits(middle)) {
            low = middle;
        } else {
            high = middle - 1;
        }
    }
    return (low == 0 ? std::string() : text.substr(0, ends[low - 1])) + ellipsis;
}

void PanelView::drawRect(Canvas& canvas, const Rect& dirty)
{
    drawBackground(canvas);
    drawForeground(canvas, {dirty});
}

void PanelView::drawBackground(Canvas& canvas) const
{
    canvas.saveGraphicsState();
    drawPanel(canvas);
    canvas.restoreGraphicsState();
}

void PanelView::drawForeground(Canvas& canvas, const std::vector<Rect>& dirty) const
{
    const auto meets = [&](const Rect& area) {
        return std::any_of(dirty.begin(), dirty.end(),
                           [&](const Rect& d) { return !area.intersection(d).isEmpty(); });
    };
    canvas.saveGraphicsState();
    canvas.setShouldSmoothFonts(look_.smoothFonts);
    if (content_.selected() != nullptr && meets(selectionRect())) {
        drawSelection(canvas);
    }
    for (std::size_t index = 0; index < content_.applications.size(); ++index) {
        if (meets(itemArea(index))) {
            drawItem(canvas, index);
        }
    }
    if (look_.shortcutBadges && showsIcons()) {
        for (std::size_t index = 0; index < content_.applications.size(); ++index) {
            if (meets(itemArea(index))) {
                drawBadge(canvas, index);
            }
        }
    }
    drawWindowNames(canvas, dirty);
    canvas.restoreGraphicsState();
}

void PanelView::drawPanel(Canvas& canvas) const
{
    canvas.saveGraphicsState();
    if (look_.panelShadow) {
        canvas.setShadow(Shadow{Size{0, -4}, 12, Color::calibratedWhite(0, 0.45f)});
    }
    KRVXDrawGradientBevelInRect(canvas, nullptr, look_.background, panelRect(),
                                panelCornerRadius());
    canvas.restoreGraphicsState();
}

void PanelView::drawSelection(Canvas& canvas) const
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

void PanelView::drawItem(Canvas& canvas, std::size_t index) const
{
    const PanelContent::Application& application = content_.applications[index];
    const Rect item = itemRect(index);
    if (showsIcons()) {
        const Rect icon = item.insetBy(item_ * 0.08, item_ * 0.08);
        if (const Image* own = imageOf(application.icon)) {
            canvas.drawImage(*own, icon, CompositingOperation::SourceOver, 1);
        } else if (application.kind != CycleItemKind::Window) {
            drawOwnItemIcon(canvas, application.kind, icon);
        } else {
            drawGenericIcon(canvas, application, icon);
        }
        const Image* overlay = look_.documentIconOverlays ? imageOf(application.overlay) : nullptr;
        if (overlay != nullptr) {
            // In the lower right corner, clear of the badge in the upper one.
            const double side = icon.width() * 0.5;
            canvas.drawImage(*overlay, Rect(icon.maxX() - side, icon.minY(), side, side),
                             CompositingOperation::SourceOver, 1);
        }
    }
    if (!look_.showApplicationNames) {
        return;
    }
    canvas.saveGraphicsState();
    if (look_.applicationNameShadow) {
        canvas.setShadow(textShadow());
    }
    const double lineHeight = labelSize_ * lineFactor;
    const Rect label(item.minX() - gap_ / 2, item.minY() - labelHeight(), item.width() + gap_,
                     lineHeight);
    const Font font = textFont(labelSize_);
    canvas.drawText(fitted(application.name, label.width(), font), label, font,
                    look_.applicationName, TextAlignment::Center);
    canvas.restoreGraphicsState();
}

bool PanelView::showsSpaceBadge(const PanelContent::Window& window) const
{
    if (window.desktopName.empty()) {
        return false;
    }
    return look_.alwaysShowSpaceBadges ? !(look_.hideCurrentSpaceBadges && window.onCurrentDesktop)
                                       : !window.onCurrentDesktop;
}

Rect PanelView::spaceBadgeRect(const Rect& row, const std::string& name) const
{
    // Wide enough for a short name, never more than a quarter of the row.
    const double height = row.height() * 0.8;
    std::size_t characters = 0;
    for (std::size_t at = 0; at < name.size(); ++characters) {
        TextEncoding::nextCodePoint(name, at);
    }
    const double width = std::min(row.width() / 4, height + double(characters) * labelSize_ * 0.55);
    return Rect(row.maxX() - width - row.height() / 4, row.midY() - height / 2, width, height);
}

void PanelView::drawGenericIcon(Canvas& canvas, const PanelContent::Application& application,
                                const Rect& icon) const
{
    // Coloured by the program's name, so that a program keeps its colour from one cycle to the
    // next.
    const std::size_t colour = std::hash<std::string>{}(application.name);
    const Gradient body(iconColor(colour, 1.0f), iconColor(colour, 0.7f));
    KRVXDrawGradientBevelInRect(canvas, &body, std::nullopt, icon, icon.width() * 0.22);
    canvas.drawText(initial(application.name), icon, Font::systemFontOfSize(icon.height() * 0.5),
                    Color::whiteColor(), TextAlignment::Center);
}

void PanelView::drawOwnItemIcon(Canvas& canvas, CycleItemKind kind, const Rect& icon) const
{
    // A tick for switching, a cross for leaving: drawn, so that no icon theme is needed.
    const bool activates = kind == CycleItemKind::ActivationItem;
    const auto rgb = [](float r, float g, float b) {
        return Color::calibratedRGB(r, g, b, 1);
    };
    const Gradient body(activates ? rgb(0.25f, 0.62f, 0.33f) : rgb(0.72f, 0.25f, 0.22f),
                        activates ? rgb(0.16f, 0.45f, 0.23f) : rgb(0.52f, 0.16f, 0.14f));
    const Rect face = icon.insetBy(icon.width() * 0.12, icon.height() * 0.12);
    KRVXDrawGradientBevelInRect(canvas, &body, std::nullopt, face, face.width() * 0.5);
    // Points of the mark on a 0..1 square, y upwards, scaled onto the face's middle.
    const Rect mark = face.insetBy(face.width() * 0.27, face.height() * 0.27);
    const auto at = [&](double x, double y) {
        return Point{mark.minX() + x * mark.width(), mark.minY() + y * mark.height()};
    };
    const Color white = Color::whiteColor();
    if (activates) {
        canvas.fill(BezierPath::polygon({at(0, 0.55), at(0.14, 0.69), at(0.38, 0.3), at(0.86, 1),
                                         at(1, 0.86), at(0.38, 0)}),
                    white);
    } else {
        canvas.fill(BezierPath::polygon({at(0, 0.12), at(0.12, 0), at(1, 0.88), at(0.88, 1)}),
                    white);
        canvas.fill(BezierPath::polygon({at(0, 0.88), at(0.88, 0), at(1, 0.12), at(0.12, 1)}),
                    white);
    }
}

const Image* PanelView::imageOf(const std::shared_ptr<const Bitmap>& icon) const
{
    if (!icon || icon->width <= 0 || icon->height <= 0) {
        return nullptr;
    }
    auto& image = images_[icon.get()];
    if (!image) {
        image = Image::withBitmap(*icon);
    }
    return image.get();
}

void PanelView::drawBadge(Canvas& canvas, std::size_t index) const
{
    const auto isProgram = [](const PanelContent::Application& a) {
        return a.kind == CycleItemKind::Window;
    };
    const auto& applications = content_.applications;
    if (!isProgram(applications[index])) {
        return;
    }
    const auto before = std::count_if(
        applications.begin(), applications.begin() + static_cast<std::ptrdiff_t>(index), isProgram);
    const std::string text = badgeText(static_cast<std::size_t>(before));
    if (text.empty()) {
        return;
    }
    const Rect item = itemRect(index);
    const double side = std::max(12.0, item_ * 0.32);
    const Rect badge(item.maxX() - side * 0.75, item.maxY() - side * 0.75, side, side);
    KRVXDrawGradientBevelInRect(canvas, nullptr, look_.keyBadge, badge, side / 2);
    canvas.drawText(text, badge, Font::systemFontOfSize(side * 0.6), Color::whiteColor(),
                    TextAlignment::Center);
}

void PanelView::drawWindowNames(Canvas& canvas, const std::vector<Rect>& dirty) const
{
    const PanelContent::Application* selected = content_.selected();
    if (selected == nullptr) {
        return;
    }
    canvas.saveGraphicsState();
    if (look_.windowNameShadow) {
        canvas.setShadow(textShadow());
    }
    const Font font = textFont(labelSize_);
    const std::size_t first = firstListedWindow();
    for (std::size_t line = 0; line < listedWindowCount(); ++line) {
        const Rect row = windowRowRect(line);
        if (std::none_of(dirty.begin(), dirty.end(),
                         [&](const Rect& d) { return !row.intersection(d).isEmpty(); })) {
            continue;
        }
        const bool chosen = first + line == content_.selectedWindow;
        if (chosen) {
            // The selected window's row is highlighted like the selected application.
            canvas.saveGraphicsState();
            canvas.setShadow(std::nullopt);
            KRVXDrawGradientBevelInRect(canvas, nullptr, look_.selection, row, row.height() / 2);
            canvas.restoreGraphicsState();
        }
        const PanelContent::Window& window = selected->windows[first + line];
        Rect text = row;
        // With window icons, each listed window shows its own at the start of its row.
        if (look_.iconMode == 2) {
            const double side = row.height() * 0.8;
            const Rect icon(row.minX() + row.height() / 2, row.midY() - side / 2, side, side);
            if (const Image* own = imageOf(window.icon)) {
                canvas.drawImage(*own, icon, CompositingOperation::SourceOver, 1);
            }
            text = Rect(icon.maxX(), row.minY(), row.width() - 2 * (icon.maxX() - row.minX()),
                        row.height());
        }
        if (showsSpaceBadge(window)) {
            const Rect badge = spaceBadgeRect(row, window.desktopName);
            canvas.saveGraphicsState();
            canvas.setShadow(std::nullopt);
            KRVXDrawGradientBevelInRect(canvas, nullptr, look_.spaceBadge, badge,
                                        badge.height() / 2);
            const Font small = Font::systemFontOfSize(labelSize_ * 0.85);
            canvas.drawText(fitted(window.desktopName, badge.width() - badge.height(), small),
                            badge, small, Color::whiteColor(), TextAlignment::Center);
            canvas.restoreGraphicsState();
            // The title keeps to the middle, clear of the badge on either side.
            const double clear = row.maxX() - badge.minX();
            text = Rect(std::max(text.minX(), row.minX() + clear), text.minY(),
                        std::max(0.0, std::min(text.maxX(), row.maxX() - clear) -
                                          std::max(text.minX(), row.minX() + clear)),
                        text.height());
        }
        canvas.drawText(fitted(window.title, text.width(), font), text, font,
                        chosen ? look_.selectionWindowName : look_.windowName,
                        TextAlignment::Center);
    }
    canvas.restoreGraphicsState();
}

} // namespace vexto
