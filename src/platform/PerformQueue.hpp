#pragma once

#include "ports/RunLoop.hpp"

#include <cstdint>
#include <list>
#include <optional>

namespace vexto {

// The pending delayed performs of a run loop, in firing order: by due time, and in scheduling
// order among requests due at the same time.
class PerformQueue {
public:
    void add(const void* target, std::string selector, PerformArgument argument, double dueTime,
             RunLoopModes modes, std::function<void()> action);
    void cancel(const void* target, std::string_view selector, const PerformArgument& argument);
    void cancel(const void* target);

    // The due time of the first request that may fire in `mode`, if any.
    std::optional<double> nextDueTime(RunLoopMode mode) const;
    // Removes and returns the first request due at or before `time` that may fire in `mode`.
    std::function<void()> takeDue(double time, RunLoopMode mode);

    std::size_t size() const { return requests_.size(); }

private:
    struct Request {
        const void* target;
        std::string selector;
        PerformArgument argument;
        double dueTime;
        std::uint64_t sequence;
        RunLoopModes modes;
        std::function<void()> action;
    };

    std::list<Request>::iterator firstFor(RunLoopMode mode);

    std::list<Request> requests_; // kept sorted by (dueTime, sequence)
    std::uint64_t nextSequence_ = 0;
};

} // namespace vexto
