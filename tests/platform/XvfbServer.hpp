#pragma once

#include <csignal>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

struct _XDisplay;

namespace vexto::test {

// An X server of its own for the test, on a display number it picks itself.
class XvfbServer {
public:
    XvfbServer()
    {
        int fds[2];
        if (::pipe(fds) != 0) {
            return;
        }
        pid_ = ::fork();
        if (pid_ == 0) {
            ::close(fds[0]);
            const std::string fd = std::to_string(fds[1]);
            // Without -noreset the server resets when its last client leaves, and refuses
            // connections for that moment.
            ::execlp("Xvfb", "Xvfb", "-displayfd", fd.c_str(), "-screen", "0", "320x240x24",
                     "-nolisten", "tcp", "-noreset", static_cast<char*>(nullptr));
            ::_exit(127);
        }
        ::close(fds[1]);
        // The display number, a line written once the server is ready (maybe in pieces).
        std::string number;
        char c = 0;
        while (::read(fds[0], &c, 1) == 1 && c != '\n') {
            number += c;
        }
        ::close(fds[0]);
        if (!number.empty()) {
            display_ = ":" + number;
        }
    }
    ~XvfbServer()
    {
        if (pid_ > 0) {
            ::kill(pid_, SIGTERM);
            ::waitpid(pid_, nullptr, 0);
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
    pid_t pid_ = -1;
    std::string display_;
};

} // namespace vexto::test
