#pragma once

#include "panel/PanelAppearance.hpp"
#include "panel/PanelContent.hpp"
#include "toolkit/View.hpp"

#include <map>
#include <memory>
#include <optional>
#include <vector>

namespace vexto {

class Image;
class TextMetrics;

// The daemon's window-cycling panel, drawn in a given appearance: a row of application icons
// with their names and shortcut badges, the selected one highlighted, and the selected
// application's windows listed under the row. A sample is the same view with made-up content.
// Its frame leaves room for the shadow.
class PanelView : public View {
public:
    // Room around the panel for its shadow.
    static constexpr double shadowRoom = 14;
    // The most window names listed under the row; the selected one is always among them.
    static constexpr std::size_t mostListedWindows = 12;

    // `screenWidth` bounds the panel when the appearance limits its width (0: no bound); with
    // `metrics`, names too long for their place are cut short with an ellipsis.
    PanelView(PanelAppearance appearance, PanelContent content, double screenWidth,
              const TextMetrics* metrics = nullptr);
    const char* className() const override { return "PanelView"; }
    bool isCustomDrawn() const override { return true; }

    const PanelAppearance& appearance() const { return look_; }
    const PanelContent& content() const { return content_; }
    Rect panelRect() const;
    double panelCornerRadius() const;
    Rect itemRect(std::size_t index) const;
    Rect selectionRect() const;
    // Inside the selection's border.
    Rect selectionFillRect() const;
    Rect windowRowRect(std::size_t line) const;
    double itemSize() const { return item_; }
    // The place in the cycle of what lies under the point (in the view's coordinates): an
    // application stands for its first window.
    std::optional<std::size_t> cycleIndexAt(Point point) const;

    // Moves the selection within the same content, as a step of a cycle does, and answers the
    // part of the picture that changed; none when the content differs in more than its
    // selection, so that the view must be made anew.
    std::optional<std::vector<Rect>> takeSelectionOf(const PanelContent& content);

    void drawRect(Canvas& canvas, const Rect& dirtyRect) override;
    // The two layers of the picture: the panel itself with its shadow, which stays the same for
    // a whole cycle, and what lies on it.
    void drawBackground(Canvas& canvas) const;
    // Only what meets `dirty`: a step redraws two items and the list.
    void drawForeground(Canvas& canvas, const std::vector<Rect>& dirty) const;

private:
    Font textFont(double size) const;
    bool showsIcons() const { return look_.iconMode != 0; }
    double labelHeight() const;
    // The first of the selected application's windows listed, and how many are.
    std::size_t firstListedWindow() const;
    std::size_t listedWindowCount() const;
    std::string fitted(const std::string& text, double width, const Font& font) const;
    void drawPanel(Canvas& canvas) const;
    void drawSelection(Canvas& canvas) const;
    void drawItem(Canvas& canvas, std::size_t index) const;
    void drawBadge(Canvas& canvas, std::size_t index) const;
    void drawWindowNames(Canvas& canvas, const std::vector<Rect>& dirty) const;
    // An item with its label and badge.
    Rect itemArea(std::size_t index) const;
    Rect windowListArea() const;
    bool showsSpaceBadge(const PanelContent::Window& window) const;
    // Where a row's desktop badge goes: at the row's right end.
    Rect spaceBadgeRect(const Rect& row, const std::string& name) const;
    void drawGenericIcon(Canvas& canvas, const PanelContent::Application& application,
                         const Rect& icon) const;
    void drawOwnItemIcon(Canvas& canvas, CycleItemKind kind, const Rect& icon) const;
    // An image of a window's or application's own pixels, made once per picture.
    const Image* imageOf(const std::shared_ptr<const Bitmap>& icon) const;

    PanelAppearance look_;
    PanelContent content_;
    const TextMetrics* metrics_;
    double item_ = 48;
    double gap_ = 14;
    double margin_ = 16;
    double labelSize_ = 11;
    // How far the row of items lies from the panel's left edge beyond the margin.
    double rowInset_ = 0;
    // The least width of the windows' list, in label sizes: about 40 characters.
    static constexpr double readableNameWidth = 22;
    mutable std::map<const Bitmap*, std::shared_ptr<Image>> images_;
};

} // namespace vexto
