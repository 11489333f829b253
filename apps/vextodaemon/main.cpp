// vextodaemon for Linux: the window-cycling daemon the pane starts, restarts and talks to. It runs
// until the pane asks it to quit, or SIGTERM or SIGINT arrives, and logs what it does to
// ~/Library/Logs/vextodaemon.log and standard error. Where a display can be reached it loads its
// Qt module and shows sample panels; without one it only logs that they are due.
//
// On an X11 desktop it grabs the hot keys of the settings and cycles windows; in a Wayland
// session, or without a display, it only answers the pane.
//
//   vextodaemon --render-sample SETTINGS-OR-LAYOUT PNG [SCREEN-WIDTH]
// draws the sample panel for a settings or layout file into a picture instead, and exits.
#include "BusReconnection.hpp"
#include "DaemonLog.hpp"
#include "DaemonQtFront.hpp"
#include "DaemonService.hpp"
#include "cycling/CycleController.hpp"
#include "cycling/HotKeyBindings.hpp"
#include "foundation/DictionaryExtensions.hpp"
#include "foundation/FileSystem.hpp"
#include "foundation/HomeDirectory.hpp"
#include "foundation/Log.hpp"
#include "foundation/NumericText.hpp"
#include "foundation/ProductInfo.hpp"
#include "panel/PanelAppearance.hpp"
#include "panel/PanelPresenter.hpp"
#include "platform/linux/DBusDistributedNotificationCenter.hpp"
#include "platform/linux/FontconfigCatalog.hpp"
#include "platform/linux/PollRunLoop.hpp"
#include "platform/linux/ProcessRegister.hpp"
#include "platform/linux/WaylandSession.hpp"
#include "platform/linux/X11AccessibilityStatus.hpp"
#include "platform/linux/XkbKeyboardLayout.hpp"
#include "settings/LayeredSettings.hpp"
#include "xserver/X11WindowSystem.hpp"

#include <csignal>
#include <cstdio>
#include <cstring>
#include <dlfcn.h>
#include <memory>
#include <optional>
#include <string>
#include <sys/signalfd.h>
#include <unistd.h>

using namespace vexto;

