#pragma once

#include "panel/SampleAppearance.hpp"
#include "toolkit/View.hpp"

#include <array>
#include <string_view>

namespace vexto {

// The daemon's window-cycling panel with sample content, drawn in a given appearance: a row of
// application icons with their names and shortcut badges, the second one selected, and the
// selected application's windows listed under the row. Its frame leaves room for the shadow.
class SamplePanelView : public View {
public:
    static constexpr std::size_t applicationCount = 5;
    static constexpr std::size_t selectedIndex = 1;
    static constexpr std::array<std::string_view, applicationCount> applicationNames = {
        "Files", "Mail", "Terminal", "Browser", "Notes"};
    static constexpr std::array<std::string_view, 3> windowNames = {
        "Inbox", "Re: Quarterly figures", "Drafts"};
    // Room around the panel for its shadow.
    static constexpr double shadowRoom = 14;

    // `screenWidth` bounds the panel when the appearance limits its width (0: no bound).
    SamplePanelView(SampleAppearance appearance, double screenWidth);
    const char* className() const override { return "SamplePanelView"; }
    bool isCustomDrawn() const override { return true; }

    const SampleAppearance& appearance() const { return look_; }
    Rect panelRect() const;
    double panelCornerRadius() const;
    Rect itemRect(std::size_t index) const;
    Rect selectionRect() const;
    // Inside the selection's border.
    Rect selectionFillRect() const;
    double itemSize() const { return item_; }

    void drawRect(Canvas& canvas, const Rect& dirtyRect) override;

private:
    Font textFont(double size) const;
    void drawPanel(Canvas& canvas) const;
    void drawSelection(Canvas& canvas) const;
    void drawItem(Canvas& canvas, std::size_t index) const;
    void drawBadge(Canvas& canvas, std::size_t index) const;
    void drawWindowNames(Canvas& canvas) const;

    SampleAppearance look_;
    double item_ = 48;
    double gap_ = 14;
    double margin_ = 16;
    double labelSize_ = 11;
};

} // namespace vexto
