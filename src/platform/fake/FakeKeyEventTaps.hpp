#pragma once

#include "ports/KeyEventTaps.hpp"

#include <vector>

namespace vexto {

// Taps for tests: key events are handed to them by hand, the newest tap first.
class FakeKeyEventTaps final : public KeyEventTaps {
public:
    std::unique_ptr<KeyEventTap> createTap(Callback callback) override;

    // What a tap at the head of the session does with the event: true when one swallowed it.
    bool deliver(const Event& event) const;
    std::size_t liveTaps() const { return taps_.size(); }
    int created() const { return created_; }
    // The system switches taps off after a time-out; the pane must switch them on again.
    void disableAll();
    bool allEnabled() const;

private:
    class Tap;
    friend class Tap;
    std::vector<Tap*> taps_;
    int created_ = 0;
};

} // namespace vexto
