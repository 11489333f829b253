#pragma once

#include "foundation/Rect.hpp"
#include "platform/linux/ProcessWindows.hpp"

#include <optional>
#include <string>
#include <vector>

struct _XDisplay;

namespace vexto {

// Processes' windows through the window manager's EWMH properties: the owner of the active
// window, hiding (iconifying) and showing or activating a process's windows. It acts only while
// a window manager says it manages the display (its check window is alive and names itself);
// otherwise every process reads as having no windows. X errors, such as a window that has
// just gone, are caught and read as failures.
class EwmhProcessWindows final : public ProcessWindows {
public:
    // The display named, or $DISPLAY when empty.
    explicit EwmhProcessWindows(const std::string& displayName = {});
    ~EwmhProcessWindows() override;
    EwmhProcessWindows(const EwmhProcessWindows&) = delete;
    EwmhProcessWindows& operator=(const EwmhProcessWindows&) = delete;

    bool hasWindowManager();
    // The name the running window manager gives itself ("Openbox", "i3", "Xfwm4"); empty
    // without one or where it gives none.
    std::string windowManagerName();

    int activeWindowPID() override;
    bool hasWindows(int pid) override;
    bool isVisible(int pid) override;
    bool setVisible(int pid, bool visible) override;
    bool activate(int pid, bool frontWindowOnly) override;

    // Where the active window is on the screen, in X's coordinates (y downward from the top of
    // the screen); none without a window manager or an active window.
    std::optional<Rect> activeWindowFrame();
    // Whether a compositing manager blends translucent windows with what lies behind them.
    bool hasCompositingManager();

private:
    // The managed windows of the process, bottom to top.
    std::vector<unsigned long> windowsOf(int pid);
    bool isHidden(unsigned long window);
    void requestActivation(unsigned long window);

    _XDisplay* display_ = nullptr;
};

} // namespace vexto
