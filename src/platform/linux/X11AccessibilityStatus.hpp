#pragma once

#include "ports/AccessibilityStatus.hpp"

namespace vexto {

// On Linux the daemon can watch the keyboard and drive other windows exactly when it can reach
// an X11 display (XWayland included): X11 asks no permission, and a pure Wayland session or a
// machine without a display gives no such access at all.
class X11AccessibilityStatus final : public AccessibilityStatus {
public:
    bool isAssistiveAccessEnabled() override;
};

} // namespace vexto
