#pragma once

namespace vexto {

// Whether the system lets a background process watch the keyboard and drive other
// applications' windows, which the daemon needs.
class AccessibilityStatus {
public:
    virtual ~AccessibilityStatus() = default;
    virtual bool isAssistiveAccessEnabled() = 0;
};

} // namespace vexto
