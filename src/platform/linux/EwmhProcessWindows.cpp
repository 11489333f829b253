#include "platform/linux/EwmhProcessWindows.hpp"

#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <algorithm>
#include <optional>

namespace vexto {

namespace {

bool xErrorSeen = false;

int noteError(Display*, XErrorEvent*)
{
    xErrorSeen = true;
    return 0;
}

// While it lives, X errors are noted instead of ending the process (Xlib's default).
class CaughtErrors {
public:
    explicit CaughtErrors(Display* display) : display_(display)
    {
        XSync(display_, False);
        xErrorSeen = false;
        previous_ = XSetErrorHandler(noteError);
    }
    ~CaughtErrors()
    {
        XSync(display_, False);
        XSetErrorHandler(previous_);
    }
    CaughtErrors(const CaughtErrors&) = delete;
    CaughtErrors& operator=(const CaughtErrors&) = delete;

    // Waits for the server's answers so far, then tells whether any was an error.
    bool failed() const
    {
        XSync(display_, False);
        return xErrorSeen;
    }

private:
    Display* display_;
    XErrorHandler previous_;
};

// The values of a 32-bit property (windows, cardinals, atoms); none when absent or on an error.
std::optional<std::vector<unsigned long>> longs(Display* display, Window window, const char* name,
                                                Atom type)
{
    const CaughtErrors errors(display);
    Atom actualType = None;
    int format = 0;
    unsigned long count = 0;
    unsigned long after = 0;
    unsigned char* data = nullptr;
    const int status =
        XGetWindowProperty(display, window, XInternAtom(display, name, False), 0, 4096, False, type,
                           &actualType, &format, &count, &after, &data);
    if (status != Success || errors.failed() || data == nullptr || format != 32) {
        if (data != nullptr) {
            XFree(data);
        }
        return std::nullopt;
    }
    const auto* values = reinterpret_cast<const unsigned long*>(data);
    std::vector<unsigned long> result(values, values + count);
    XFree(data);
    return result;
}

std::optional<unsigned long> single(Display* display, Window window, const char* name, Atom type)
{
    const auto values = longs(display, window, name, type);
    if (!values || values->empty()) {
        return std::nullopt;
    }
    return values->front();
}

} // namespace

EwmhProcessWindows::EwmhProcessWindows(const std::string& displayName)
{
    display_ = XOpenDisplay(displayName.empty() ? nullptr : displayName.c_str());
}

EwmhProcessWindows::~EwmhProcessWindows()
{
    if (display_ != nullptr) {
        XCloseDisplay(display_);
    }
}

bool EwmhProcessWindows::hasWindowManager()
{
    if (display_ == nullptr) {
        return false;
    }
    // A window manager that has gone may leave its check window named on the root.
    const Window root = DefaultRootWindow(display_);
    const auto check = single(display_, root, "_NET_SUPPORTING_WM_CHECK", XA_WINDOW);
    return check && single(display_, *check, "_NET_SUPPORTING_WM_CHECK", XA_WINDOW) == check;
}

std::string EwmhProcessWindows::windowManagerName()
{
    if (!hasWindowManager()) {
        return {};
    }
    const auto check =
        single(display_, DefaultRootWindow(display_), "_NET_SUPPORTING_WM_CHECK", XA_WINDOW);
    const CaughtErrors errors(display_);
    const Atom utf8 = XInternAtom(display_, "UTF8_STRING", False);
    Atom type = None;
    int format = 0;
    unsigned long count = 0;
    unsigned long after = 0;
    unsigned char* data = nullptr;
    std::string name;
    if (check &&
        XGetWindowProperty(display_, *check, XInternAtom(display_, "_NET_WM_NAME", False), 0, 64,
                           False, utf8, &type, &format, &count, &after, &data) == Success &&
        !errors.failed() && data != nullptr && type == utf8 && format == 8) {
        name.assign(reinterpret_cast<const char*>(data), count);
    }
    if (data != nullptr) {
        XFree(data);
    }
    return name;
}

int EwmhProcessWindows::activeWindowPID()
{
    if (!hasWindowManager()) {
        return -1;
    }
    const auto active =
        single(display_, DefaultRootWindow(display_), "_NET_ACTIVE_WINDOW", XA_WINDOW);
    if (!active || *active == None) {
        return -1;
    }
    const auto pid = single(display_, *active, "_NET_WM_PID", XA_CARDINAL);
    return pid && *pid > 0 && *pid <= 0x7FFFFFFF ? static_cast<int>(*pid) : -1;
}

std::optional<Rect> EwmhProcessWindows::activeWindowFrame()
{
    if (!hasWindowManager()) {
        return std::nullopt;
    }
    const Window root = DefaultRootWindow(display_);
    const auto active = single(display_, root, "_NET_ACTIVE_WINDOW", XA_WINDOW);
    if (!active || *active == None) {
        return std::nullopt;
    }
    CaughtErrors errors(display_);
    XWindowAttributes attributes{};
    int x = 0;
    int y = 0;
    Window child = None;
    if (XGetWindowAttributes(display_, *active, &attributes) == 0 ||
        XTranslateCoordinates(display_, *active, root, 0, 0, &x, &y, &child) == 0 ||
        errors.failed()) {
        return std::nullopt;
    }
    return Rect(x, y, attributes.width, attributes.height);
}

bool EwmhProcessWindows::hasCompositingManager()
{
    if (display_ == nullptr) {
        return false;
    }
    const std::string selection = "_NET_WM_CM_S" + std::to_string(DefaultScreen(display_));
    return XGetSelectionOwner(display_, XInternAtom(display_, selection.c_str(), False)) != None;
}

std::vector<unsigned long> EwmhProcessWindows::windowsOf(int pid)
{
    std::vector<unsigned long> windows;
    if (pid <= 0 || !hasWindowManager()) {
        return windows;
    }
    const auto stacking =
        longs(display_, DefaultRootWindow(display_), "_NET_CLIENT_LIST_STACKING", XA_WINDOW);
    const auto clients =
        stacking ? stacking
                 : longs(display_, DefaultRootWindow(display_), "_NET_CLIENT_LIST", XA_WINDOW);
    for (unsigned long window : clients.value_or(std::vector<unsigned long>{})) {
        if (single(display_, window, "_NET_WM_PID", XA_CARDINAL) ==
            static_cast<unsigned long>(pid)) {
            windows.push_back(window);
        }
    }
    return windows;
}

bool EwmhProcessWindows::hasWindows(int pid)
{
    return !windowsOf(pid).empty();
}

bool EwmhProcessWindows::isHidden(unsigned long window)
{
    const Atom hidden = XInternAtom(display_, "_NET_WM_STATE_HIDDEN", False);
    const auto states = longs(display_, window, "_NET_WM_STATE", XA_ATOM);
    return states && std::find(states->begin(), states->end(), hidden) != states->end();
}

bool EwmhProcessWindows::isVisible(int pid)
{
    const auto windows = windowsOf(pid);
    return std::any_of(windows.begin(), windows.end(),
                       [this](unsigned long window) { return !isHidden(window); });
}

void EwmhProcessWindows::requestActivation(unsigned long window)
{
    XEvent event{};
    event.xclient.type = ClientMessage;
    event.xclient.window = window;
    event.xclient.message_type = XInternAtom(display_, "_NET_ACTIVE_WINDOW", False);
    event.xclient.format = 32;
    event.xclient.data.l[0] = 2; // from a pager: the user asked for it
    event.xclient.data.l[1] = CurrentTime;
    XSendEvent(display_, DefaultRootWindow(display_), False,
               SubstructureRedirectMask | SubstructureNotifyMask, &event);
}

bool EwmhProcessWindows::setVisible(int pid, bool visible)
{
    const auto windows = windowsOf(pid);
    if (windows.empty()) {
        return false;
    }
    const CaughtErrors errors(display_);
    for (unsigned long window : windows) {
        if (visible) {
            requestActivation(window);
        } else {
            XIconifyWindow(display_, window, DefaultScreen(display_));
        }
    }
    return !errors.failed();
}

bool EwmhProcessWindows::activate(int pid, bool frontWindowOnly)
{
    const auto windows = windowsOf(pid);
    if (windows.empty()) {
        return false;
    }
    const CaughtErrors errors(display_);
    if (frontWindowOnly) {
        requestActivation(windows.back());
    } else {
        // Bottom to top, so that the one in front stays in front.
        for (unsigned long window : windows) {
            requestActivation(window);
        }
    }
    return !errors.failed();
}

} // namespace vexto
