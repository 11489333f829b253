// The pane's window on a real X server with a window manager, keys pressed through XTEST as a
// user presses them: what only the X11 platform of Qt shows (its pop-up lists and menus grab the
// keyboard, and a window's shortcuts are matched around them).
#include "../pane/PaneTestFixture.hpp"
#include "../platform/WindowManager.hpp"
#include "../platform/XvfbServer.hpp"
#include "PaneWindow.hpp"
#include "hotkeys/KRVXHotKeyTextView.hpp"
#include "qt/QtViewMirror.hpp"
#include "qt/QtWindowMirror.hpp"
#include "toolkit/Application.hpp"
#include "toolkit/Event.hpp"
#include "toolkit/PopUpButton.hpp"
#include "toolkit/TabView.hpp"
#include "toolkit/Window.hpp"

#include <QApplication>
#include <QComboBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <cstdlib>
#include <memory>
#include <unistd.h>

namespace vexto {
namespace {

class QtOnX11Test : public test::PaneTest {
protected:
    static void SetUpTestSuite()
    {
        server = std::make_unique<test::XvfbServer>();
        if (server->display().empty() || !server->waitUntilReady()) {
            return;
        }
        ::setenv("DISPLAY", server->display().c_str(), 1);
        ::setenv("QT_QPA_PLATFORM", "xcb", 1);
        windowManager = std::make_unique<test::WindowManager>(server->display());
        if (!windowManagerRuns()) {
            return;
        }
        static int argc = 1;
        static char name[] = "vexto_qt_x11_tests";
        static char* argv[] = {name, nullptr};
        new QApplication(argc, argv); // lives as long as the program
    }

    // openbox says it manages the screen through a property on the root window.
    static bool windowManagerRuns()
    {
        Display* display = server->connect();
        if (display == nullptr) {
            return false;
        }
        const Atom check = XInternAtom(display, "_NET_SUPPORTING_WM_CHECK", False);
        bool found = false;
        for (int tries = 0; tries < 100 && !found; ++tries) {
            Atom type = None;
            int format = 0;
            unsigned long count = 0;
            unsigned long after = 0;
            unsigned char* data = nullptr;
            found =
                XGetWindowProperty(display, DefaultRootWindow(display), check, 0, 1, False,
                                   XA_WINDOW, &type, &format, &count, &after, &data) == Success &&
                count == 1;
            XFree(data);
            if (!found) {
                ::usleep(50 * 1000);
            }
        }
        XCloseDisplay(display);
        return found;
    }

    void SetUp() override
    {
        if (QApplication::instance() == nullptr) {
            GTEST_SKIP() << "no X server could be started";
        }
        PaneEnvironment environment{loop, center, desktop, desktop, desktop, nullptr};
        pane = std::make_unique<KRVXPreferencePane>(bundlePath(), environment);
        main = pane->loadMainView();
        window = test::paneWindowAround(*main);
        mirror = std::make_unique<QtWindowMirror>(*window);
        mirror->closeOnStandardKeys();
        mirror->widget()->show();
        mirror->widget()->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(mirror->widget()));
    }
    void TearDown() override
    {
        mirror.reset();
        window.reset();
    }

    QWidget* widgetOf(const View* view) const { return mirror->mirrorOf(view)->widget(); }
    void selectTab(const char* identifier)
    {
        o().settingsTabView->selectTabViewItemWithIdentifier(identifier);
        QApplication::processEvents();
    }
    // Presses and releases a key on the X server, as the keyboard does.
    static void press(const char* key)
    {
        const std::string command = std::string("xdotool key ") + key;
        ASSERT_EQ(std::system(command.c_str()), 0);
    }
    bool windowShown() const
    {
        QTest::qWait(200);
        return mirror->widget()->isVisible();
    }

    static inline std::unique_ptr<test::XvfbServer> server;
    static inline std::unique_ptr<test::WindowManager> windowManager;
    std::unique_ptr<Window> window;
    std::unique_ptr<QtWindowMirror> mirror;
};

TEST_F(QtOnX11Test, EscapeInAnOpenListOrMenuClosesOnlyThatAndThenTheWindow)
{
    selectTab("panel");
    auto* delay = qobject_cast<QComboBox*>(widgetOf(o().panelDelayPopUpButton));
    ASSERT_NE(delay, nullptr);
    delay->showPopup();
    ASSERT_TRUE(QTest::qWaitFor([] { return QApplication::activePopupWidget() != nullptr; }));
    press("Escape");
    ASSERT_TRUE(QTest::qWaitFor([] { return QApplication::activePopupWidget() == nullptr; }));
    EXPECT_TRUE(windowShown()) << "Escape in the delay list closed the window";

    selectTab("appearance");
    auto* layouts = qobject_cast<QPushButton*>(widgetOf(o().layoutPresetsPopUpButton));
    ASSERT_NE(layouts, nullptr);
    bool menuShown = false;
    QTimer::singleShot(300, [&menuShown] {
        menuShown = QApplication::activePopupWidget() != nullptr;
        press("Escape");
    });
    layouts->showMenu(); // returns once the menu has closed
    EXPECT_TRUE(menuShown);
    EXPECT_TRUE(windowShown()) << "Escape in the Layouts menu closed the window";

    mirror->widget()->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(mirror->widget()));
    press("Escape");
    EXPECT_FALSE(windowShown()) << "with nothing open, Escape closes the window";
}

// openbox closes the active window on Alt+F4. While a hot-key field records, the field takes the
// whole keyboard, so the combination is recorded and the window stays.
TEST_F(QtOnX11Test, ARecordingFieldGetsTheKeysTheWindowManagerHolds)
{
    selectTab("triggers");
    auto* field = widgetOf(o().zoomFrontmostTextView);
    // Clicked, as the model takes a click.
    Application::shared().setCurrentEvent(Event::mouse(Event::Type::LeftMouseDown, Point{}));
    ASSERT_TRUE(window->makeFirstResponder(o().zoomFrontmostTextView));
    ASSERT_TRUE(o().zoomFrontmostTextView->isRecording());
    ASSERT_TRUE(QTest::qWaitFor([&] { return QWidget::keyboardGrabber() == field; }));
    press("alt+F4");
    ASSERT_TRUE(QTest::qWaitFor([&] { return QWidget::keyboardGrabber() == nullptr; }))
        << "recording ends, and with it the grab";
    EXPECT_TRUE(windowShown()) << "openbox saw Alt+F4 and closed the window";
    const PlistValue* table = pane->valueForSetting("Additional Zoom Frontmost Window");
    ASSERT_NE(table, nullptr);
    EXPECT_NE(table->asDictionary(), nullptr);
}

} // namespace
} // namespace vexto
