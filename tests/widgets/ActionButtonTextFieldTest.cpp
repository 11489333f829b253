#include "platform/fake/RecordingCanvas.hpp"
#include "toolkit/ActionTarget.hpp"
#include "toolkit/Application.hpp"
#include "toolkit/Image.hpp"
#include "toolkit/Window.hpp"
#include "widgets/KRVXActionButtonTextField.hpp"

#include <gtest/gtest.h>

namespace vexto {
namespace {

// Six points a character, whatever the font: widths the tests can count.
class CountingTextMetrics : public TextMetrics {
public:
    double widthOfString(const std::string& text, const Font&) const override
    {
        return 6.0 * static_cast<double>(text.size());
    }
};

// Writes down each pressed look the field shows while the mouse is held.
class WatchedField : public KRVXActionButtonTextField {
public:
    using KRVXActionButtonTextField::KRVXActionButtonTextField;
    std::vector<bool> pressedLooks;

protected:
    void displayPressedState() override
    {
        pressedLooks.push_back(actionButtonTextFieldCell().isClicked());
    }
};

class Clicks : public ActionTable {
public:
    Clicks()
    {
        on("goToLinkURL:", [this](const ActionSender&) { ++count; });
    }
    int count = 0;
};

class ActionButtonTextFieldTest : public ::testing::Test {
protected:
    ActionButtonTextFieldTest()
    {
        Application::resetForTesting();
        Application::shared().setTextMetrics(&metrics);
        field->setStringValue("abcde"); // 30 points of text, 34 with the cell's insets
        field->setActionButtonImage(image);
        window.contentView()->addSubview(field);
    }
    ~ActionButtonTextFieldTest() override { Application::resetForTesting(); }

    Rect textFrame() const
    {
        return field->actionButtonTextFieldCell().textFrameForCellFrame(field->bounds(), false);
    }
    Rect buttonFrame() const
    {
        return field->actionButtonTextFieldCell().actionButtonFrameForCellFrame(field->bounds());
    }
    // A point of the window over the field's button (or, with `dx`, beside it).
    Point overButton(double dx = 0) const
    {
        const Rect button = buttonFrame();
        return field->convertPointToView(Point{button.midX() + dx, button.midY()}, nullptr);
    }
    void queue(Event::Type type, Point where) { window.postEvent(Event::mouse(type, where)); }

