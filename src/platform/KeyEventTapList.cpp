#include "platform/KeyEventTapList.hpp"

#include <algorithm>

namespace vexto {

class KeyEventTapList::Tap final : public KeyEventTap {
public:
    Tap(std::vector<Tap*>& list, Callback callback) : list_(list), callback_(std::move(callback))
    {
        list_.push_back(this);
    }
    ~Tap() override { std::erase(list_, this); }
    Tap(const Tap&) = delete;
    Tap& operator=(const Tap&) = delete;

    bool isEnabled() const override { return enabled_; }
    void setEnabled(bool enabled) override { enabled_ = enabled; }
    bool handle(const Event& event) const { return enabled_ && callback_(event); }

private:
    std::vector<Tap*>& list_;
    Callback callback_;
    bool enabled_ = true;
};

std::unique_ptr<KeyEventTap> KeyEventTapList::createTap(Callback callback)
{
    return std::make_unique<Tap>(taps_, std::move(callback));
}

bool KeyEventTapList::deliver(const Event& event) const
{
    for (auto tap = taps_.rbegin(); tap != taps_.rend(); ++tap) {
        if ((*tap)->handle(event)) {
            return true;
        }
    }
    return false;
}

void KeyEventTapList::setAllEnabled(bool enabled)
{
    for (Tap* tap : taps_) {
        tap->setEnabled(enabled);
    }
}

bool KeyEventTapList::allEnabled() const
{
    return std::all_of(taps_.begin(), taps_.end(), [](const Tap* tap) { return tap->isEnabled(); });
}

} // namespace vexto
