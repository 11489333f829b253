#pragma once

#include "foundation/Point.hpp"

#include <istream>
#include <optional>
#include <ostream>
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
// left unselected, so nothing is lost.
class ScriptRunner {
public:
    ScriptRunner(PaneHost& host, RunLoop& runLoop, ScriptedAlerts& alerts, std::ostream& out,
                 std::ostream& errors);

    // 0 when the script ran to its end or to "quit", 2 when it stopped on an error.
    int run(std::istream& script);

    // The words of a line; none (with the reason) for an unterminated quote.
    static std::optional<std::vector<std::string>> words(std::string_view line, std::string& error);

    static constexpr std::size_t maximumLineLength = 65536;

private:
    using Words = std::vector<std::string>;

    static bool readLine(std::istream& script, std::string& line);

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
    static Point centreOfButtonIn(const View& view);
    bool pressButtonInside(View& view);

    PaneHost& host_;
    RunLoop& runLoop_;
    ScriptedAlerts& alerts_;
    std::ostream& out_;
    std::ostream& errors_;
    bool quit_ = false;
};

} // namespace vexto
