#include "toolkit/TabView.hpp"

#include <algorithm>

namespace vexto {

void TabView::addTabViewItem(std::shared_ptr<TabViewItem> item)
{
    if (!item || item->tabView_ != nullptr) {
        return;
    }
    item->tabView_ = this;
    items_.push_back(std::move(item));
    notify(ViewChange::Items);
    if (selected_ == nullptr) {
        selectTabViewItem(items_.back().get());
    }
}

TabViewItem* TabView::tabViewItemAtIndex(int index) const
{
    if (index < 0 || index >= numberOfTabViewItems()) {
        return nullptr;
    }
    return items_[static_cast<std::size_t>(index)].get();
}

int TabView::indexOfTabViewItemWithIdentifier(std::string_view identifier) const
{
    const auto found = std::find_if(items_.begin(), items_.end(), [&](const auto& item) {
        return item->identifier() == identifier;
    });
    return found == items_.end() ? -1 : static_cast<int>(found - items_.begin());
}

int TabView::indexOfTabViewItem(const TabViewItem* item) const
{
    const auto found = std::find_if(items_.begin(), items_.end(),
                                    [&](const auto& candidate) { return candidate.get() == item; });
    return found == items_.end() ? -1 : static_cast<int>(found - items_.begin());
}

void TabView::selectTabViewItem(TabViewItem* item)
{
    if (item == nullptr || item == selected_ || indexOfTabViewItem(item) < 0) {
        return;
    }
    if (selected_ != nullptr && selected_->view()) {
        selected_->view()->removeFromSuperview();
    }
    selected_ = item;
    if (item->view()) {
        item->view()->setFrame(contentRect());
        item->view()->setAutoresizingMask(WidthSizable | HeightSizable);
        addSubview(item->view());
    }
    notify(ViewChange::Selection);
    if (delegate_ != nullptr) {
        delegate_->didSelectTabViewItem(*this, *item);
    }
}

bool TabView::selectTabViewItemWithIdentifier(std::string_view identifier)
{
    const int index = indexOfTabViewItemWithIdentifier(identifier);
    if (index < 0) {
        return false;
    }
    selectTabViewItemAtIndex(index);
    return true;
}

Rect TabView::contentRect() const
{
    const Rect b = bounds();
    return Rect(contentInset, contentInset, std::max(b.width() - 2 * contentInset, 0.0),
                std::max(b.height() - contentInset - tabStripHeight, 0.0));
}

} // namespace vexto
