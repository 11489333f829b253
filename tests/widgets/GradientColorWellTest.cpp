#include "platform/fake/RecordingCanvas.hpp"
#include "toolkit/ColorPanel.hpp"
#include "toolkit/Event.hpp"
#include "toolkit/Slider.hpp"
#include "widgets/KRVXGradientColorWell.hpp"
#include "widgets/KRVXGradientColorWellAccessoryView.hpp"
#include "widgets/KRVXGradientColorWellDelegate.hpp"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace vexto {
namespace {

using Operations = std::vector<std::string>;

// Keeps one value for every well, as the pane keeps "Selection Gradient".
class RecordingDelegate final : public KRVXGradientColorWellDelegate {
public:
    std::int64_t gradientValueForWell(const ColorWell*) override { return value; }
    void setGradientValue(std::int64_t newValue, const ColorWell*) override
    {
        value = newValue;
        ++stores;
    }
    std::int64_t value = -15;
    int stores = 0;
};

class GradientColorWellTest : public ::testing::Test {
protected:
    GradientColorWellTest()
    {
        ColorPanel::resetForTesting();
        shaded->setGradientDelegate(&delegate);
        shaded->setColor(Color::calibratedRGB(1, 0, 0, 1));
    }
    ~GradientColorWellTest() override { ColorPanel::resetForTesting(); }

    static KRVXGradientColorWellAccessoryView& strip()
    {
        KRVXGradientColorWell::gradientValueSlider();
        return *KRVXGradientColorWell::accessoryViewIfExists();
    }
    static View* panelAccessory() { return ColorPanel::shared().accessoryView().get(); }
    static Slider& slider() { return KRVXGradientColorWell::gradientValueSlider(); }

    static void drag(double value)
    {
        slider().setDoubleValue(value);
        slider().sendAction();
    }
    static void clickStrip(double x)
    {
        strip().mouseDown(Event::mouse(Event::Type::LeftMouseDown, Point{x, 11}));
    }

