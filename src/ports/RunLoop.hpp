#pragma once

#include "foundation/PlistValue.hpp"

#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>
#include <variant>

namespace vexto {

// The modes a run loop runs in. A delayed perform fires only while the loop runs in one of
// the modes it was scheduled for.
enum class RunLoopMode { Default, ModalPanel, EventTracking };

class RunLoopModes {
public:
    RunLoopModes(std::initializer_list<RunLoopMode> modes)
    {
        for (RunLoopMode mode : modes) {
            bits_ |= bit(mode);
        }
    }
    bool contains(RunLoopMode mode) const { return (bits_ & bit(mode)) != 0; }

private:
    static unsigned bit(RunLoopMode mode) { return 1u << static_cast<unsigned>(mode); }
    unsigned bits_ = 0;
};

// The argument a delayed perform carries. Cancelling matches it by equality: an object by
// identity, a value by value, and no argument only matches no argument.
using PerformArgument = std::variant<std::monostate, const void*, PlistValue>;

// The main thread's run loop and clock: delayed performs, their cancellation, and a blocking
// sleep. Everything runs on the main thread.
class RunLoop {
public:
    virtual ~RunLoop() = default;

    // Seconds on a monotonic clock.
    virtual double now() const = 0;

    // Runs `action` after `delay` seconds, the next time the loop runs in one of `modes`.
    // `target`, `selector` and `argument` identify the request for cancellation.
    virtual void performAfterDelay(const void* target, std::string selector,
                                   PerformArgument argument, double delay, RunLoopModes modes,
                                   std::function<void()> action) = 0;
    // Withdraws the pending requests whose target, selector and argument all match.
    virtual void cancelPreviousPerformRequests(const void* target, std::string_view selector,
                                               const PerformArgument& argument) = 0;
    // Withdraws every pending request of the target.
    virtual void cancelPreviousPerformRequests(const void* target) = 0;

    // Blocks the main thread; nothing fires meanwhile.
    virtual void sleep(double seconds) = 0;
    // Runs the loop in the default mode for that long, firing what falls due.
    virtual void runFor(double seconds) = 0;
    // Runs the loop in the default mode until `finished` holds, asked after each thing served.
    // Real loops wait for as long as nothing is due, so that an idle process never wakes; this
    // fallback looks once a second.
    virtual void runUntil(const std::function<bool()>& finished)
    {
        while (!finished()) {
            runFor(1.0);
        }
    }
};

} // namespace vexto
