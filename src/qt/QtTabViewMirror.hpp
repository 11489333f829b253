#pragma once

#include "qt/QtViewMirror.hpp"

namespace vexto {

class TabView;

// A QTabWidget with one page per tab item, each holding the mirror of the item's view.
// Choosing a tab selects it in the model (so the tab view's delegate runs).
class QtTabViewMirror final : public QtViewMirror {
public:
    QtTabViewMirror(std::shared_ptr<TabView> tabView, QWidget* parent);

protected:
    void syncAll() override;
    void modelChanged(ViewChange change) override;
    bool mirrorsSubviews() const override { return false; }

private:
    void rebuildPages();

    TabView& tabView_;
};

} // namespace vexto
