#pragma once

#include "ScriptCommand.hpp"
#include "foundation/Point.hpp"

#include <cstdio>
#include <optional>
#include <span>
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

    // Every command, in the order the README lists them.
    static std::span<const ScriptCommand> commands();
    // The commands as the README's Markdown table.
    static std::string commandTable();

private:
    using Words = ScriptCommand::Words;

    static bool readLine(std::FILE* script, std::string& line);
    void printLine(const std::string& text);

    bool runCommand(const Words& words, std::string& error);
    View* outlet(const std::string& name, std::string& error) const;
    // The outlet when it is of that kind; none, with why, when it is missing or of another.
    template <typename Kind>
    Kind* outletOfKind(const std::string& name, const char* kind, std::string& error) const;

    bool quit(const Words& words, std::string& error);
    bool select(const Words& words, std::string& error);
    bool unselect(const Words& words, std::string& error);
    bool revert(const Words& words, std::string& error);
    bool selectTab(const Words& words, std::string& error);
    bool click(const Words& words, std::string& error);
    bool hover(const Words& words, std::string& error);
    bool setState(const Words& words, std::string& error);
    bool choose(const Words& words, std::string& error);
    bool chooseSubmenu(const Words& words, std::string& error);
    bool slide(const Words& words, std::string& error);
    static void drag(Slider& slider, double value);
    bool setGradient(const Words& words, std::string& error);
    bool clickStrip(const Words& words, std::string& error);
    bool type(const Words& words, std::string& error);
    bool press(const Words& words, std::string& error);
    bool clear(const Words& words, std::string& error);
    bool answer(const Words& words, std::string& error);
    bool answerFile(const Words& words, std::string& error);
    bool wait(const Words& words, std::string& error);
    bool printSetting(const Words& words, std::string& error);
    bool printSavedSetting(const Words& words, std::string& error);
    bool printControl(const Words& words, std::string& error);
    bool printWindow(const Words& words, std::string& error);
    bool printColorPanel(const Words& words, std::string& error);

    PaneHost& host_;
    RunLoop& runLoop_;
    ScriptedAlerts& alerts_;
    std::FILE* out_;
    std::FILE* errors_;
    bool quit_ = false;
};

} // namespace vexto
