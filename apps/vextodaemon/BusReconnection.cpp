#include "BusReconnection.hpp"

#include "ports/RunLoop.hpp"

namespace vexto {

namespace {
constexpr const char* tryAgainSelector = "tryAgain";
} // namespace

BusReconnection::BusReconnection(RunLoop& loop, std::function<bool()> reconnect,
                                 std::function<void()> reconnected, std::function<void()> giveUp)
    : loop_(loop), reconnect_(std::move(reconnect)), reconnected_(std::move(reconnected)),
      giveUp_(std::move(giveUp))
{}

BusReconnection::~BusReconnection()
{
    loop_.cancelPreviousPerformRequests(this);
}

void BusReconnection::connectionLost()
{
    if (trying_) {
        return;
    }
    trying_ = true;
    tries_ = 0;
    schedule();
}

void BusReconnection::schedule()
{
    loop_.performAfterDelay(this, tryAgainSelector, {}, delays[tries_],
                            RunLoopModes{RunLoopMode::Default}, [this] { tryAgain(); });
}

void BusReconnection::tryAgain()
{
    ++tries_;
    if (reconnect_()) {
        trying_ = false;
        reconnected_();
        return;
    }
    if (tries_ < delays.size()) {
        schedule();
        return;
    }
    trying_ = false;
    giveUp_();
}

} // namespace vexto
