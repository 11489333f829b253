// vexto-prefs: the host that loads the Vexto pane, shows it, renders it or runs scripts against it.
#include "PaneHost.hpp"
#include "ScriptRunner.hpp"
#include "ScriptedAlerts.hpp"
#include "foundation/FileSystem.hpp"
#include "foundation/Log.hpp"
#include "platform/LocalDistributedNotificationCenter.hpp"
#include "platform/linux/LinuxDesktop.hpp"
#include "platform/linux/PollRunLoop.hpp"
#include "qt/QtAlerts.hpp"
#include "qt/QtRunLoop.hpp"
#include "qt/QtWindowMirror.hpp"
#include "toolkit/Application.hpp"
#include "toolkit/TabView.hpp"

#include <QApplication>
#include <QTimer>

#include <csignal>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <optional>
#include <string>
#include <unistd.h>

using namespace vexto;

namespace {

constexpr int success = 0;
constexpr int failure = 1;
constexpr int badUsage = 2;

struct Options {
    std::string panePath;
    bool headless = false;
    std::optional<std::string> screenshotFolder;
    std::optional<std::string> script; // a file, or "-" for standard input
};

volatile std::sig_atomic_t stopRequested = 0;

int usage(const char* message)
{
    std::cerr
        << "vexto-prefs: " << message << "\n"
        << "usage: vexto-prefs [--pane PATH] [--headless] [--screenshot DIR] [--script FILE|-]\n";
    return badUsage;
}

// The bundle installed beside the program.
std::string besideTheProgram()
{
    char path[4096];
    const ssize_t length = ::readlink("/proc/self/exe", path, sizeof path - 1);
    const std::string program =
        length > 0 ? std::string(path, static_cast<std::size_t>(length)) : ".";
    return FileSystem::join(FileSystem::folderOf(program), "Vexto.prefPane");
}

std::optional<Options> parse(int argc, char** argv, std::string& error)
{
    Options options;
    options.panePath = besideTheProgram();
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        const bool hasValue = i + 1 < argc;
        if (argument == "--headless") {
            options.headless = true;
        } else if (argument == "--pane" && hasValue) {
            options.panePath = argv[++i];
        } else if (argument == "--screenshot" && hasValue) {
            options.screenshotFolder = argv[++i];
        } else if (argument == "--script" && hasValue) {
            options.script = argv[++i];
        } else {
            error = "unknown or incomplete option " + argument;
            return std::nullopt;
        }
    }
    if (options.headless && options.screenshotFolder) {
        error = "--screenshot renders with Qt and cannot be combined with --headless";
        return std::nullopt;
    }
    return options;
}

bool loadPane(PaneHost& host, const std::string& bundlePath)
{
    std::string error;
    if (!host.load(bundlePath, error)) {
        std::cerr << "vexto-prefs: " << error << "\n";
        return false;
    }
    return true;
}

// SIGINT and SIGTERM ask for a clean stop, which the run loops check for: the pane is then left
// as closing the window leaves it.
void stopOnSignals()
{
    std::signal(SIGINT, [](int) { stopRequested = 1; });
    std::signal(SIGTERM, [](int) { stopRequested = 1; });
}

int runScript(const Options& options, PaneHost& host, RunLoop& loop, ScriptedAlerts& alerts)
{
    if (*options.script == "-") {
        return ScriptRunner(host, loop, alerts, std::cout, std::cerr).run(std::cin);
    }
    std::ifstream file(*options.script);
    if (!file) {
        std::cerr << "vexto-prefs: cannot read the script " << *options.script << "\n";
        host.unselect();
        return failure;
    }
    return ScriptRunner(host, loop, alerts, std::cout, std::cerr).run(file);
}

int runHeadless(const Options& options)
{
    PollRunLoop loop;
    LocalDistributedNotificationCenter center;
    LinuxDesktop desktop;
    ScriptedAlerts alerts;
    Application::shared().setAlerts(&alerts);
    PaneHost host(PaneEnvironment{loop, center, desktop, desktop, desktop, nullptr});
    if (!loadPane(host, options.panePath)) {
        return failure;
    }
    host.select();
    if (options.script) {
        return runScript(options, host, loop, alerts);
    }
    // Runs until asked to stop.
    stopOnSignals();
    while (stopRequested == 0) {
        loop.runFor(0.2);
    }
    host.unselect();
    return success;
}

int saveScreenshots(const std::string& folder, PaneHost& host, QtWindowMirror& mirror)
{
    if (!FileSystem::createDirectories(folder)) {
        std::cerr << "vexto-prefs: cannot create " << folder << "\n";
        return failure;
    }
    TabView* tabs = host.settingsTabView();
    for (int i = 0; tabs != nullptr && i < tabs->numberOfTabViewItems(); ++i) {
        tabs->selectTabViewItemAtIndex(i); // through the tab view, so the pane fits the window
        QApplication::processEvents();
        const std::string path =
            FileSystem::join(folder, tabs->tabViewItemAtIndex(i)->identifier() + ".png");
        if (!mirror.render().save(QString::fromStdString(path))) {
            std::cerr << "vexto-prefs: cannot write " << path << "\n";
            return failure;
        }
        std::cout << path << "\n";
    }
    return success;
}

int runWithQt(const Options& options, int argc, char** argv)
{
    const bool hasDisplay =
        std::getenv("DISPLAY") != nullptr || std::getenv("WAYLAND_DISPLAY") != nullptr;
    if ((options.screenshotFolder || options.script || !hasDisplay) &&
        std::getenv("QT_QPA_PLATFORM") == nullptr) {
        ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    }
    if (!hasDisplay && !options.screenshotFolder && !options.script) {
        return usage("no display: use --screenshot DIR, --script FILE or --headless");
    }
    QApplication application(argc, argv);
    QtRunLoop loop;
    LocalDistributedNotificationCenter center;
    LinuxDesktop desktop;
    ScriptedAlerts scriptedAlerts;
    QtAlerts qtAlerts;
    const bool scripted = options.script || options.screenshotFolder;
    Application::shared().setAlerts(scripted ? static_cast<Alerts*>(&scriptedAlerts) : &qtAlerts);
    PaneHost host(PaneEnvironment{loop, center, desktop, desktop, desktop, nullptr});
    if (!loadPane(host, options.panePath)) {
        return failure;
    }
    QtWindowMirror mirror(host.window());
    host.select();
    if (options.screenshotFolder) {
        const int status = saveScreenshots(*options.screenshotFolder, host, mirror);
        host.unselect();
        return status;
    }
    if (options.script) {
        return runScript(options, host, loop, scriptedAlerts);
    }
    mirror.widget()->show();
    stopOnSignals();
    QTimer stopWatch;
    QObject::connect(&stopWatch, &QTimer::timeout, [] {
        if (stopRequested != 0) {
            QApplication::quit();
        }
    });
    stopWatch.start(200);
    const int status = application.exec();
    host.unselect();
    return status;
}

} // namespace

int main(int argc, char** argv)
{
    std::string error;
    const auto options = parse(argc, argv, error);
    if (!options) {
        return usage(error.c_str());
    }
    Log::setEchoToStandardError(true);
    return options->headless ? runHeadless(*options) : runWithQt(*options, argc, argv);
}
