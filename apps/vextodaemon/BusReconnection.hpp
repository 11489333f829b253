#pragma once

#include <array>
#include <cstddef>
#include <functional>

namespace vexto {

class RunLoop;

// What the daemon does when its session bus goes away: a daemon that cannot hear the pane must
// not live on as if it could. It tries to reach the bus again, waiting longer each time (a
// restarted bus comes back at the same address), and gives up after the last try.
class BusReconnection {
public:
    static constexpr std::array<double, 5> delays{0.25, 0.5, 1.0, 2.0, 4.0};

    // `reconnect` tries once and says whether it worked; `reconnected` follows a success and
    // `giveUp` the last failure.
    BusReconnection(RunLoop& loop, std::function<bool()> reconnect,
                    std::function<void()> reconnected, std::function<void()> giveUp);
    ~BusReconnection();
    BusReconnection(const BusReconnection&) = delete;
    BusReconnection& operator=(const BusReconnection&) = delete;

    // The bus has gone: the first try is scheduled, unless tries are under way.
    void connectionLost();

private:
    void tryAgain();
    void schedule();

    RunLoop& loop_;
    std::function<bool()> reconnect_;
    std::function<void()> reconnected_;
    std::function<void()> giveUp_;
    std::size_t tries_ = 0;
    bool trying_ = false;
};

} // namespace vexto
