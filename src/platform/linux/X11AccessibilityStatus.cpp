#include "platform/linux/X11AccessibilityStatus.hpp"

#include "platform/linux/WaylandSession.hpp"

#include <X11/Xlib.h>
#include <cstdlib>

namespace vexto {

bool X11AccessibilityStatus::needsAnotherSession()
{
    return WaylandSession::isCurrent();
}

bool X11AccessibilityStatus::isAssistiveAccessEnabled()
{
    if (needsAnotherSession()) {
        return false;
    }
    const char* name = std::getenv("DISPLAY");
    if (name == nullptr || *name == '\0') {
        return false;
    }
    Display* display = XOpenDisplay(name);
    if (display == nullptr) {
        return false;
    }
    XCloseDisplay(display);
    return true;
}

} // namespace vexto
