#include "platform/fake/RecordingCanvas.hpp"
#include "toolkit/Application.hpp"
#include "toolkit/Image.hpp"
#include "toolkit/Window.hpp"
#include "widgets/ImageDrawing.hpp"
#include "widgets/KRVXDrawGradientBevelInRect.hpp"
#include "widgets/KRVXHeaderTextField.hpp"
#include "widgets/KRVXHeaderView.hpp"

#include <gtest/gtest.h>

namespace vexto {
namespace {

using Operations = std::vector<std::string>;

class WidgetDrawingTest : public ::testing::Test {
protected:
    WidgetDrawingTest() { Application::resetForTesting(); }
    ~WidgetDrawingTest() override { Application::resetForTesting(); }

    Operations drawn(View& view)
    {
        RecordingCanvas canvas;
        view.drawRect(canvas, view.bounds());
        EXPECT_EQ(canvas.saveDepth(), 0);
        return canvas.operations();
    }
};

TEST_F(WidgetDrawingTest, TheBevelFillsWithTheGradientFirstThenTheColourElseNothing)
{
    const Gradient gradient(Color::calibratedWhite(1, 1), Color::calibratedWhite(0, 1));
    const Rect rect(1, 2, 30, 10);
    RecordingCanvas canvas;
    KRVXDrawGradientBevelInRect(canvas, &gradient, Color::calibratedWhite(0.5f, 1), rect, 4);
    KRVXDrawGradientBevelInRect(canvas, nullptr, Color::calibratedWhite(0.5f, 1), rect, 4);
    KRVXDrawGradientBevelInRect(canvas, nullptr, std::nullopt, rect, 4);
    EXPECT_EQ(canvas.operations(),
              (Operations{"save", "clip rounded 1,2 30x10 r=4",
                          "gradient 1,2 30x10 angle=270 from w=1 a=1 to w=0 a=1", "restore",
                          "fill rounded 1,2 30x10 r=4 w=0.5 a=1"}));
}

TEST_F(WidgetDrawingTest, TheHeaderStripFollowsTheMainWindowOfTheActiveApplication)
{
    Window window(Rect(0, 0, 300, 200));
    auto header = std::make_shared<KRVXHeaderView>(Rect(10, 20, 200, 24));
    window.contentView()->addSubview(header);
    const Operations inactive{"fill rounded 0,0 200x22 r=8 w=0.95 a=1",
                              "fill rounded 0,2 200x22 r=8 w=0.7 a=1",
                              "save",
                              "clip rounded 0,1 200x22 r=8",
                              "gradient 0,1 200x22 angle=270 from w=0.9 a=1 to w=0.7 a=1",
                              "restore"};
    EXPECT_EQ(drawn(*header), inactive) << "not the main window";
    window.makeMainWindow();
    Application::shared().setActive(false);
    EXPECT_EQ(drawn(*header), inactive) << "the application is not active";
    Application::shared().setActive(true);
    EXPECT_EQ(
        drawn(*header),
        (Operations{"fill rounded 0,0 200x22 r=8 w=0.95 a=1",
                    "fill rounded 0,2 200x22 r=8 w=0.4 a=1", "save", "clip rounded 0,1 200x22 r=8",
                    "gradient 0,1 200x22 angle=270 from w=0.75 a=1 to w=0.5 a=1", "restore"}));
}

TEST_F(WidgetDrawingTest, OnlyHeadersInTheWindowWhoseMainStateChangedRedraw)
{
    Window first(Rect(0, 0, 100, 100));
    Window second(Rect(0, 0, 100, 100));
    auto header = std::make_shared<KRVXHeaderView>(Rect(0, 0, 50, 20));
    first.contentView()->addSubview(header);
    header->setNeedsDisplay(false);
    header->updateMainWindowStatus(&second);
    EXPECT_FALSE(header->needsDisplay());
    header->updateMainWindowStatus(&first);
    EXPECT_TRUE(header->needsDisplay());
}

TEST_F(WidgetDrawingTest, HeaderTextShadowsFollowTheWindowAndTheTag)
{
    EXPECT_FLOAT_EQ(KRVXHeaderTextField::bottomBlackShadow().color.alpha(), 1.0f);
    Window window(Rect(0, 0, 100, 100));
    EXPECT_FLOAT_EQ(KRVXHeaderTextField::bottomShadowForWindow(&window).color.alpha(), 0.3f);
    window.makeMainWindow();
    Application::shared().setActive(true);
    EXPECT_FLOAT_EQ(KRVXHeaderTextField::bottomShadowForWindow(&window).color.alpha(), 0.7f);
    Application::shared().setActive(false);
    EXPECT_FLOAT_EQ(KRVXHeaderTextField::bottomShadowForWindow(&window).color.alpha(), 0.3f);
    const Shadow shadow = KRVXHeaderTextField::bottomBlackShadow();
    EXPECT_EQ(shadow.offset.height, -1);
    EXPECT_EQ(shadow.blurRadius, 1);

    KRVXHeaderTextField field(Rect(0, 0, 80, 17));
    field.setStringValue("Forward");
    for (int tag : {0, -2, -1}) {
        field.setTag(tag);
        const Operations operations = drawn(field);
        const bool shadowed =
            operations.size() == 4 && operations[1].starts_with("shadow offset=0,-1");
        EXPECT_EQ(shadowed, tag != -1) << tag;
    }
}

TEST_F(WidgetDrawingTest, SilhouettesDrawInALayerAndTintsReplayTheImageUnderTheColour)
{
    const auto image = Image::withDrawing(Size{8, 6}, [](Canvas&) {});
    const Color red = Color::calibratedRGB(1, 0, 0, 1);
    RecordingCanvas canvas;
    drawInRect(canvas, *image, Rect(1, 1, 8, 6), red, 0.5f);
    drawInRect(canvas, *image, Rect(1, 1, 8, 6), std::nullopt, 0.5f);
    EXPECT_EQ(canvas.operations(),
              (Operations{"save", "begin layer 1,1 8x6", "fill rect 1,1 8x6 rgb=1,0,0 a=1",
                          "image 8x6 in 1,1 8x6 destination-in fraction=0.5", "end layer",
                          "restore", "image 8x6 in 1,1 8x6 source-over fraction=0.5"}));

    const auto darkened = imageDarkenedWithColor(image, Color::calibratedWhite(0, 0.1f));
    ASSERT_TRUE(darkened);
    EXPECT_EQ(darkened->size().width, 8);
    RecordingCanvas replay;
    darkened->drawing()(replay);
    EXPECT_EQ(replay.operations(), (Operations{"image 8x6 in 0,0 8x6 source-over fraction=1",
                                               "fill rect 0,0 8x6 w=0 a=0.1 source-atop"}));
    EXPECT_FALSE(imageDarkenedWithColor(nullptr, red)) << "no image, no copy";
}

} // namespace
} // namespace vexto
