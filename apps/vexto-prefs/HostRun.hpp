#pragma once

#include <csignal>
#include <optional>
#include <string>

namespace vexto {

class PaneHost;
class RunLoop;
class ScriptedAlerts;

// What the host does the same way with and without a window: its command line, loading the
// pane, running a script, and stopping cleanly on SIGINT and SIGTERM.
class HostRun {
public:
    struct Options {
        std::string panePath;
        bool headless = false;
        std::optional<std::string> screenshotFolder;
        std::optional<std::string> script; // a file, or "-" for standard input
        bool help = false;
        bool version = false;
        bool scriptCommands = false;
    };

    static constexpr int success = 0;
    static constexpr int failure = 1;
    static constexpr int badUsage = 2;

    // The folder the program runs from: the pane bundle and the Qt front module sit beside it.
    static std::string programFolder();

    // None, with the reason, for a command line that makes no sense.
    static std::optional<Options> parse(int argc, char** argv, std::string& error);
    static int usage(const std::string& message);
    // What --help prints on standard output.
    static int help();

    // Loads the bundle into the host; false after saying why on standard error.
    static bool loadPane(PaneHost& host, const std::string& bundlePath);
    static int runScript(const Options& options, PaneHost& host, RunLoop& loop,
                         ScriptedAlerts& alerts);

    // Every system beep is said on standard error, so that scripts can be checked from outside.
    static void reportBeeps();

    // SIGINT and SIGTERM ask for a clean stop, which the run loops check for: the pane is then
    // left as closing the window leaves it.
    static void stopOnSignals();
    static bool stopRequested();
};

} // namespace vexto
