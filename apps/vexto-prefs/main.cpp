// vexto-prefs: the host that loads the Vexto pane, shows it, renders it or runs scripts against it.
// Without a window it needs no Qt at all; the window and the pictures come from the Qt front
// module beside the program, loaded only then.
#include "HostRun.hpp"
#include "LinuxPaneServices.hpp"
#include "PaneHost.hpp"
#include "QtFront.hpp"
#include "ScriptRunner.hpp"
#include "ScriptedAlerts.hpp"
#include "foundation/FileSystem.hpp"
#include "foundation/Log.hpp"
#include "platform/linux/PollRunLoop.hpp"
#include "toolkit/Application.hpp"

#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <string_view>

using namespace vexto;

namespace {

int runHeadless(const HostRun::Options& options)
{
    PollRunLoop loop;
    ScriptedAlerts alerts;
    Application::shared().setAlerts(&alerts);
    LinuxPaneServices services(loop);
    PaneEnvironment environment = services.environment(loop);
    environment.filePanels = &alerts;
    PaneHost host(environment);
    if (!HostRun::loadPane(host, options.panePath)) {
        return HostRun::failure;
    }
    host.select();
    if (options.script) {
        return HostRun::runScript(options, host, loop, alerts);
    }
    // Runs until asked to stop.
    HostRun::stopOnSignals();
    while (!HostRun::stopRequested()) {
        loop.runFor(0.2);
    }
    host.unselect();
    return HostRun::success;
}

// Qt answers a display it cannot open by aborting the program: a window that cannot be shown is
// said in one line instead. (Pictures and scripts are drawn offscreen, with a display or without.)
bool windowCanBeShown(const HostRun::Options& options)
{
    if (options.screenshotFolder || options.script) {
        return true;
    }
    const char* platform = std::getenv("QT_QPA_PLATFORM");
    const char* wayland = std::getenv("WAYLAND_DISPLAY");
    if ((platform != nullptr && std::string_view(platform).substr(0, 3) != "xcb") ||
        (wayland != nullptr && *wayland != '\0')) {
        return true; // Qt was told where to draw, or a Wayland session may be reached
    }
    const char* display = std::getenv("DISPLAY");
    const bool named = display != nullptr && *display != '\0';
    DesktopServices* desktop = named ? DesktopServices::shared() : nullptr;
    if (desktop != nullptr && desktop->accessibility().isAssistiveAccessEnabled()) {
        return true;
    }
    const std::string problem = named ? "cannot open display \"" + std::string(display) + "\""
                                      : std::string("no display (DISPLAY is not set)");
    std::fprintf(stderr,
                 "vexto-prefs: %s: the window cannot be shown (use --headless, or --screenshot "
                 "DIR for pictures)\n",
                 problem.c_str());
    return false;
}

int runWithQt(const HostRun::Options& options, int argc, char** argv)
{
    if (!windowCanBeShown(options)) {
        return HostRun::failure;
    }
    const std::string module = FileSystem::join(HostRun::programFolder(), qtFrontModuleName);
    void* handle = ::dlopen(module.c_str(), RTLD_NOW | RTLD_LOCAL);
    const auto run = handle != nullptr
                         ? reinterpret_cast<VextoRunQtFront>(::dlsym(handle, runQtFrontSymbol))
                         : nullptr;
    if (run == nullptr) {
        const char* reason = ::dlerror();
        std::fprintf(stderr, "vexto-prefs: the window needs %s: %s (without Qt, use --headless)\n",
                     module.c_str(), reason != nullptr ? reason : "not found");
        return HostRun::failure;
    }
    // The module stays loaded until the process ends: Qt's own exit handlers live in it.
    return run(&options, argc, argv);
}

} // namespace

int main(int argc, char** argv)
{
    std::string error;
    const auto options = HostRun::parse(argc, argv, error);
    if (!options) {
        return HostRun::usage(error);
    }
    if (options->help) {
        return HostRun::help();
    }
    if (options->version) {
        std::printf("vexto-prefs %s\n", VEXTO_VERSION_TEXT);
        return HostRun::success;
    }
    if (options->scriptCommands) {
        std::fputs(ScriptRunner::commandTable().c_str(), stdout);
        return HostRun::success;
    }
    Log::setEchoToStandardError(true);
    HostRun::reportBeeps();
    return options->headless ? runHeadless(*options) : runWithQt(*options, argc, argv);
}