namespace {

constexpr double pictureScreenWidth = 1280;

int stopSignals = -1;

std::string executablePath()
{
    char path[4096];
    const ssize_t length = ::readlink("/proc/self/exe", path, sizeof path - 1);
    return length > 0 ? std::string(path, static_cast<std::size_t>(length)) : std::string();
}

// .../vextodaemon.app/Contents/Linux/vextodaemon -> .../vextodaemon.app
std::string bundlePath()
{
    std::string bundle = executablePath();
    for (int level = 0; level < 3; ++level) {
        bundle = FileSystem::folderOf(bundle);
    }
    return bundle;
}

// The Qt module beside the executable; none (with the reason logged) when it cannot be loaded.
void* qtModule()
{
    const std::string path =
        FileSystem::join(FileSystem::folderOf(executablePath()), daemonQtModuleName);
    void* module = ::dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (module == nullptr) {
        const char* reason = ::dlerror();
        Log::line("no sample panels: " + std::string(reason != nullptr ? reason : path));
    }
    return module;
}

// Lines go to the log file (bounded, see DaemonLog) as well as standard error.
void logToFile(DaemonLog*& log)
{
    const std::string folder = HomeDirectory::expandTilde(std::string(product::daemonLogFolder));
    FileSystem::createDirectories(folder);
    log = new DaemonLog(FileSystem::join(folder, std::string(product::daemonLogFileName)));
    Log::setSink([log](const std::string& line) {
        log->write(line);
        std::fprintf(stderr, "%s\n", line.c_str());
    });
}

// The window system the daemon cycles on, none (with the reason logged) where it cannot.
std::unique_ptr<X11WindowSystem> windowSystem(RunLoop& loop, DescriptorWatcher& watcher)
{
    if (const auto session = WaylandSession::evidence()) {
        Log::line("window cycling needs an X11 session, and this is a Wayland one (" + *session +
                  "): no hot keys are grabbed");
        return nullptr;
    }
    std::string problem;
    auto windows = X11WindowSystem::open(loop, watcher, {}, problem);
    if (!windows) {
        Log::line("no window cycling: " + problem);
    }
    return windows;
}

int runDaemon(RunLoop& loop, DescriptorWatcher& watcher, PanelPresenter* presenter)
{
    FontconfigCatalog fonts;
    DBusDistributedNotificationCenter center(watcher);
    DaemonService daemon(center, bundlePath(), presenter, &fonts);
    std::unique_ptr<X11WindowSystem> windows = windowSystem(loop, watcher);
    std::unique_ptr<XkbKeyboardLayout> keyboard;
    std::unique_ptr<CycleController> cycles;
    if (windows) {
        cycles = std::make_unique<CycleController>(loop, *windows, presenter);
        keyboard = XkbKeyboardLayout::fromXServer();
        cycles->setKeyboardLayout(keyboard.get());
        windows->setController(cycles.get());
        // As every X client does, the daemon ends with its display.
        windows->setConnectionLostHandler([&] { daemon.quit("lost the X display"); });
        daemon.setSettingsHandler([&](const PlistDictionary& settings,
                                      const PlistDictionary& defaults) {
            const LayeredSettings layered(settings, defaults);
            const std::vector<HotKeyBinding> bindings = HotKeyBindings::fromSettings(layered);
            cycles->setSettings(CycleSettings::fromSettings(layered));
            const PanelAppearance look = PanelAppearance::fromSettings(settings, defaults, &fonts);
            if (presenter != nullptr) {
                presenter->setAppearance(look);
            }
            // Pixels for a screen of twice the usual density at most.
            windows->setPreferredIconSize(static_cast<int>(look.itemSize * 2));
            cycles->setBindings(bindings);
            windows->useBindings(bindings, X11KeyGrabs::Options::fromSettings(layered));
        });
    }
    BusReconnection reconnection(
        loop, [&] { return center.reconnect(); },
        [&] {
            Log::line("reached the session bus again");
            daemon.catchUp();
        },
        [&] { daemon.quit("lost the session bus, and the pane with it"); });
    center.setConnectionLostHandler([&] { reconnection.connectionLost(); });
    watcher.watchDescriptor(stopSignals, [&] {
        signalfd_siginfo info{};
        if (::read(stopSignals, &info, sizeof info) == sizeof info) {
            daemon.quit(info.ssi_signo == SIGTERM ? "SIGTERM" : "SIGINT");
        }
    });
    // Entered before it says it runs, so that a pane asking then finds it without a walk.
    const int entry = ProcessRegister::enter(product::daemonProcessName);
    if (entry < 0) {
        Log::line(
            "could not enter the process register: panes will look for this daemon by a walk");
    }
    daemon.start();
    loop.runUntil([&] { return !daemon.isRunning(); });
    watcher.unwatchDescriptor(stopSignals);
    if (windows) {
        windows->setController(nullptr);
    }
    ProcessRegister::leave(product::daemonProcessName, entry);
    return 0;
}

int renderSample(const char* source, const char* png, const char* width)
{
    const auto settings = deeplyMutableDictionaryWithContentsOfFile(source);
    if (!settings) {
        std::fprintf(stderr, "vextodaemon: %s is not a readable settings or layout file\n", source);
        return 1;
    }
    const auto screenWidth = width != nullptr ? NumericText::wholeReal(width)
                                              : std::optional<double>(pictureScreenWidth);
    if (!screenWidth || *screenWidth < 0) {
        std::fprintf(stderr, "vextodaemon: the screen width must be a number of points\n");
        return 2;
    }
    void* module = qtModule();
    const auto render = module != nullptr
                            ? reinterpret_cast<RenderSample>(::dlsym(module, renderSampleSymbol))
                            : nullptr;
    if (render == nullptr) {
        std::fprintf(stderr, "vextodaemon: drawing needs %s\n", daemonQtModuleName);
        return 1;
    }
    FontconfigCatalog fonts;
    const PanelAppearance look = PanelAppearance::fromSettings(
        *settings, DaemonService::shippedDefaults(bundlePath()), &fonts);
    if (render(&look, *screenWidth, png) != 0) {
        std::fprintf(stderr, "vextodaemon: cannot write %s\n", png);
        return 1;
    }
    std::printf("%s\n", png);
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc >= 4 && argc <= 5 && std::strcmp(argv[1], "--render-sample") == 0) {
        return renderSample(argv[2], argv[3], argc == 5 ? argv[4] : nullptr);
    }
    // First of all, so that a stop asked for while starting is read as one too.
    sigset_t stops;
    sigemptyset(&stops);
    sigaddset(&stops, SIGTERM);
    sigaddset(&stops, SIGINT);
    ::sigprocmask(SIG_BLOCK, &stops, nullptr);
    stopSignals = ::signalfd(-1, &stops, SFD_CLOEXEC | SFD_NONBLOCK);
    DaemonLog* log = nullptr;
    logToFile(log);

    int status = 0;
    // Qt ends the process when a display named cannot be reached: it is tried first.
    void* module = X11AccessibilityStatus().isAssistiveAccessEnabled() ? qtModule() : nullptr;
    const auto runWithQt =
        module != nullptr
            ? reinterpret_cast<RunDaemonWithQt>(::dlsym(module, runDaemonWithQtSymbol))
            : nullptr;
    if (runWithQt != nullptr) {
        status = runWithQt(argc, argv, runDaemon);
    } else {
        PollRunLoop loop;
        status = runDaemon(loop, loop, nullptr);
    }
    ::close(stopSignals);
    Log::clearSink();
    delete log; // says how often the last line was repeated
    return status;
}
