#include "platform/fake/FakeDesktop.hpp"
#include "toolkit/Application.hpp"
#include "toolkit/Button.hpp"
#include "toolkit/Image.hpp"
#include "toolkit/Window.hpp"
#include "widgets/KRVXClickButtonTextField.hpp"
#include "widgets/KRVXLinkTextField.hpp"
#include "widgets/ResourceImages.hpp"

#include <gtest/gtest.h>

namespace vexto {
namespace {

class LinkTextFieldTest : public ::testing::Test {
protected:
    LinkTextFieldTest()
    {
        Application::resetForTesting();
        ResourceImages::resetForTesting();
        ResourceImages::setLoader([this](const std::string& name) {
            ++loads;
            return name == "KRLinkArrow.tiff" ? Image::withDrawing(Size{9, 9}, [](Canvas&) {})
                                              : nullptr;
        });
        KRVXLinkTextField::setWorkspace(&desktop);
        window.contentView()->addSubview(field);
    }
    ~LinkTextFieldTest() override
    {
        KRVXLinkTextField::setWorkspace(nullptr);
        ResourceImages::resetForTesting();
    }

    bool hasArrow() const { return field->actionButtonImage() != nullptr; }

    int loads = 0;
    FakeDesktop desktop;
    Window window{Rect(0, 0, 300, 100)};
    std::shared_ptr<KRVXLinkTextField> field =
        std::make_shared<KRVXLinkTextField>(Rect(10, 10, 200, 20));
};

TEST_F(LinkTextFieldTest, WebFtpAndMailAddressesAreLinksAndEverythingElseAPath)
{
    using L = KRVXLinkTextField::Link;
    EXPECT_EQ(KRVXLinkTextField::linkFrom(L{std::string("https://vexto.app/")})->absoluteString,
              "https://vexto.app/");
    EXPECT_EQ(KRVXLinkTextField::linkFrom(L{std::string("mailto:a@b.c")})->absoluteString,
              "mailto:a@b.c");
    EXPECT_EQ(KRVXLinkTextField::linkFrom(L{std::string("ftp://host/x")})->absoluteString,
              "ftp://host/x");
    EXPECT_EQ(KRVXLinkTextField::linkFrom(L{std::string("HTTP://vexto.app")})
                  ->absoluteString.substr(0, 8),
              "file:///")
        << "capital schemes are paths";
    EXPECT_EQ(KRVXLinkTextField::linkFrom(L{std::string("/Library/Pane Folder/A.prefPane")})
                  ->absoluteString,
              "file:///Library/Pane%20Folder/A.prefPane");
    EXPECT_FALSE(KRVXLinkTextField::linkFrom(L{PlistValue(42)})) << "a number is no link";
    EXPECT_FALSE(KRVXLinkTextField::linkFrom(L{}));
    EXPECT_EQ(KRVXLinkTextField::linkFrom(L{LinkURL{"x-help:y"}})->absoluteString, "x-help:y");
}

TEST_F(LinkTextFieldTest, ALinkBringsTheSharedArrowAndPlainTextTakesItAway)
{
    field->setStringValue("Send Feedback", KRVXLinkTextField::Link{std::string("mailto:a@b.c")});
    EXPECT_TRUE(hasArrow());
    EXPECT_EQ(field->actionButtonToolTip(), "mailto:a@b.c") << "the link's own text";
    EXPECT_EQ(field->action(), "goToLinkURL:");
    const double arrowBefore = field->effectiveActionButtonFrame().minX();

    field->setStringValue("Send Feedback now", false);
    EXPECT_TRUE(hasArrow()) << "clearLink off keeps the link";
    EXPECT_GT(field->effectiveActionButtonFrame().minX(), arrowBefore) << "placed after the text";

    field->setStringValue("Plain");
    EXPECT_FALSE(hasArrow());
    EXPECT_FALSE(field->linkURL());
    EXPECT_TRUE(field->action().empty());
    EXPECT_EQ(field->trackingArea(), nullptr);

    field->setStringValue("A", KRVXLinkTextField::Link{PlistValue(7)}, std::string("tip"));
    EXPECT_FALSE(hasArrow());
    field->setStringValue("B", KRVXLinkTextField::Link{std::string("https://x.y/")},
                          std::string("tip"));
    EXPECT_EQ(field->actionButtonToolTip(), "tip");
    EXPECT_EQ(loads, 1) << "the arrow is read once and shared";
}

TEST_F(LinkTextFieldTest, ACompletedClickOnTheArrowOpensTheLink)
{
    field->setStringValue("Send Feedback", KRVXLinkTextField::Link{std::string("mailto:a@b.c")});
    const Rect arrow = field->effectiveActionButtonFrame();
    const Point where = field->convertPointToView(Point{arrow.midX(), arrow.midY()}, nullptr);
    window.postEvent(Event::mouse(Event::Type::LeftMouseUp, where));
    field->mouseDown(Event::mouse(Event::Type::LeftMouseDown, where));
    EXPECT_EQ(desktop.openedURLs, std::vector<std::string>{"mailto:a@b.c"});
    // A click on the text itself does nothing.
    const Point text = field->convertPointToView(Point{2, 10}, nullptr);
    window.postEvent(Event::mouse(Event::Type::LeftMouseUp, text));
    field->mouseDown(Event::mouse(Event::Type::LeftMouseDown, text));
    EXPECT_EQ(desktop.openedURLs.size(), 1u);
}

TEST_F(LinkTextFieldTest, ALabelPressesItsButtonOnlyWhileTheButtonIsEnabled)
{
    auto box = std::make_shared<Button>(Rect(0, 0, 20, 20), Button::Kind::CheckBox);
    KRVXClickButtonTextField label(Rect(20, 0, 100, 20));
    label.setClickButton(box.get());
    const Event press = Event::mouse(Event::Type::LeftMouseDown, Point{30, 10});
    label.mouseDown(press);
    EXPECT_EQ(box->state(), Button::onState);
    box->setEnabled(false);
    label.mouseDown(press);
    EXPECT_EQ(box->state(), Button::onState);
}

} // namespace
} // namespace vexto
