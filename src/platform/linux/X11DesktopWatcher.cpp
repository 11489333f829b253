#include "platform/linux/X11DesktopWatcher.hpp"

#include "platform/DescriptorWatcher.hpp"

#include <X11/Xlib.h>
#include <cstdlib>

namespace vexto {

X11DesktopWatcher::X11DesktopWatcher(DescriptorWatcher& loop,
                                     std::function<void()> activeDesktopDidChange,
                                     const std::string& displayName)
    : loop_(loop), activeDesktopDidChange_(std::move(activeDesktopDidChange))
{
    const char* name = displayName.empty() ? std::getenv("DISPLAY") : displayName.c_str();
    if (name == nullptr || *name == '\0') {
        return;
    }
    display_ = XOpenDisplay(name);
    if (display_ == nullptr) {
        return;
    }
    currentDesktopAtom_ = XInternAtom(display_, "_NET_CURRENT_DESKTOP", False);
    XSelectInput(display_, DefaultRootWindow(display_), PropertyChangeMask);
    XFlush(display_);
    fd_ = ConnectionNumber(display_);
    loop_.watchDescriptor(fd_, [this] { processIncoming(); });
}

X11DesktopWatcher::~X11DesktopWatcher()
{
    if (fd_ >= 0) {
        loop_.unwatchDescriptor(fd_);
    }
    if (display_ != nullptr) {
        XCloseDisplay(display_);
    }
}

void X11DesktopWatcher::processIncoming()
{
    bool changed = false;
    while (XPending(display_) > 0) {
        XEvent event;
        XNextEvent(display_, &event);
        changed = changed ||
                  (event.type == PropertyNotify && event.xproperty.atom == currentDesktopAtom_);
    }
    // Several changes read at once are one move as far as the pane is concerned.
    if (changed && activeDesktopDidChange_) {
        activeDesktopDidChange_();
    }
}

} // namespace vexto
