#pragma once

#include <csignal>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace vexto::test {

// openbox managing a test's display while it lives.
class WindowManager {
public:
    explicit WindowManager(const std::string& display)
    {
        pid_ = ::fork();
        if (pid_ == 0) {
            ::setenv("DISPLAY", display.c_str(), 1);
            ::execlp("openbox", "openbox", "--sm-disable", static_cast<char*>(nullptr));
            ::_exit(127);
        }
    }
    ~WindowManager() { stop(); }
    WindowManager(const WindowManager&) = delete;
    WindowManager& operator=(const WindowManager&) = delete;

    void stop()
    {
        if (pid_ > 0) {
            ::kill(pid_, SIGTERM);
            ::waitpid(pid_, nullptr, 0);
            pid_ = -1;
        }
    }

private:
    pid_t pid_ = -1;
};

} // namespace vexto::test
