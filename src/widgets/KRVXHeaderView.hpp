#pragma once

#include "toolkit/View.hpp"

namespace vexto {

// The header strip behind the title row of a settings page: a rounded strip whose look follows
// whether its window is the main window of the active application.
class KRVXHeaderView : public View {
public:
    explicit KRVXHeaderView(Rect frame = {});
    ~KRVXHeaderView() override;
    KRVXHeaderView(const KRVXHeaderView&) = delete;
    KRVXHeaderView& operator=(const KRVXHeaderView&) = delete;

    const char* className() const override { return "KRVXHeaderView"; }
    bool isCustomDrawn() const override { return true; }
    void drawRect(Canvas& canvas, const Rect& dirtyRect) override;

    // Redraws only when the window that became or stopped being main is this view's.
    void updateMainWindowStatus(const void* window);
};

} // namespace vexto
