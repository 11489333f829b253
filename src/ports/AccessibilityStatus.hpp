#pragma once

namespace vexto {

// Whether the system lets a background process watch the keyboard and drive other
// applications' windows, which the daemon needs.
class AccessibilityStatus {
public:
    virtual ~AccessibilityStatus() = default;
    virtual bool isAssistiveAccessEnabled() = 0;
    // The session gives no background program the keyboard or other programs' windows, whatever
    // is allowed (a Wayland session): only another kind of session can.
    virtual bool needsAnotherSession() { return false; }
};

} // namespace vexto
