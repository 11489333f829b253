#pragma once

namespace vexto {

// What the desktop can do with a process's windows: the owner of the active window, and
// showing, hiding and activating the windows of a process.
class ProcessWindows {
public:
    virtual ~ProcessWindows() = default;
    // The PID owning the active window; -1 when there is none or it cannot be told.
    virtual int activeWindowPID() = 0;
    // False when the process has no windows on this desktop.
    virtual bool hasWindows(int pid) = 0;
    virtual bool isVisible(int pid) = 0;
    // False, too, when the process has no windows.
    virtual bool setVisible(int pid, bool visible) = 0;
    virtual bool activate(int pid, bool frontWindowOnly) = 0;
};

} // namespace vexto