    CountingTextMetrics metrics;
    std::shared_ptr<Image> image = Image::withDrawing(Size{10, 8}, [](Canvas&) {});
    Window window{Rect(0, 0, 400, 100)};
    std::shared_ptr<WatchedField> field = std::make_shared<WatchedField>(Rect(20, 30, 200, 20));
    Clicks clicks;
};

TEST_F(ActionButtonTextFieldTest, TheImageFollowsTheTextForEveryAlignment)
{
    float padding = -1;
    EXPECT_FLOAT_EQ(field->actionButtonTextFieldCell().rawCellWidthForCellFrame(
                        field->bounds(), image.get(), &padding),
                    34);
    EXPECT_FLOAT_EQ(padding, 2);
    // Left: the image 4 points after the visible end of the text, centred in height.
    EXPECT_EQ(textFrame(), Rect(0, 0, 34, 20));
    EXPECT_EQ(buttonFrame(), Rect(36, 6, 10, 8));
    field->setAlignment(TextAlignment::Right);
    EXPECT_EQ(textFrame(), Rect(152, 0, 34, 20));
    EXPECT_EQ(buttonFrame(), Rect(188, 6, 10, 8)) << "never past the right edge";
    field->setAlignment(TextAlignment::Center);
    EXPECT_EQ(textFrame(), Rect(76, 0, 34, 20));
    EXPECT_EQ(buttonFrame(), Rect(112, 6, 10, 8));
    // Editing uses the whole frame.
    EXPECT_EQ(field->actionButtonTextFieldCell().textFrameForCellFrame(field->bounds(), true),
              field->bounds());

    // No image: the text alone at its place, no button.
    field->setActionButtonImage(nullptr);
    field->setAlignment(TextAlignment::Right);
    EXPECT_EQ(textFrame(), Rect(166, 0, 34, 20));
    EXPECT_TRUE(buttonFrame().isEmpty());

    // A long text is cut to leave room for the image.
    field->setActionButtonImage(image);
    field->setAlignment(TextAlignment::Left);
    field->setStringValue(std::string(40, 'x'));
    EXPECT_EQ(textFrame().width(), 200 - 10 - 4);
}

TEST_F(ActionButtonTextFieldTest, TheHighlightNeverReachesPastTheLeftEdge)
{
    field->setAlignment(TextAlignment::Right);
    // Right alignment puts the text at W - 48: the widths give origins of 0.5, 1.5 and 2.5.
    for (const auto& [width, origin] : {std::pair{48.5, 0.5}, {49.5, 0.0}, {50.5, 0.5}}) {
        field->setFrame(Rect(20, 30, width, 20));
        const Rect content =
            field->actionButtonTextFieldCell().contentFrameForCellFrame(field->bounds());
        EXPECT_DOUBLE_EQ(content.minX(), origin) << width;
        EXPECT_DOUBLE_EQ(content.maxX(), width) << width;
    }
}

TEST_F(ActionButtonTextFieldTest, TheButtonAloneIsTrackedAndCarriesTheToolTip)
{
    ASSERT_NE(field->trackingArea(), nullptr) << "made as the field moved into the window";
    field->setToolTip("mailto:support@vexto.app");
    EXPECT_TRUE(field->toolTip().empty()) << "the field itself has none";
    EXPECT_TRUE(field->toolTipRects().empty()) << "setting it rebuilds nothing";
    field->updateTrackingAreas();
    ASSERT_NE(field->trackingArea(), nullptr);
    EXPECT_EQ(field->trackingArea()->rect(), Rect(33, 3, 16, 14));
    ASSERT_EQ(field->toolTipRects().size(), 1u);
    EXPECT_EQ(field->toolTipAtPoint(Point{40, 10}), "mailto:support@vexto.app");
    EXPECT_EQ(field->toolTipAtPoint(Point{5, 10}), "");

    field->setStringValue("abcdefgh"); // the button moves with the text
    EXPECT_EQ(field->trackingArea()->rect().minX(), 51);
    EXPECT_EQ(field->toolTipRects().size(), 1u);
    field->viewWillMoveToWindow(nullptr);
    EXPECT_EQ(field->trackingArea(), nullptr);
    EXPECT_TRUE(field->toolTipRects().empty());
}

TEST_F(ActionButtonTextFieldTest, OnlyAFieldWithAnActionLightsUp)
{
    const Event moved = Event::mouse(Event::Type::MouseMoved, overButton());
    field->mouseEntered(moved);
    EXPECT_FALSE(field->actionButtonTextFieldCell().isHovered());
    field->setTarget(&clicks);
    field->setAction("goToLinkURL:");
    field->mouseEntered(moved);
    EXPECT_TRUE(field->actionButtonTextFieldCell().isHovered());
    field->mouseExited(moved);
    EXPECT_FALSE(field->actionButtonTextFieldCell().isHovered());
}

TEST_F(ActionButtonTextFieldTest, TheClickLoopSendsTheActionOnlyForAReleaseOnTheButton)
{
    field->setTarget(&clicks);
    field->setAction("goToLinkURL:");
    // Press, drag off, drag back, release: the pressed look toggles, the action is sent.
    queue(Event::Type::LeftMouseDragged, overButton(40));
    queue(Event::Type::LeftMouseDragged, overButton());
    queue(Event::Type::LeftMouseUp, overButton());
    field->mouseDown(Event::mouse(Event::Type::LeftMouseDown, overButton()));
    EXPECT_EQ(field->pressedLooks, (std::vector<bool>{true, false, true}));
    EXPECT_EQ(clicks.count, 1);
    EXPECT_FALSE(field->actionButtonTextFieldCell().isClicked());

    // Released off the button: nothing is sent.
    field->pressedLooks.clear();
    queue(Event::Type::LeftMouseDragged, overButton(40));
    queue(Event::Type::LeftMouseUp, overButton(40));
    field->mouseDown(Event::mouse(Event::Type::LeftMouseDown, overButton()));
    EXPECT_EQ(field->pressedLooks, (std::vector<bool>{true, false}));
    EXPECT_EQ(clicks.count, 1);

    // Pressed beside the button, then dragged onto it: never armed.
    field->pressedLooks.clear();
    queue(Event::Type::LeftMouseDragged, overButton());
    queue(Event::Type::LeftMouseUp, overButton());
    field->mouseDown(Event::mouse(Event::Type::LeftMouseDown, overButton(-30)));
    EXPECT_TRUE(field->pressedLooks.empty());
    EXPECT_EQ(clicks.count, 1);
}

TEST_F(ActionButtonTextFieldTest, DraggingInAWindowMovableByItsBackgroundEndsTheClick)
{
    field->setTarget(&clicks);
    field->setAction("goToLinkURL:");
    window.setMovableByWindowBackground(true);
    std::vector<std::string> cursors;
    queue(Event::Type::LeftMouseDragged, overButton(1));
    queue(Event::Type::LeftMouseUp, overButton());
    field->mouseDown(Event::mouse(Event::Type::LeftMouseDown, overButton()));
    EXPECT_EQ(field->pressedLooks, (std::vector<bool>{true, false}));
    EXPECT_EQ(clicks.count, 0);
    EXPECT_EQ(Application::shared().currentCursor(), "arrow");

    // A field without an action swallows the press.
    field->setAction("");
    field->pressedLooks.clear();
    queue(Event::Type::LeftMouseUp, overButton());
    field->mouseDown(Event::mouse(Event::Type::LeftMouseDown, overButton()));
    EXPECT_TRUE(field->pressedLooks.empty());
    EXPECT_EQ(window.queuedEventCount(), 1u) << "the release was never read";
}

TEST_F(ActionButtonTextFieldTest, HoveredAndPressedLooksDrawTheLozengeAndAWhiteSilhouette)
{
    field->setTarget(&clicks);
    field->setAction("goToLinkURL:");
    RecordingCanvas plain;
    field->drawRect(plain, field->bounds());
    EXPECT_EQ(plain.operations().at(1).substr(0, 18), "shadow offset=0,-1") << "header text";

    field->actionButtonTextFieldCell().setHovered(true);
    RecordingCanvas hovered;
    field->drawRect(hovered, field->bounds());
    // Text and image with the inset beyond the image: 0,0 48x20, less a point, radius 9 - 1.
    EXPECT_EQ(hovered.operations().at(1), "fill rounded 0,0 48x19 r=8 w=0 a=0.47");
    EXPECT_NE(std::find(hovered.operations().begin(), hovered.operations().end(),
                        "fill rect 36,6 10x8 w=1 a=1"),
              hovered.operations().end())
        << "the image turns white";

    field->actionButtonTextFieldCell().setClicked(true);
    field->setTag(1);
    RecordingCanvas pressed;
    field->drawRect(pressed, field->bounds());
    EXPECT_EQ(pressed.operations().at(1), "fill rounded 0,0 48x18 r=9 w=0 a=0.9");
    EXPECT_EQ(pressed.operations().at(2), "fill rounded 0,2 48x18 r=9 w=1 a=0.5") << "tag 1";
    EXPECT_EQ(pressed.saveDepth(), 0);
}

} // namespace
} // namespace vexto
