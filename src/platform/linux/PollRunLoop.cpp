#include "platform/linux/PollRunLoop.hpp"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <ctime>

namespace vexto {

double PollRunLoop::now() const
{
    timespec ts{};
    ::clock_gettime(CLOCK_MONOTONIC, &ts);
    return static_cast<double>(ts.tv_sec) + static_cast<double>(ts.tv_nsec) / 1e9;
}

void PollRunLoop::sleep(double seconds)
{
    if (seconds <= 0) {
        return;
    }
    timespec request{};
    request.tv_sec = static_cast<time_t>(std::floor(seconds));
    request.tv_nsec = static_cast<long>((seconds - std::floor(seconds)) * 1e9);
    while (::nanosleep(&request, &request) != 0 && errno == EINTR) {
    }
}

void PollRunLoop::runFor(double seconds)
{
    const double end = now() + std::max(seconds, 0.0);
    for (;;) {
        while (auto action = queue_.takeDue(now(), RunLoopMode::Default)) {
            action();
        }
        const double current = now();
        if (current >= end) {
            return;
        }
        const double next = queue_.nextDueTime(RunLoopMode::Default).value_or(end);
        sleep(std::min(next, end) - current);
    }
}

} // namespace vexto
