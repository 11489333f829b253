#pragma once

#include "toolkit/TabViewItem.hpp"
#include "toolkit/View.hpp"

#include <memory>
#include <string_view>
#include <vector>

namespace vexto {

class TabView;

class TabViewDelegate {
public:
    virtual ~TabViewDelegate() = default;
    virtual void didSelectTabViewItem(TabView& tabView, TabViewItem& item) = 0;
};

// Tabs over a content area; the selected tab's view is the tab view's only subview.
class TabView : public View {
public:
    // Room the tabs take above the content, and the content's inset from the other edges.
    static constexpr double tabStripHeight = 26;
    static constexpr double contentInset = 10;

    using View::View;
    const char* className() const override { return "TabView"; }

    void addTabViewItem(std::shared_ptr<TabViewItem> item);
    int numberOfTabViewItems() const { return static_cast<int>(items_.size()); }
    TabViewItem* tabViewItemAtIndex(int index) const;
    // -1 when no tab has that identifier.
    int indexOfTabViewItemWithIdentifier(std::string_view identifier) const;
    int indexOfTabViewItem(const TabViewItem* item) const;
    TabViewItem* selectedTabViewItem() const { return selected_; }

    void selectTabViewItem(TabViewItem* item);
    void selectTabViewItemAtIndex(int index) { selectTabViewItem(tabViewItemAtIndex(index)); }
    // False, and the selection unchanged, when no tab has that identifier.
    bool selectTabViewItemWithIdentifier(std::string_view identifier);

    Rect contentRect() const;

    TabViewDelegate* delegate() const { return delegate_; }
    void setDelegate(TabViewDelegate* delegate) { delegate_ = delegate; }

private:
    std::vector<std::shared_ptr<TabViewItem>> items_;
    TabViewItem* selected_ = nullptr;
    TabViewDelegate* delegate_ = nullptr;
};

} // namespace vexto
