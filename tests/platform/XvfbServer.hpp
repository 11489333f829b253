#pragma once

#include "../support/ChildProcess.hpp"

#include <string>

struct _XDisplay;

namespace vexto::test {

// An X server of its own for the test, on a display number it picks itself.
class XvfbServer {
public:
    // Without -noreset the server resets when its last client leaves, and refuses connections
    // for that moment. The display number is a line it writes once it is ready.
    XvfbServer()
        : server_({"Xvfb", "-displayfd", "{fd}", "-screen", "0", "320x240x24", "-nolisten", "tcp",
                   "-noreset"})
    {
        const std::string number = server_.firstLine();
        if (!number.empty()) {
            display_ = ":" + number;
        }
    }
    XvfbServer(const XvfbServer&) = delete;
    XvfbServer& operator=(const XvfbServer&) = delete;

    const std::string& display() const { return display_; }

    // A connection as a client of its own (an Xlib Display); the server may need a moment after
    // saying it is up. None when it never answers.
    _XDisplay* connect() const;
    // True once a client can connect.
    bool waitUntilReady() const;

private:
    ChildProcess server_;
    std::string display_;
};

} // namespace vexto::test
