#include "platform/linux/PollRunLoop.hpp"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <ctime>
#include <poll.h>
#include <vector>

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
        waitForDescriptors(std::min(next, end) - current);
    }
}

void PollRunLoop::runUntil(const std::function<bool()>& finished)
{
    for (;;) {
        while (auto action = queue_.takeDue(now(), RunLoopMode::Default)) {
            action();
        }
        if (finished()) {
            return;
        }
        const auto next = queue_.nextDueTime(RunLoopMode::Default);
        waitForDescriptors(next ? std::max(*next - now(), 0.0) : -1.0);
    }
}

void PollRunLoop::watchDescriptor(int fd, std::function<void()> ready)
{
    watched_[fd] = std::move(ready);
}

void PollRunLoop::unwatchDescriptor(int fd)
{
    watched_.erase(fd);
}

void PollRunLoop::waitForDescriptors(double seconds)
{
    const bool forever = seconds < 0;
    if (watched_.empty()) {
        sleep(forever ? 1.0 : seconds); // nothing could ever wake it: it looks again later
        return;
    }
    std::vector<pollfd> descriptors;
    for (const auto& [fd, ready] : watched_) {
        descriptors.push_back(pollfd{fd, POLLIN, 0});
    }
    // Rounded up, so that a perform due in less than a millisecond is not polled for in a loop.
    const int milliseconds =
        forever ? -1 : static_cast<int>(std::ceil(std::min(seconds, 86400.0) * 1000.0));
    if (::poll(descriptors.data(), descriptors.size(), milliseconds) <= 0) {
        return;
    }
    for (const pollfd& descriptor : descriptors) {
        if (descriptor.revents == 0) {
            continue;
        }
        // A handler may unwatch others (or itself) while they are served.
        const auto found = watched_.find(descriptor.fd);
        if (found != watched_.end()) {
            auto ready = found->second;
            ready();
        }
    }
}

} // namespace vexto
