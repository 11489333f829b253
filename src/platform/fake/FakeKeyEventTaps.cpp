#include "platform/fake/FakeKeyEventTaps.hpp"

#include <algorithm>

namespace vexto {

class FakeKeyEventTaps::Tap final : public KeyEventTap {
public:
    Tap(FakeKeyEventTaps& owner, Callback callback) : owner_(owner), callback_(std::move(callback))
    {
        owner_.taps_.push_back(this);
    }
    ~Tap() override { std::erase(owner_.taps_, this); }
    Tap(const Tap&) = delete;
    Tap& operator=(const Tap&) = delete;

    bool isEnabled() const override { return enabled_; }
    void setEnabled(bool enabled) override { enabled_ = enabled; }
    bool handle(const Event& event) const { return enabled_ && callback_(event); }

private:
    FakeKeyEventTaps& owner_;
    Callback callback_;
    bool enabled_ = true;
};

std::unique_ptr<KeyEventTap> FakeKeyEventTaps::createTap(Callback callback)
{
    ++created_;
    return std::make_unique<Tap>(*this, std::move(callback));
}

bool FakeKeyEventTaps::deliver(const Event& event) const
{
    for (auto tap = taps_.rbegin(); tap != taps_.rend(); ++tap) {
        if ((*tap)->handle(event)) {
            return true;
        }
    }
    return false;
}

void FakeKeyEventTaps::disableAll()
{
    for (Tap* tap : taps_) {
        tap->setEnabled(false);
    }
}

bool FakeKeyEventTaps::allEnabled() const
{
    return std::all_of(taps_.begin(), taps_.end(), [](const Tap* tap) { return tap->isEnabled(); });
}

} // namespace vexto
