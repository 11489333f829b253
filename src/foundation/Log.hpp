#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace vexto {

// The pane's log: each line begins "[Vexto] " and goes to the system log, to standard error
// when asked, and to a sink that tests install to read what was logged.
class Log {
public:
    static constexpr std::string_view prefix = "[Vexto] ";

    // Logs `prefix` + message.
    static void line(std::string_view message);
    // One line for a file that is there but cannot be used, saying why and what is done instead:
    // a fallback the person could not explain otherwise.
    static void fileNotUsed(std::string_view path, std::string_view problem,
                            std::string_view instead);

    static void setEchoToStandardError(bool echo);
    // While a sink is installed, lines go to it instead of the system log.
    static void setSink(std::function<void(const std::string&)> sink);
    static void clearSink();
};

} // namespace vexto
