#include "QtTestApplication.hpp"
#include "qt/QtViewMirror.hpp"
#include "qt/QtWindowMirror.hpp"
#include "toolkit/Application.hpp"
#include "toolkit/Button.hpp"
#include "toolkit/Canvas.hpp"
#include "toolkit/Event.hpp"
#include "toolkit/Image.hpp"
#include "toolkit/Menu.hpp"
#include "toolkit/MenuItem.hpp"
#include "toolkit/PopUpButton.hpp"
#include "toolkit/Slider.hpp"
#include "toolkit/TabView.hpp"
#include "toolkit/TextField.hpp"
#include "toolkit/Window.hpp"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFontDatabase>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSet>
#include <QSlider>
#include <QTabWidget>
#include <QTest>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace vexto {
namespace {

// Paints its lower half red and its upper half blue (in its own unflipped coordinates), and
// remembers where clicks land.
class TwoToneView : public View {
public:
    using View::View;
    bool isCustomDrawn() const override { return true; }
    void drawRect(Canvas& canvas, const Rect&) override
    {
        const Rect b = bounds();
        canvas.fillRect(Rect(0, 0, b.width(), b.height() / 2), Color::calibratedRGB(1, 0, 0, 1));
        canvas.fillRect(Rect(0, b.height() / 2, b.width(), b.height() / 2),
                        Color::calibratedRGB(0, 0, 1, 1));
        canvas.fill(BezierPath::roundedRect(b.insetBy(20, 20), 6, 6),
                    Color::calibratedWhite(1, 0.5f));
        canvas.drawText("Vexto", b.insetBy(10, 10), Font::systemFontOfSize(13),
                        Color::calibratedWhite(0, 1), TextAlignment::Center);
    }
    void mouseDown(const Event& event) override
    {
        clicks.push_back(convertPointFromView(event.locationInWindow(), nullptr));
    }
    std::vector<Point> clicks;
};

struct Actions : ActionTable {
    std::vector<std::string> log;
    Actions()
    {
        for (const char* selector : {"toggle:", "choose:", "slide:"}) {
            on(selector, [this, selector](const ActionSender& sender) {
                log.push_back(std::string(selector) + " " +
                              std::to_string(static_cast<Control*>(sender.view())->intValue()));
            });
        }
    }
};

struct TabLog : TabViewDelegate {
    std::vector<std::string> selected;
    void didSelectTabViewItem(TabView&, TabViewItem& item) override
    {
        selected.push_back(item.identifier());
    }
};

struct TextLog : TextFieldDelegate {
    std::vector<std::string> seen;
    void controlTextDidChange(TextField& field) override { seen.push_back(field.stringValue()); }
};

class QtMirrorTest : public ::testing::Test {
protected:
    static void SetUpTestSuite() { test::ensureQApplication(); }

    QtMirrorTest()
    {
        Application::resetForTesting();
        auto tabs = std::make_shared<TabView>(Rect(0, 0, 480, 320));
        tabs->setAutoresizingMask(View::WidthSizable | View::HeightSizable);
        auto triggers = std::make_shared<View>();
        auto appearance = std::make_shared<View>();
        tabs->addTabViewItem(std::make_shared<TabViewItem>("triggers", "Triggers", triggers));
        tabs->addTabViewItem(std::make_shared<TabViewItem>("appearance", "Appearance", appearance));
        tabs->setDelegate(&tabLog);
        const double top = triggers->frame().height();

        box = std::make_shared<Button>(Rect(20, top - 40, 200, 20), Button::Kind::CheckBox);
        box->setTitle("Always show space badges");
        box->setAllowsMixedState(true);
        box->setTarget(&actions);
        box->setAction("toggle:");
        popUp = std::make_shared<PopUpButton>(Rect(20, top - 80, 160, 26));
        popUp->addItemsWithTitles({"No delay", "0.2 s", "0.5 s"});
        popUp->selectItemAtIndex(1);
        popUp->setTarget(&actions);
        popUp->setAction("choose:");
        slider = std::make_shared<Slider>(Rect(20, top - 120, 200, 21), 0, 100);
        slider->setTarget(&actions);
        slider->setAction("slide:");
        field = std::make_shared<TextField>(Rect(20, top - 160, 200, 22));
        field->setEditable(true);
        field->setDelegate(&textLog);
        for (const auto& view : std::vector<std::shared_ptr<View>>{box, popUp, slider, field}) {
            triggers->addSubview(view);
        }
        swatch = std::make_shared<TwoToneView>(Rect(40, 40, 200, 100));
        appearance->addSubview(swatch);

        window.contentView()->addSubview(tabs);
        tabView = tabs;
        mirror = std::make_unique<QtWindowMirror>(window);
    }

