#include "HostRun.hpp"

#include "PaneHost.hpp"
#include "ScriptRunner.hpp"
#include "foundation/FileSystem.hpp"
#include "toolkit/Application.hpp"

#include <cstdio>
#include <unistd.h>

namespace vexto {

namespace {

volatile std::sig_atomic_t stopSignalled = 0;

constexpr const char* usageLine =
    "usage: vexto-prefs [--pane PATH] [--headless] [--screenshot DIR] [--script FILE|-]\n"
    "       vexto-prefs --help | --version | --script-commands\n";

} // namespace

std::string HostRun::programFolder()
{
    char path[4096];
    const ssize_t length = ::readlink("/proc/self/exe", path, sizeof path - 1);
    return FileSystem::folderOf(length > 0 ? std::string(path, static_cast<std::size_t>(length))
                                           : "./vexto-prefs");
}

std::optional<HostRun::Options> HostRun::parse(int argc, char** argv, std::string& error)
{
    Options options;
    options.panePath = FileSystem::join(programFolder(), "Vexto.prefPane");
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        const bool hasValue = i + 1 < argc;
        if (argument == "--help" || argument == "-h") {
            options.help = true;
        } else if (argument == "--version") {
            options.version = true;
        } else if (argument == "--script-commands") {
            options.scriptCommands = true;
        } else if (argument == "--headless") {
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

int HostRun::usage(const std::string& message)
{
    std::fprintf(stderr, "vexto-prefs: %s\n%s", message.c_str(), usageLine);
    return badUsage;
}

int HostRun::help()
{
    std::fputs(usageLine, stdout);
    std::fputs(
        "\n"
        "Shows the Vexto settings in a window, or without a display:\n"
        "  --pane PATH        the pane bundle to load (default: the one beside the program)\n"
        "  --headless         no window and no Qt; with --script, or until SIGINT/SIGTERM\n"
        "  --screenshot DIR   draws every tab offscreen to DIR/TAB.png and exits; the\n"
        "                     settings on disk are left as they are\n"
        "  --script FILE|-    runs a script of commands against the pane\n"
        "  --script-commands  the commands a script may use, as a Markdown table\n"
        "  --version          the program's version\n"
        "  -h, --help         this text\n",
        stdout);
    return success;
}

bool HostRun::loadPane(PaneHost& host, const std::string& bundlePath)
{
    std::string error;
    if (!host.load(bundlePath, error)) {
        std::fprintf(stderr, "vexto-prefs: %s\n", error.c_str());
        return false;
    }
    return true;
}

int HostRun::runScript(const Options& options, PaneHost& host, RunLoop& loop,
                       ScriptedAlerts& alerts)
{
    if (*options.script == "-") {
        return ScriptRunner(host, loop, alerts, stdout, stderr).run(stdin);
    }
    std::FILE* file = std::fopen(options.script->c_str(), "re");
    if (file == nullptr) {
        std::fprintf(stderr, "vexto-prefs: cannot read the script %s\n", options.script->c_str());
        host.unselect();
        return failure;
    }
    const int status = ScriptRunner(host, loop, alerts, stdout, stderr).run(file);
    std::fclose(file);
    return status;
}

void HostRun::reportBeeps()
{
    Application::shared().setBeepHandler([] { std::fputs("[Vexto] beep\n", stderr); });
}

void HostRun::stopOnSignals()
{
    std::signal(SIGINT, [](int) { stopSignalled = 1; });
    std::signal(SIGTERM, [](int) { stopSignalled = 1; });
}

bool HostRun::stopRequested()
{
    return stopSignalled != 0;
}

} // namespace vexto
