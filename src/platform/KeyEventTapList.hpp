#pragma once

#include "ports/KeyEventTaps.hpp"

#include <cstddef>
#include <vector>

namespace vexto {

// The taps a backend keeps: each made by createTap and gone when released. A backend hands every
// key event to deliver(), which offers it to the taps newest first.
class KeyEventTapList : public KeyEventTaps {
public:
    std::unique_ptr<KeyEventTap> createTap(Callback callback) override;

    // True when a switched-on tap swallowed the event.
    bool deliver(const Event& event) const;
    bool empty() const { return taps_.empty(); }
    std::size_t size() const { return taps_.size(); }
    void setAllEnabled(bool enabled);
    bool allEnabled() const;

private:
    class Tap;
    std::vector<Tap*> taps_;
};

} // namespace vexto
