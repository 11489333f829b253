#pragma once

#include "ports/AccessibilityStatus.hpp"

namespace vexto {

// Assistive access as the test sets it.
class FakeAccessibilityStatus final : public AccessibilityStatus {
public:
    bool isAssistiveAccessEnabled() override { return enabled && !wayland; }
    bool needsAnotherSession() override { return wayland; }
    bool enabled = false; // off until the test grants it
    bool wayland = false;
};

} // namespace vexto