    RecordingDelegate delegate;
    std::shared_ptr<KRVXGradientColorWell> shaded =
        std::make_shared<KRVXGradientColorWell>(Rect(0, 0, 52, 24));
    std::shared_ptr<KRVXGradientColorWell> plain =
        std::make_shared<KRVXGradientColorWell>(Rect(0, 0, 52, 24));
};

TEST_F(GradientColorWellTest, TheStripSitsOnThePanelOnlyWhileAShadedWellIsActive)
{
    plain->activate(true);
    EXPECT_EQ(panelAccessory(), nullptr);

    delegate.value = 24;
    shaded->activate(true);
    ASSERT_EQ(panelAccessory(), &strip());
    EXPECT_EQ(slider().doubleValue(), 24) << "the slider shows the delegate's value";
    EXPECT_EQ(slider().target(), shaded.get());
    EXPECT_TRUE(shaded->isActive());

    plain->activate(true);
    EXPECT_EQ(panelAccessory(), nullptr) << "an ordinary well takes the strip away";
    EXPECT_FALSE(shaded->isActive());
}

TEST_F(GradientColorWellTest, AnOrdinaryWellDoesNotBringUpThePanelEarly)
{
    ColorPanel::resetForTesting();
    plain->activate(true);
    ASSERT_NE(ColorPanel::sharedIfExists(), nullptr) << "the base activation shows the panel";
    EXPECT_EQ(ColorPanel::shared().accessoryView(), nullptr);
}

TEST_F(GradientColorWellTest, SmallValuesSnapToFlatOrToTheWeakestVisibleShading)
{
    shaded->activate(true);
    const struct {
        double dragged;
        std::int64_t stored;
    } cases[] = {{5, 8}, {-3, 0}, {-9, -9}, {7, 8}, {-4, -8}, {3, 0}, {0, 0}, {60, 60}};
    for (const auto& c : cases) {
        drag(c.dragged);
        EXPECT_EQ(delegate.value, c.stored) << "dragged to " << c.dragged;
        EXPECT_EQ(slider().integerValue(), c.stored) << "the slider shows what is stored";
    }
    EXPECT_EQ(delegate.stores, 8);
}

TEST_F(GradientColorWellTest, OnlyTheFullHeightSquaresAtTheEndsTakeClicks)
{
    shaded->activate(true);
    const double width = strip().bounds().width();
    clickStrip(1);
    EXPECT_EQ(delegate.value, -60);
    clickStrip(width - 1);
    EXPECT_EQ(delegate.value, 60);
    // The drawn squares end at 22 points; the click zone is as wide as the strip is high.
    clickStrip(21.5);
    EXPECT_EQ(delegate.value, -60);
    delegate.stores = 0;
    clickStrip(width / 2);
    clickStrip(22);
    EXPECT_EQ(delegate.stores, 0) << "between the squares nothing happens";
}

TEST_F(GradientColorWellTest, TheSharedSliderForgetsAWellThatIsGone)
{
    {
        auto shortLived = std::make_shared<KRVXGradientColorWell>();
        shortLived->setGradientDelegate(&delegate);
        shortLived->activate(true);
    }
    EXPECT_EQ(slider().target(), nullptr);
    delegate.stores = 0;
    clickStrip(1);
    EXPECT_EQ(delegate.stores, 0);
    RecordingCanvas canvas;
    strip().drawRect(canvas, strip().bounds());
    EXPECT_TRUE(canvas.operations().empty()) << "without a well there is no colour to show";
}

TEST_F(GradientColorWellTest, TheStripsGeometryFollowsThePanelWidth)
{
    shaded->activate(true); // the panel is there before the strip is made
    const Rect frame = slider().frame();
    const double width = strip().frame().width();
    EXPECT_EQ(width, ColorPanel::shared().frame().width());
    EXPECT_EQ(strip().frame().height(), 22);
    EXPECT_EQ(frame.minX(), 29);
    EXPECT_EQ(frame.width(), width - 58);
    EXPECT_EQ(frame.minY(), (22 - 7 + 1 - frame.height()) * 0.5 + 6);
    EXPECT_EQ(slider().minValue(), -60);
    EXPECT_EQ(slider().maxValue(), 60);
    EXPECT_EQ(slider().action(), "setGradientValue:");
}

TEST_F(GradientColorWellTest, TheWellLaysItsShadingOverTheColourInsideItsBorder)
{
    const auto drawn = [&](std::int64_t value) {
        delegate.value = value;
        RecordingCanvas canvas;
        shaded->drawRect(canvas, shaded->bounds());
        return canvas.operations();
    };
    EXPECT_EQ(drawn(-15), Operations{"gradient 6,6 40x12 angle=90 from w=1 a=0.15 to w=0 a=0.15"});
    EXPECT_EQ(drawn(0), Operations{});
    EXPECT_EQ(drawn(60), Operations{"gradient 6,6 40x12 angle=270 from w=1 a=0.6 to w=0 a=0.6"});
    EXPECT_EQ(drawn(150), Operations{"gradient 6,6 40x12 angle=270 from w=1 a=1 to w=0 a=1"});
    EXPECT_EQ(drawn(INT64_MIN), Operations{"gradient 6,6 40x12 angle=90 from w=1 a=1 to w=0 a=1"});

    RecordingCanvas canvas;
    plain->drawRect(canvas, plain->bounds());
    EXPECT_TRUE(canvas.operations().empty()) << "a well without a delegate draws flat";
}

TEST_F(GradientColorWellTest, TheStripsEndSquaresShowTheColourAtBothEnds)
{
    shaded->activate(true);
    RecordingCanvas canvas;
    strip().drawRect(canvas, strip().bounds());
    const double right = strip().bounds().width() - 15 - 7;
    const auto square = [](double x, const char* gradient) {
        const auto at = [x](double inset) {
            return RecordingCanvas::describe(
                Rect(x + inset, 7 + inset, 15 - 2 * inset, 15 - 2 * inset));
        };
        return Operations{
            "fill rect " + at(0) + " w=0.6666667 a=1", "fill rect " + at(1) + " w=1 a=1",
            "fill rect " + at(2) + " rgb=1,0,0 a=1", "gradient " + at(2) + " " + gradient};
    };
    Operations expected = square(7, "angle=90 from w=1 a=0.6 to w=0 a=0.6");
    const Operations rightSquare = square(right, "angle=270 from w=1 a=0.6 to w=0 a=0.6");
    expected.insert(expected.end(), rightSquare.begin(), rightSquare.end());
    EXPECT_EQ(canvas.operations(), expected);
}

} // namespace
} // namespace vexto
