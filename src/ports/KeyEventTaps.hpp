#pragma once

#include <functional>
#include <memory>

namespace vexto {

class Event;

// A tap at the head of the session's key events: its callback sees every key-down and key-up
// first and may swallow it.
class KeyEventTap {
public:
    virtual ~KeyEventTap() = default;
    virtual bool isEnabled() const = 0;
    virtual void setEnabled(bool enabled) = 0;
};

class KeyEventTaps {
public:
    // True from the callback: the event is swallowed and nothing else sees it.
    using Callback = std::function<bool(const Event& event)>;

    virtual ~KeyEventTaps() = default;
    // None when no tap can be made (the pane may not watch the keyboard); the tap ends when it
    // is released.
    virtual std::unique_ptr<KeyEventTap> createTap(Callback callback) = 0;
};

} // namespace vexto
