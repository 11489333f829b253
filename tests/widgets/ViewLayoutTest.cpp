#include "widgets/ViewLayout.hpp"

#include "toolkit/TextField.hpp"
#include "toolkit/Window.hpp"

#include <gtest/gtest.h>

#include <memory>

namespace vexto {
namespace {

template <typename T = View> std::shared_ptr<T> add(View& parent, Rect frame)
{
    auto view = std::make_shared<T>(frame);
    parent.addSubview(view);
    return view;
}

TEST(ViewLayoutTest, HiddenViewsAndEmptyLabelsTakeNoRoom)
{
    View container(Rect(0, 0, 400, 300));
    EXPECT_FLOAT_EQ(heightDifferenceNecessaryToFitSubviewsWithBottomMargin(container, 27, nullptr),
                    273)
        << "no counted subview: the top edge less the margin";

    add(container, Rect(10, 100, 100, 20))->setHidden(true);
    auto emptyLabel = add<TextField>(container, Rect(10, 60, 100, 20));
    EXPECT_FLOAT_EQ(heightDifferenceNecessaryToFitSubviewsWithBottomMargin(container, 27, nullptr),
                    273);

    emptyLabel->setStringValue("Vexto 3.1 (310/311)");
    EXPECT_FLOAT_EQ(heightDifferenceNecessaryToFitSubviewsWithBottomMargin(container, 27, nullptr),
                    33);

    auto emptyEditable = add<TextField>(container, Rect(10, 20, 100, 20));
    emptyEditable->setEditable(true);
    EXPECT_FLOAT_EQ(heightDifferenceNecessaryToFitSubviewsWithBottomMargin(container, 27, nullptr),
                    -7)
        << "an empty field the person can type into still counts";
}

TEST(ViewLayoutTest, OnlyDirectSubviewsCountAndHiddenAncestorsAreNotAsked)
{
    View container(Rect(0, 0, 400, 300));
    auto box = add(container, Rect(0, 200, 400, 100));
    add(*box, Rect(0, -150, 10, 10)); // pokes out below, but is a grandchild
    EXPECT_FLOAT_EQ(heightDifferenceNecessaryToFitSubviewsWithBottomMargin(container, 0, nullptr),
                    200);
    container.setHidden(true);
    EXPECT_FLOAT_EQ(heightDifferenceNecessaryToFitSubviewsWithBottomMargin(container, 0, nullptr),
                    200);
}

class WindowFittingTest : public ::testing::Test {
protected:
    WindowFittingTest() { row = add(*window.contentView(), Rect(20, 100, 200, 20)); }

    void placeLowestRowSoThatTheDifferenceIs(double difference)
    {
        row->setFrameOrigin(Point{20, 27 + difference});
    }

    Window window{Rect(0, 100, 600, 400)};
    std::shared_ptr<View> row;
};

TEST_F(WindowFittingTest, DifferencesWithinTheToleranceChangeNothing)
{
    for (double difference : {0.9, -0.9, 0.5}) {
        placeLowestRowSoThatTheDifferenceIs(difference);
        adjustHeightToFitSubviewsOfView(window, *window.contentView(), 27);
        EXPECT_EQ(window.frame(), Rect(0, 100, 600, 400)) << difference;
    }
}

TEST_F(WindowFittingTest, TheBottomEdgeMovesAndTheTopStays)
{
    placeLowestRowSoThatTheDifferenceIs(0.91);
    adjustHeightToFitSubviewsOfView(window, *window.contentView(), 27);
    EXPECT_FLOAT_EQ(static_cast<float>(window.frame().minY()), 100.91f);
    EXPECT_DOUBLE_EQ(window.frame().maxY(), 500);

    window.setFrame(Rect(0, 100, 600, 400), true, false);
    placeLowestRowSoThatTheDifferenceIs(-40); // the content overflows: the window grows downward
    window.orderFront();
    adjustHeightToFitSubviewsOfView(window, *window.contentView(), 27);
    EXPECT_EQ(window.frame(), Rect(0, 60, 600, 440));
    EXPECT_TRUE(window.lastFrameChangeWasAnimated()) << "visible windows animate";
}

TEST(ViewLayoutTest, AFittedFrameIsMeasuredInTheReceiversCoordinates)
{
    Window window(Rect(0, 0, 668, 500));
    auto mainView = add(*window.contentView(), Rect(0, 50, 668, 450));
    auto tabContent = add(*mainView, Rect(10, 10, 648, 400));
    add(*tabContent, Rect(10, 200, 100, 20));
    const Rect fitted = frameByAdjustingHeightToFitSubviewsOfView(*mainView, *tabContent, 27);
    // Lowest row at y 210 in the main view: 183 to spare above the 27 pt margin.
    EXPECT_EQ(fitted, Rect(0, 233, 668, 267));
    EXPECT_EQ(mainView->frame(), Rect(0, 50, 668, 450)) << "the receiver is not changed";
}

TEST(ViewLayoutTest, HidingARowMovesOnlyTheSiblingsBelowIt)
{
    View pane(Rect(0, 0, 400, 300));
    auto spacesRow = add(pane, Rect(20, 200, 300, 20));
    auto level = add(pane, Rect(340, 200, 40, 20));
    auto above = add(pane, Rect(20, 240, 300, 20));
    auto below = add(pane, Rect(20, 170, 300, 20));
    auto hiddenBelow = add(pane, Rect(20, 140, 300, 20));
    hiddenBelow->setHidden(true);

    setHiddenAndMoveSiblingsBelowUpByDelta(*spacesRow, 30);
    EXPECT_TRUE(spacesRow->isHidden());
    EXPECT_DOUBLE_EQ(level->frame().minY(), 200) << "level with the hidden row: stays";
    EXPECT_DOUBLE_EQ(above->frame().minY(), 240);
    EXPECT_DOUBLE_EQ(below->frame().minY(), 200);
    EXPECT_DOUBLE_EQ(hiddenBelow->frame().minY(), 170) << "hidden siblings move too";

    setHiddenAndMoveSiblingsBelowUpByDelta(*spacesRow, 30);
    EXPECT_DOUBLE_EQ(hiddenBelow->frame().minY(), 200) << "a second call moves them again";
    EXPECT_DOUBLE_EQ(below->frame().minY(), 200) << "now level with the row: stays";
}

TEST(ViewLayoutTest, MovingAListPassesOverMissingViews)
{
    View a(Rect(0, 10, 1, 1));
    View b(Rect(0, 20, 1, 1));
    View* const views[] = {&a, nullptr, &b};
    moveUpByDelta(views, 15);
    moveUpByDelta(std::span<View* const>(), 15);
    EXPECT_DOUBLE_EQ(a.frame().minY(), 25);
    EXPECT_DOUBLE_EQ(b.frame().minY(), 35);
    moveUpByDelta(a, -30);
    EXPECT_DOUBLE_EQ(a.frame().minY(), -5);
}

} // namespace
} // namespace vexto
