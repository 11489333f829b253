#include "foundation/Log.hpp"

#include <cstdio>
#include <syslog.h>

namespace vexto {

namespace {

struct LogState {
    bool echo = false;
    std::function<void(const std::string&)> sink;
};

LogState& state()
{
    static LogState logState;
    return logState;
}

} // namespace

void Log::fileNotUsed(std::string_view path, std::string_view problem, std::string_view instead)
{
    line("could not use " + std::string(path) + " (" + std::string(problem) +
         "): " + std::string(instead));
}

void Log::line(std::string_view message)
{
    const std::string text = std::string(prefix) + std::string(message);
    if (state().sink) {
        state().sink(text);
    } else {
        ::syslog(LOG_USER | LOG_NOTICE, "%s", text.c_str());
    }
    if (state().echo) {
        std::fprintf(stderr, "%s\n", text.c_str());
    }
}

void Log::setEchoToStandardError(bool echo)
{
    state().echo = echo;
}

void Log::setSink(std::function<void(const std::string&)> sink)
{
    state().sink = std::move(sink);
}

void Log::clearSink()
{
    state().sink = nullptr;
}

} // namespace vexto
