#pragma once

#include "ports/AccessibilityStatus.hpp"

namespace vexto {

// On Linux the daemon can watch the keyboard and drive other windows exactly when it can reach
// an X11 display in an X11 session: X11 asks no permission. A Wayland session gives no such
// access at all, even with Xwayland's display at hand, and neither does a machine without one.
class X11AccessibilityStatus final : public AccessibilityStatus {
public:
    bool isAssistiveAccessEnabled() override;
    bool needsAnotherSession() override;
};

} // namespace vexto
