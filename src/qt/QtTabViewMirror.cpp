#include "qt/QtTabViewMirror.hpp"

#include "toolkit/TabView.hpp"

#include <QTabWidget>

namespace vexto {

QtTabViewMirror::QtTabViewMirror(std::shared_ptr<TabView> tabView, QWidget* parent)
    : QtViewMirror(tabView, new QTabWidget(parent)), tabView_(*tabView)
{
    auto* tabs = static_cast<QTabWidget*>(widget());
    QObject::connect(tabs, &QTabWidget::currentChanged, tabs, [this](int index) {
        if (!pushing_) {
            tabView_.selectTabViewItemAtIndex(index);
        }
    });
    rebuildPages();
}

void QtTabViewMirror::rebuildPages()
{
    auto* tabs = static_cast<QTabWidget*>(widget());
    const QSignalBlocker block(tabs);
    children_.clear();
    while (tabs->count() > 0) {
        QWidget* page = tabs->widget(0);
        tabs->removeTab(0);
        page->deleteLater();
    }
    for (int i = 0; i < tabView_.numberOfTabViewItems(); ++i) {
        TabViewItem* item = tabView_.tabViewItemAtIndex(i);
        auto* page = new QWidget();
        tabs->addTab(page, plainTitle(item->label()));
        if (item->view()) {
            auto child = create(item->view(), page);
            child->setPinnedToParentOrigin(true);
            child->place();
            child->widget()->show();
            children_.push_back(std::move(child));
        }
    }
    tabs->setCurrentIndex(tabView_.indexOfTabViewItem(tabView_.selectedTabViewItem()));
}

void QtTabViewMirror::syncAll()
{
    auto* tabs = static_cast<QTabWidget*>(widget());
    const QSignalBlocker block(tabs);
    tabs->setCurrentIndex(tabView_.indexOfTabViewItem(tabView_.selectedTabViewItem()));
}

void QtTabViewMirror::modelChanged(ViewChange change)
{
    if (change == ViewChange::Items) {
        pushing_ = true;
        rebuildPages();
        pushing_ = false;
        return;
    }
    if (change == ViewChange::Subviews) {
        return; // the pages hold every item's view already
    }
    QtViewMirror::modelChanged(change);
}

} // namespace vexto
