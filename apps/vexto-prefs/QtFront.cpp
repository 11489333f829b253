// The host with Qt: the pane in a real window, rendered offscreen to pictures, or scripted with
// its window mirrored.
#include "QtFront.hpp"

#include "LinuxPaneServices.hpp"
#include "PaneHost.hpp"
#include "ScratchHome.hpp"
#include "ScriptedAlerts.hpp"
#include "foundation/FileSystem.hpp"
#include "qt/QtAlerts.hpp"
#include "qt/QtFilePanels.hpp"
#include "qt/QtKeyEventTaps.hpp"
#include "qt/QtRunLoop.hpp"
#include "qt/QtTextMetrics.hpp"
#include "qt/QtTranslations.hpp"
#include "qt/QtWindowMirror.hpp"
#include "toolkit/Application.hpp"
#include "toolkit/TabView.hpp"

#include <QApplication>
#include <QIcon>
#include <QTimer>

#include <cstdlib>
#include <iostream>
#include <optional>

using namespace vexto;

namespace {

int saveScreenshots(const std::string& folder, PaneHost& host, QtWindowMirror& mirror)
{
    if (!FileSystem::createDirectories(folder)) {
        std::cerr << "vexto-prefs: cannot create " << folder << "\n";
        return HostRun::failure;
    }
    TabView* tabs = host.settingsTabView();
    for (int i = 0; tabs != nullptr && i < tabs->numberOfTabViewItems(); ++i) {
        tabs->selectTabViewItemAtIndex(i); // through the tab view, so the pane fits the window
        QApplication::processEvents();
        const std::string path =
            FileSystem::join(folder, tabs->tabViewItemAtIndex(i)->identifier() + ".png");
        if (!mirror.render().save(QString::fromStdString(path))) {
            std::cerr << "vexto-prefs: cannot write " << path << "\n";
            return HostRun::failure;
        }
        std::cout << path << "\n";
    }
    return HostRun::success;
}

// The cursors the model pushes, shown over the whole application while they are pushed.
void showPushedCursors()
{
    Application::shared().setCursorHandler([](const std::string& cursor, bool pushed) {
        while (QGuiApplication::overrideCursor() != nullptr) {
            QGuiApplication::restoreOverrideCursor();
        }
        if (pushed) {
            QGuiApplication::setOverrideCursor(cursor == "pointingHand" ? Qt::PointingHandCursor
                                               : cursor == "iBeam"      ? Qt::IBeamCursor
                                                                        : Qt::ArrowCursor);
        }
    });
}

int runWindow(QApplication& application, PaneHost& host, QtWindowMirror& mirror)
{
    showPushedCursors();
    mirror.closeOnStandardKeys();
    mirror.widget()->show();
    HostRun::stopOnSignals();
    QTimer stopWatch;
    QObject::connect(&stopWatch, &QTimer::timeout, [] {
        if (HostRun::stopRequested()) {
            QApplication::quit();
        }
    });
    stopWatch.start(200);
    const int status = application.exec();
    host.unselect();
    return status;
}

} // namespace

extern "C" __attribute__((visibility("default"))) int
vexto_run_qt_front(const HostRun::Options* options, int argc, char** argv)
{
    // The host has made sure a window can be shown; pictures and scripts are drawn offscreen.
    if ((options->screenshotFolder || options->script) &&
        std::getenv("QT_QPA_PLATFORM") == nullptr) {
        ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    }
    QApplication application(argc, argv);
    QApplication::setDesktopFileName("app.vexto.Preferences");
    QtTranslations::install(application);
    QApplication::setWindowIcon(QIcon(QString::fromStdString(
        FileSystem::join(options->panePath, "Contents/Resources/Vexto.png"))));
    QtTextMetrics metrics;
    Application::shared().setTextMetrics(&metrics);
    QtRunLoop loop;
    ScriptedAlerts scriptedAlerts;
    QtAlerts qtAlerts;
    const bool scripted = options->script || options->screenshotFolder;
    Application::shared().setAlerts(scripted ? static_cast<Alerts*>(&scriptedAlerts) : &qtAlerts);
    QtKeyEventTaps keyTaps;
    LinuxPaneServices services(loop);
    PaneEnvironment environment = services.environment(loop);
    environment.keyTaps = &keyTaps;
    environment.drawingOnly = options->screenshotFolder.has_value();
    QtFilePanels qtFilePanels;
    environment.filePanels = scripted ? static_cast<FilePanels*>(&scriptedAlerts) : &qtFilePanels;
    std::optional<ScratchHome> scratchHome;
    if (options->screenshotFolder && !scratchHome.emplace().ready()) {
        std::cerr << "vexto-prefs: cannot copy the settings to a temporary folder to draw them\n";
        return HostRun::failure;
    }
    PaneHost host(environment);
    if (!HostRun::loadPane(host, options->panePath)) {
        return HostRun::failure;
    }
    QtWindowMirror mirror(host.window());
    host.select();
    if (options->screenshotFolder) {
        const int status = saveScreenshots(*options->screenshotFolder, host, mirror);
        host.unselect();
        return status;
    }
    if (options->script) {
        return HostRun::runScript(*options, host, loop, scriptedAlerts);
    }
    return runWindow(application, host, mirror);
}