    template <typename W> W* widgetOf(const View& view)
    {
        QtViewMirror* m = mirror->mirrorOf(&view);
        return m != nullptr ? qobject_cast<W*>(m->widget()) : nullptr;
    }

    Actions actions;
    TabLog tabLog;
    TextLog textLog;
    Window window{Rect(0, 0, 480, 320)};
    std::shared_ptr<TabView> tabView;
    std::shared_ptr<Button> box;
    std::shared_ptr<PopUpButton> popUp;
    std::shared_ptr<Slider> slider;
    std::shared_ptr<TextField> field;
    std::shared_ptr<TwoToneView> swatch;
    std::unique_ptr<QtWindowMirror> mirror;
};

TEST_F(QtMirrorTest, ClickingTheQtCheckBoxRunsTheModelsClickAndShowsItsStates)
{
    auto* qtBox = widgetOf<QCheckBox>(*box);
    ASSERT_NE(qtBox, nullptr);
    EXPECT_EQ(qtBox->text(), "Always show space badges");
    // The model's order (on, off, mixed, on) is shown, not Qt's own tri-state order.
    std::vector<Qt::CheckState> shown;
    for (int i = 0; i < 3; ++i) {
        qtBox->click();
        shown.push_back(qtBox->checkState());
    }
    EXPECT_EQ(actions.log, (std::vector<std::string>{"toggle: -1", "toggle: 1", "toggle: 0"}));
    EXPECT_EQ(shown,
              (std::vector<Qt::CheckState>{Qt::PartiallyChecked, Qt::Checked, Qt::Unchecked}));

    box->setState(Button::mixedState);
    box->setEnabled(false);
    EXPECT_EQ(qtBox->checkState(), Qt::PartiallyChecked);
    EXPECT_FALSE(qtBox->isEnabled());
    EXPECT_EQ(actions.log.size(), 3u) << "model changes do not echo back as actions";
}

TEST_F(QtMirrorTest, PopUpsSlidersAndFieldsFollowTheModelAndReportThePerson)
{
    auto* combo = widgetOf<QComboBox>(*popUp);
    auto* qtSlider = widgetOf<QSlider>(*slider);
    auto* edit = widgetOf<QLineEdit>(*field);
    ASSERT_TRUE(combo && qtSlider && edit);
    EXPECT_EQ(combo->count(), 3);
    EXPECT_EQ(combo->currentIndex(), 1);

    popUp->selectItemAtIndex(2);
    slider->setDoubleValue(25);
    field->setStringValue("Finder");
    EXPECT_EQ(combo->currentIndex(), 2);
    EXPECT_EQ(qtSlider->value(), 250);
    EXPECT_EQ(edit->text(), "Finder");
    EXPECT_TRUE(actions.log.empty());
    EXPECT_TRUE(textLog.seen.empty());

    emit combo->activated(0);
    qtSlider->setValue(500);
    QTest::keyClick(edit, Qt::Key_Comma);
    EXPECT_EQ(popUp->indexOfSelectedItem(), 0);
    EXPECT_DOUBLE_EQ(slider->doubleValue(), 50);
    EXPECT_EQ(actions.log, (std::vector<std::string>{"choose: 0", "slide: 50"}));
    EXPECT_EQ(textLog.seen, (std::vector<std::string>{"Finder,"}));
}

TEST_F(QtMirrorTest, ChoosingATabSelectsItInTheModel)
{
    auto* tabs = widgetOf<QTabWidget>(*tabView);
    ASSERT_NE(tabs, nullptr);
    tabs->setCurrentIndex(1);
    EXPECT_EQ(tabView->selectedTabViewItem()->identifier(), "appearance");
    EXPECT_EQ(tabLog.selected, (std::vector<std::string>{"appearance"}));
    tabView->selectTabViewItemWithIdentifier("triggers");
    EXPECT_EQ(tabs->currentIndex(), 0);
}

TEST_F(QtMirrorTest, CustomViewsPaintUprightAndClicksArriveInModelCoordinates)
{
    tabView->selectTabViewItemWithIdentifier("appearance");
    QWidget* qtSwatch = mirror->mirrorOf(swatch.get())->widget();
    const QImage picture = qtSwatch->grab().toImage();
    ASSERT_EQ(picture.size(), QSize(200, 100));
    EXPECT_EQ(picture.pixelColor(5, 5), QColor(Qt::blue)) << "the upper half is blue";
    EXPECT_EQ(picture.pixelColor(5, 95), QColor(Qt::red)) << "the lower half is red";

    QTest::mouseClick(qtSwatch, Qt::LeftButton, {}, QPoint(30, 10));
    ASSERT_EQ(swatch->clicks.size(), 1u);
    EXPECT_DOUBLE_EQ(swatch->clicks[0].x, 30);
    EXPECT_DOUBLE_EQ(swatch->clicks[0].y, 90) << "10 px below the top is y 90 of 100";
}

TEST_F(QtMirrorTest, ModelGeometryIsFlippedAndFollowsTheWindow)
{
    QWidget* qtBox = mirror->mirrorOf(box.get())->widget();
    const double pageHeight = tabView->contentRect().height();
    EXPECT_EQ(qtBox->geometry(), QRect(20, int(pageHeight - box->frame().maxY()), 200, 20));
    box->setFrameOrigin(Point{30, 10});
    EXPECT_EQ(qtBox->geometry().topLeft(), QPoint(30, int(pageHeight - 30)));
    window.setFrame(Rect(0, 0, 480, 260), true, false);
    EXPECT_EQ(mirror->widget()->size(), QSize(480, 260));
}

TEST_F(QtMirrorTest, TheWindowRendersToANonBlankPicture)
{
    const QImage picture = mirror->render();
    ASSERT_FALSE(picture.isNull());
    QSet<QRgb> colours;
    for (int y = 0; y < picture.height(); y += 4) {
        for (int x = 0; x < picture.width(); x += 4) {
            colours.insert(picture.pixel(x, y));
        }
    }
    EXPECT_GT(colours.size(), 3) << "more than a blank background";
    EXPECT_TRUE(picture.save("qt-mirror.png"));
}

TEST_F(QtMirrorTest, ContentLargerThanTheScreenScrollsAndKeepsItsSize)
{
    const QSize screen = mirror->largestSize();
    const Rect huge(0, 0, screen.width() + 400, screen.height() + 300);
    window.setFrame(huge, true, false);
    window.setContentMinSize(huge.size);
    QApplication::processEvents();
    EXPECT_EQ(mirror->widget()->size(), screen) << "no bigger than the screen";
    EXPECT_EQ(window.frame(), huge) << "the model keeps its size";
    auto* area = mirror->widget()->findChild<QScrollArea*>();
    ASSERT_NE(area, nullptr);
    EXPECT_GT(area->verticalScrollBar()->maximum(), 0);
    EXPECT_GT(area->horizontalScrollBar()->maximum(), 0);
    EXPECT_EQ(mirror->render().size(), QSize(int(huge.width()), int(huge.height())))
        << "pictures show everything";
}

} // namespace
} // namespace vexto

