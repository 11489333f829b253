#include "toolkit/View.hpp"

#include "toolkit/TabView.hpp"
#include "toolkit/TextField.hpp"
#include "toolkit/Window.hpp"

#include <gtest/gtest.h>

#include <memory>

namespace vexto {
namespace {

std::shared_ptr<View> add(View& parent, Rect frame)
{
    auto view = std::make_shared<View>(frame);
    parent.addSubview(view);
    return view;
}

TEST(ViewTest, ConvertsBetweenNestedViewsAndTheWindow)
{
    Window window(Rect(100, 100, 600, 400));
    View& content = *window.contentView();
    auto box = add(content, Rect(20, 30, 300, 200));
    auto row = add(*box, Rect(10, 150, 280, 30));
    auto other = add(content, Rect(400, 50, 100, 100));

    EXPECT_EQ(row->convertRectToView(row->bounds(), nullptr), Rect(30, 180, 280, 30));
    EXPECT_EQ(row->convertRectToView(Rect(5, 5, 1, 1), other.get()), Rect(-365, 135, 1, 1));
    EXPECT_EQ(other->convertRectFromView(Rect(5, 5, 1, 1), row.get()), Rect(-365, 135, 1, 1));
    EXPECT_EQ(box->convertPointFromView(Point{30, 180}, nullptr), (Point{10, 150}));
    EXPECT_EQ(row->window(), &window);
    EXPECT_EQ(box->hitTest(Point{35, 185}), row.get());
    row->setHidden(true);
    EXPECT_EQ(box->hitTest(Point{35, 185}), box.get());
    EXPECT_TRUE(row->isHiddenOrHasHiddenAncestor());
}

TEST(ViewTest, AutoresizingKeepsTopPinnedViewsAtTheTopWhenTheHeightChanges)
{
    Window window(Rect(0, 0, 600, 400));
    View& content = *window.contentView();
    auto pinnedTop = add(content, Rect(20, 350, 100, 20));
    pinnedTop->setAutoresizingMask(View::MinYMargin);
    auto stretching = add(content, Rect(0, 0, 600, 400));
    stretching->setAutoresizingMask(View::WidthSizable | View::HeightSizable);
    auto fixed = add(content, Rect(20, 10, 100, 20));

    window.setFrame(Rect(0, 100, 600, 300), true, false);
    EXPECT_EQ(content.frame(), Rect(0, 0, 600, 300));
    EXPECT_EQ(pinnedTop->frame(), Rect(20, 250, 100, 20)) << "same distance from the top edge";
    EXPECT_EQ(stretching->frame(), Rect(0, 0, 600, 300));
    EXPECT_EQ(fixed->frame(), Rect(20, 10, 100, 20));
}

TEST(ViewTest, SubviewsKeepTheirOrderAndMoveBetweenParents)
{
    View parent;
    auto first = add(parent, Rect(0, 0, 1, 1));
    auto second = add(parent, Rect(0, 0, 1, 1));
    View other;
    other.addSubview(first);
    ASSERT_EQ(parent.subviews().size(), 1u);
    EXPECT_EQ(parent.subviews()[0], second);
    EXPECT_EQ(first->superview(), &other);
    parent.addSubview(std::shared_ptr<View>(&parent, [](View*) {}));
    EXPECT_EQ(parent.subviews().size(), 1u) << "a view cannot contain itself";
}

TEST(ViewTest, ToolTipRectanglesWinOverTheViewsTip)
{
    View field(Rect(0, 0, 200, 20));
    field.setToolTip("Version");
    field.addToolTipRect(Rect(180, 0, 20, 20), [](Point) { return std::string("Send Feedback"); });
    EXPECT_EQ(field.toolTipAtPoint(Point{190, 10}), "Send Feedback");
    EXPECT_EQ(field.toolTipAtPoint(Point{10, 10}), "Version");
    field.removeAllToolTips();
    EXPECT_EQ(field.toolTipAtPoint(Point{190, 10}), "");
}

TEST(TabViewTest, TheSelectedTabsViewIsTheOnlySubviewAndTheDelegateHears)
{
    struct Delegate : TabViewDelegate {
        std::vector<std::string> selected;
        void didSelectTabViewItem(TabView&, TabViewItem& item) override
        {
            selected.push_back(item.identifier());
        }
    } delegate;
    TabView tabs(Rect(0, 0, 668, 400));
    auto triggers = std::make_shared<View>();
    auto appearance = std::make_shared<View>();
    tabs.addTabViewItem(std::make_shared<TabViewItem>("triggers", "Triggers", triggers));
    tabs.addTabViewItem(std::make_shared<TabViewItem>("appearance", "Appearance", appearance));
    tabs.setDelegate(&delegate);
    EXPECT_EQ(tabs.selectedTabViewItem()->identifier(), "triggers");
    EXPECT_TRUE(tabs.selectTabViewItemWithIdentifier("appearance"));
    ASSERT_EQ(tabs.subviews().size(), 1u);
    EXPECT_EQ(tabs.subviews()[0], appearance);
    EXPECT_EQ(appearance->frame(), tabs.contentRect());
    EXPECT_FALSE(tabs.selectTabViewItemWithIdentifier("missing"));
    EXPECT_EQ(tabs.selectedTabViewItem()->identifier(), "appearance");
    EXPECT_EQ(tabs.indexOfTabViewItemWithIdentifier("missing"), -1);
    EXPECT_EQ(delegate.selected, (std::vector<std::string>{"appearance"}));
}

} // namespace
} // namespace vexto
