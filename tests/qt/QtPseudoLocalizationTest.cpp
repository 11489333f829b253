// The whole pane in a mirrored Qt window with every text 40% longer than English: on every tab
// no Qt control is narrower than it wants to be for its text, and no two visible controls
// overlap.
#include "../pane/PaneTestFixture.hpp"
#include "QtTestApplication.hpp"
#include "qt/QtTextMetrics.hpp"
#include "qt/QtWindowMirror.hpp"
#include "toolkit/TabView.hpp"
#include "toolkit/Window.hpp"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStyle>

#include <cstdlib>
#include <sstream>

namespace vexto {
namespace {

class QtPseudoLocalizationTest : public test::PaneTest,
                                 public ::testing::WithParamInterface<const char*> {
protected:
    static void SetUpTestSuite() { test::ensureQApplication(); }

    QtPseudoLocalizationTest()
    {
        const char* saved = std::getenv("LC_ALL");
        saved_ = saved != nullptr ? saved : "";
        ::setenv("LC_ALL", GetParam(), 1);
        Application::shared().setTextMetrics(&metrics);
        load();
        const Rect content = main->frame();
        window = std::make_unique<Window>(Rect(0, 0, content.width(), content.height()));
        window->setContentView(main->shared_from_this());
        window->makeKeyAndOrderFront();
        mirror = std::make_unique<QtWindowMirror>(*window);
        mirror->widget()->show();
        QApplication::processEvents();
    }
    ~QtPseudoLocalizationTest() override
    {
        mirror.reset();
        window.reset();
        Application::shared().setTextMetrics(nullptr);
        ::setenv("LC_ALL", saved_.c_str(), 1);
    }

    // What a person sees cut off or covered on the shown tab, one line each.
    static std::string problems(QWidget& top)
    {
        std::ostringstream found;
        for (QWidget* widget : top.findChildren<QWidget*>()) {
            if (!widget->isVisibleTo(&top)) {
                continue;
            }
            QString text;
            int wanted = widget->sizeHint().width();
            if (auto* push = qobject_cast<QPushButton*>(widget)) {
                // A push button's size hint has a minimum width of the style's; only its text
                // and margins count here.
                text = push->text();
                wanted = push->fontMetrics().horizontalAdvance(text) +
                         2 * push->style()->pixelMetric(QStyle::PM_ButtonMargin);
            } else if (auto* button = qobject_cast<QAbstractButton*>(widget)) {
                text = button->text();
            } else if (auto* combo = qobject_cast<QComboBox*>(widget)) {
                text = combo->currentText();
            } else if (auto* label = qobject_cast<QLabel*>(widget)) {
                text = label->text();
            } else {
                continue;
            }
            if (!text.isEmpty() && wanted > widget->width() + 1) {
                found << "clipped: \"" << text.toStdString() << "\" wants " << wanted << ", has "
                      << widget->width() << "\n";
            }
        }
        for (QWidget* parent : top.findChildren<QWidget*>()) {
            QList<QWidget*> shown;
            for (QObject* child : parent->children()) {
                auto* widget = qobject_cast<QWidget*>(child);
                if (widget != nullptr && widget->isVisibleTo(&top) && !widget->isWindow()) {
                    shown.append(widget);
                }
            }
            for (int i = 0; i < shown.size(); ++i) {
                for (int j = i + 1; j < shown.size(); ++j) {
                    if (shown[i]->geometry().intersects(shown[j]->geometry())) {
                        found << "overlap: " << shown[i]->metaObject()->className() << " "
                              << describe(*shown[i]) << " and "
                              << shown[j]->metaObject()->className() << " " << describe(*shown[j])
                              << "\n";
                    }
                }
            }
        }
        return found.str();
    }

    static std::string describe(const QWidget& widget)
    {
        const QRect r = widget.geometry();
        std::ostringstream out;
        out << r.x() << "," << r.y() << " " << r.width() << "x" << r.height();
        return out.str();
    }

    QtTextMetrics metrics;
    std::unique_ptr<Window> window;
    std::unique_ptr<QtWindowMirror> mirror;
    std::string saved_;
};

TEST_P(QtPseudoLocalizationTest, NoTextIsClippedAndNoControlsOverlapOnAnyTab)
{
    TabView* tabs = o().settingsTabView;
    for (int tab = 0; tab < tabs->numberOfTabViewItems(); ++tab) {
        tabs->selectTabViewItemAtIndex(tab);
        QApplication::processEvents();
        EXPECT_EQ(problems(*mirror->widget()), "")
            << "on the tab " << tabs->tabViewItemAtIndex(tab)->identifier();
    }
}

INSTANTIATE_TEST_SUITE_P(LongerTexts, QtPseudoLocalizationTest,
                         ::testing::Values("x-pseudo", "en_US.UTF-8"), [](const auto& info) {
                             return std::string(info.param) == "x-pseudo" ? "Pseudo" : "English";
                         });

} // namespace
} // namespace vexto