namespace vexto {
namespace {

// A pull-down's items as the font menu has them: a name in its own face, a symbol font's name in
// the menu's face (its own would draw symbols), and a ticked item whose one-point image (there only
// to even the heights out) does not hide the tick.
TEST(QtPullDownTest, NamesInTheirOwnFacesButSymbolsInTheMenusAndTicksShown)
{
    test::ensureQApplication();
    if (!QFontDatabase::hasFamily("DejaVu Sans") ||
        !QFontDatabase::hasFamily("Standard Symbols PS")) {
        GTEST_SKIP() << "fonts-dejavu-core and fonts-urw-base35 are needed";
    }
    Window window(Rect(0, 0, 300, 200));
    auto pullDown = std::make_shared<PopUpButton>(Rect(20, 20, 200, 26), true);
    pullDown->addItemWithTitle("Font");
    MenuItem& dejavu = pullDown->menu().addItemWithTitle("DejaVu Sans");
    dejavu.setAttributedTitleFont(Font("DejaVuSans", "DejaVu Sans", "DejaVu Sans", 13));
    MenuItem& symbols = pullDown->menu().addItemWithTitle("Standard Symbols PS");
    symbols.setAttributedTitleFont(
        Font("StandardSymbolsPS", "Standard Symbols PS", "Standard Symbols PS", 13));
    MenuItem& ticked = pullDown->menu().addItemWithTitle("Default");
    ticked.setState(1);
    ticked.setImage(Image::withBitmap(Bitmap{1, 1, std::vector<std::uint8_t>(4, 0)}));
    window.contentView()->addSubview(pullDown);
    QtWindowMirror mirror(window);
    auto* button = qobject_cast<QPushButton*>(mirror.mirrorOf(pullDown.get())->widget());
    ASSERT_NE(button, nullptr);
    emit button->menu()->aboutToShow();
    const QList<QAction*> actions = button->menu()->actions();
    ASSERT_EQ(actions.size(), 3);
    EXPECT_EQ(actions[0]->font().family(), "DejaVu Sans");
    EXPECT_NE(actions[1]->font().family(), "Standard Symbols PS");
    EXPECT_TRUE(actions[2]->isChecked());
    EXPECT_TRUE(actions[2]->icon().isNull()) << "no icon in the tick's place";
}

} // namespace
} // namespace vexto
