#pragma once

#include <csignal>
#include <cstdlib>
#include <string>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace vexto::test {

// A program a test starts and ends. An argument holding "{fd}" gets the number of a pipe's write
// end instead, for programs that say on a descriptor when they are ready (Xvfb -displayfd,
// dbus-daemon --print-address=).
class ChildProcess {
public:
    using Environment = std::vector<std::pair<std::string, std::string>>;

    explicit ChildProcess(std::vector<std::string> arguments, const Environment& environment = {})
    {
        int fds[2];
        if (::pipe(fds) != 0) {
            return;
        }
        pid_ = ::fork();
        if (pid_ == 0) {
            // A test that crashes ends its servers too: they would outlive it, holding the test
            // runner's output pipe open, and the run would wait for them for ever.
            ::prctl(PR_SET_PDEATHSIG, SIGKILL);
            ::close(fds[0]);
            std::vector<char*> argv;
            for (std::string& argument : arguments) {
                const auto at = argument.find("{fd}");
                if (at != std::string::npos) {
                    argument.replace(at, 4, std::to_string(fds[1]));
                }
                argv.push_back(argument.data());
            }
            argv.push_back(nullptr);
            for (const auto& [name, value] : environment) {
                ::setenv(name.c_str(), value.c_str(), 1);
            }
            ::execvp(argv[0], argv.data());
            ::_exit(127);
        }
        ::close(fds[1]);
        readyPipe_ = fds[0];
    }
    ~ChildProcess()
    {
        stop();
        if (readyPipe_ >= 0) {
            ::close(readyPipe_);
        }
    }
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    // The first line written on the "{fd}" descriptor (maybe in pieces); empty when the program
    // ended without one.
    std::string firstLine()
    {
        std::string line;
        char c = 0;
        while (readyPipe_ >= 0 && ::read(readyPipe_, &c, 1) == 1 && c != '\n') {
            line += c;
        }
        return line;
    }

    bool isRunning() const { return pid_ > 0; }

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
    int readyPipe_ = -1;
};

} // namespace vexto::test
