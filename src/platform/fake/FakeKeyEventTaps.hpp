#pragma once

#include "platform/KeyEventTapList.hpp"

namespace vexto {

// Taps for tests: key events are handed to them by hand (deliver), the newest tap first.
class FakeKeyEventTaps final : public KeyEventTapList {
public:
    std::unique_ptr<KeyEventTap> createTap(Callback callback) override;

    std::size_t liveTaps() const { return size(); }
    int created() const { return created_; }
    // The system switches taps off after a time-out; the pane must switch them on again.
    void disableAll() { setAllEnabled(false); }

private:
    int created_ = 0;
};

} // namespace vexto
