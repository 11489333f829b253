#pragma once

#include "foundation/Point.hpp"

#include <cstdio>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vexto {

class PaneHost;
class RunLoop;
class ScriptedAlerts;
class Slider;
class View;

// Runs an automation script against a loaded pane: one command a line, "#" starts a comment,
// arguments with spaces in double quotes. An unknown command, a missing outlet or a malformed
// line stops the script with a message naming the line (exit status 2); either way the pane is
// left unselected, so nothing is lost. It reads and writes C streams: C++ streams would cost every
// headless run the set-up of their locales.
class ScriptRunner {
public:
    ScriptRunner(PaneHost& host, RunLoop& runLoop, ScriptedAlerts& alerts, std::FILE* out,
                 std::FILE* errors);

    // 0 when the script ran to its end or to "quit", 2 when it stopped on an error.
    int run(std::FILE* script);

    // The words of a line; none (with the reason) for an unterminated quote.
    static std::optional<std::vector<std::string>> words(std::string_view line, std::string& error);

    static constexpr std::size_t maximumLineLength = 65536;

private:
    using Words = std::vector<std::string>;

    static bool readLine(std::FILE* script, std::string& line);
    void printLine(const std::string& text);

    bool runCommand(const Words& words, std::string& error);
    View* outlet(const Words& words, std::size_t index, std::string& error) const;
    bool choose(const Words& words, std::string& error);
    bool chooseSubmenu(const Words& words, std::string& error);
    bool slide(const Words& words, std::string& error);
    static void drag(Slider& slider, double value);
    bool setGradient(const Words& words, std::string& error);
    bool clickStrip(const Words& words, std::string& error);
    bool type(const Words& words, std::string& error);
    bool press(const Words& words, std::string& error);
    bool clear(const Words& words, std::string& error);
    void printSavedSetting(const std::string& key);

    PaneHost& host_;
    RunLoop& runLoop_;
    ScriptedAlerts& alerts_;
    std::FILE* out_;
    std::FILE* errors_;
    bool quit_ = false;
};

} // namespace vexto
