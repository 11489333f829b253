#pragma once

#include <functional>
#include <string>

struct _XDisplay;

namespace vexto {

class DescriptorWatcher;

// Tells when the user moves to another virtual desktop: the window manager's
// _NET_CURRENT_DESKTOP property on the root window changes. Without a display nothing is told.
class X11DesktopWatcher {
public:
    // The display named, or $DISPLAY when empty.
    X11DesktopWatcher(DescriptorWatcher& loop, std::function<void()> activeDesktopDidChange,
                      const std::string& displayName = {});
    ~X11DesktopWatcher();
    X11DesktopWatcher(const X11DesktopWatcher&) = delete;
    X11DesktopWatcher& operator=(const X11DesktopWatcher&) = delete;

    bool isWatching() const { return display_ != nullptr; }
    void processIncoming();

private:
    DescriptorWatcher& loop_;
    std::function<void()> activeDesktopDidChange_;
    _XDisplay* display_ = nullptr;
    unsigned long currentDesktopAtom_ = 0;
    int fd_ = -1;
};

} // namespace vexto
