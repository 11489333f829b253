#include "platform/fake/FakeRunLoop.hpp"

#include <algorithm>

namespace vexto {

void FakeRunLoop::sleep(double seconds)
{
    now_ += std::max(seconds, 0.0);
    slept_ += std::max(seconds, 0.0);
}

void FakeRunLoop::advance(double seconds)
{
    const double end = now_ + std::max(seconds, 0.0);
    for (;;) {
        const auto due = queue_.nextDueTime(mode_);
        if (!due || *due > end) {
            break;
        }
        now_ = std::max(now_, *due);
        if (auto action = queue_.takeDue(now_, mode_)) {
            action();
        }
    }
    now_ = end;
}

} // namespace vexto
