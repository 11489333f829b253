#include "XvfbServer.hpp"

#include <X11/Xlib.h>

namespace vexto::test {

_XDisplay* XvfbServer::connect() const
{
    for (int attempt = 0; attempt < 50; ++attempt) {
        if (Display* display = XOpenDisplay(display_.c_str())) {
            return display;
        }
        ::usleep(100 * 1000);
    }
    return nullptr;
}

bool XvfbServer::waitUntilReady() const
{
    Display* display = connect();
    if (display == nullptr) {
        return false;
    }
    XCloseDisplay(display);
    return true;
}

} // namespace vexto::test
