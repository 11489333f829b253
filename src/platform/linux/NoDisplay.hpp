#pragma once

#include "platform/linux/ProcessWindows.hpp"
#include "ports/AccessibilityStatus.hpp"
#include "ports/HotKeyRegistrar.hpp"

namespace vexto {

// The desktop where no display can be named: every hot key is free (nothing can hold one), no
// process has windows, and there is no assistive access. What the X11 services answer without
// a display, without loading them.
class NoDisplay final : public HotKeyRegistrar, public ProcessWindows, public AccessibilityStatus {
public:
    bool registerHotKey(std::uint16_t, std::uint32_t, std::uint32_t) override { return true; }
    void unregisterHotKey(std::uint32_t) override {}

    int activeWindowPID() override { return -1; }
    bool hasWindows(int) override { return false; }
    bool isVisible(int) override { return false; }
    bool setVisible(int, bool) override { return false; }
    bool activate(int, bool) override { return false; }

    bool isAssistiveAccessEnabled() override { return false; }

    // Whether the environment names a display at all.
    static bool isNamed();
};

} // namespace vexto
