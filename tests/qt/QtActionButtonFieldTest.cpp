// A link field in a real Qt window: hover, press and release with Qt's own mouse events, and
// pictures of the hovered and pressed looks.
#include "QtTestApplication.hpp"
#include "platform/fake/FakeDesktop.hpp"
#include "qt/QtTextMetrics.hpp"
#include "qt/QtWindowMirror.hpp"
#include "toolkit/Application.hpp"
#include "toolkit/Image.hpp"
#include "toolkit/Window.hpp"
#include "widgets/KRVXLinkTextField.hpp"
#include "widgets/ResourceImages.hpp"

#include <QApplication>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

namespace vexto {
namespace {

class QtActionButtonFieldTest : public ::testing::Test {
protected:
    static void SetUpTestSuite() { test::ensureQApplication(); }

    QtActionButtonFieldTest()
    {
        Application::resetForTesting();
        Application::shared().setTextMetrics(&metrics);
        ResourceImages::resetForTesting();
        // A black square for an arrow: its silhouette shows the colour it is drawn in.
        ResourceImages::setLoader([](const std::string&) {
            return Image::withBitmap(Bitmap{10, 10, std::vector<std::uint8_t>(400, 255)});
        });
        KRVXLinkTextField::setWorkspace(&desktop);
        window.contentView()->addSubview(field);
        field->setStringValue("Send Feedback", KRVXLinkTextField::Link{std::string("mailto:a@b.c")},
                              std::string("a@b.c"));
        mirror = std::make_unique<QtWindowMirror>(window);
        mirror->widget()->show();
        QApplication::processEvents();
    }
    ~QtActionButtonFieldTest() override
    {
        mirror.reset();
        KRVXLinkTextField::setWorkspace(nullptr);
        ResourceImages::resetForTesting();
        Application::resetForTesting();
    }

    // The field's widget and a point of it over the arrow (or `dx` beside it), in Qt's terms.
    QWidget* fieldWidget() const { return mirror->widget()->childAt(QPoint(30, 50)); }
    QPoint overArrow(int dx = 0) const
    {
        const Rect arrow = field->effectiveActionButtonFrame();
        return QPoint(int(arrow.midX()) + dx, int(field->frame().height() - arrow.midY()));
    }
    // A pixel of the window's picture, at a point of the field given in Qt's terms.
    QColor pixel(const QImage& picture, QPoint inField) const
    {
        return picture.pixelColor(fieldWidget()->mapTo(mirror->widget(), inField));
    }

    QtTextMetrics metrics;
    FakeDesktop desktop;
    Window window{Rect(0, 0, 400, 100)};
    std::shared_ptr<KRVXLinkTextField> field =
        std::make_shared<KRVXLinkTextField>(Rect(20, 40, 240, 20));
    std::unique_ptr<QtWindowMirror> mirror;
};

TEST_F(QtActionButtonFieldTest, HoveringLightsTheArrowWhiteOnADarkLozenge)
{
    ASSERT_NE(fieldWidget(), nullptr);
    const QImage before = mirror->render();
    EXPECT_LT(pixel(before, overArrow()).lightness(), 60) << "the arrow takes the text colour";
    QTest::mouseMove(fieldWidget(), overArrow());
    QApplication::processEvents();
    EXPECT_TRUE(field->actionButtonTextFieldCell().isHovered());
    const QImage hovered = mirror->render();
    EXPECT_GT(pixel(hovered, overArrow()).lightness(), 200) << "white under the mouse";
    // Left of the text, on the lozenge: darker than the window behind it.
    EXPECT_LT(pixel(hovered, QPoint(1, 10)).lightness(), pixel(before, QPoint(1, 10)).lightness());
    QTest::mouseMove(fieldWidget(), QPoint(230, 10));
    QApplication::processEvents();
    EXPECT_FALSE(field->actionButtonTextFieldCell().isHovered());
}

TEST_F(QtActionButtonFieldTest, APressHeldOnTheArrowShowsPressedAndItsReleaseOpensTheLink)
{
    QWidget* widget = fieldWidget();
    ASSERT_NE(widget, nullptr);
    QImage pressed;
    bool clickedWhileHeld = false;
    // The release comes while the field's tracking loop waits for it, as a person's does.
    QTimer::singleShot(20, [&] {
        clickedWhileHeld = field->actionButtonTextFieldCell().isClicked();
        pressed = mirror->render();
        QTest::mouseRelease(widget, Qt::LeftButton, {}, overArrow());
    });
    QTest::mousePress(widget, Qt::LeftButton, {}, overArrow());
    EXPECT_TRUE(clickedWhileHeld);
    EXPECT_GT(pixel(pressed, overArrow()).lightness(), 200);
    EXPECT_EQ(desktop.openedURLs, std::vector<std::string>{"mailto:a@b.c"});

    // Pressed, then released off the arrow: nothing opens.
    QTimer::singleShot(20, [&] {
        QTest::mouseMove(widget, overArrow(60));
        QTest::mouseRelease(widget, Qt::LeftButton, {}, overArrow(60));
    });
    QTest::mousePress(widget, Qt::LeftButton, {}, overArrow());
    EXPECT_EQ(desktop.openedURLs.size(), 1u);
}

// A pointer that leaves the field in one jump, with no move outside the arrow on the way, still
// takes the lit look away.
TEST_F(QtActionButtonFieldTest, LeavingInOneJumpUnlightsTheArrow)
{
    QWidget* widget = fieldWidget();
    ASSERT_NE(widget, nullptr);
    QTest::mouseMove(widget, overArrow());
    ASSERT_TRUE(field->actionButtonTextFieldCell().isHovered());
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(widget, &leave);
    EXPECT_FALSE(field->actionButtonTextFieldCell().isHovered());
}

// Reached with Tab, the arrow shows the focus and Return or Space presses it.
TEST_F(QtActionButtonFieldTest, TheArrowIsReachedAndPressedFromTheKeyboard)
{
    QWidget* widget = fieldWidget();
    ASSERT_NE(widget, nullptr);
    widget->repaint();
    EXPECT_TRUE(widget->focusPolicy() & Qt::TabFocus);
    widget->setFocus(Qt::TabFocusReason);
    QTest::keyClick(widget, Qt::Key_Return);
    EXPECT_EQ(desktop.openedURLs, std::vector<std::string>{"mailto:a@b.c"});
    QTest::keyClick(widget, Qt::Key_Space);
    EXPECT_EQ(desktop.openedURLs.size(), 2u);
}

} // namespace
} // namespace vexto
