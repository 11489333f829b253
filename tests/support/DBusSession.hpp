#pragma once

#include <csignal>
#include <cstdlib>
#include <optional>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace vexto::test {

// A private D-Bus session bus for the test, made the process's session bus while it lives.
class DBusSession {
public:
    DBusSession()
    {
        remember("DBUS_SESSION_BUS_ADDRESS", savedAddress_);
        int fds[2];
        if (::pipe(fds) != 0) {
            return;
        }
        pid_ = ::fork();
        if (pid_ == 0) {
            ::close(fds[0]);
            const std::string printAddress = "--print-address=" + std::to_string(fds[1]);
            ::execlp("dbus-daemon", "dbus-daemon", "--session", "--nofork", "--nopidfile",
                     printAddress.c_str(), static_cast<char*>(nullptr));
            ::_exit(127);
        }
        ::close(fds[1]);
        // The address, a line written once the bus takes connections.
        std::string address;
        char c = 0;
        while (::read(fds[0], &c, 1) == 1 && c != '\n') {
            address += c;
        }
        ::close(fds[0]);
        if (!address.empty()) {
            address_ = address;
            ::setenv("DBUS_SESSION_BUS_ADDRESS", address.c_str(), 1);
        }
    }
    ~DBusSession()
    {
        stop();
        if (savedAddress_) {
            ::setenv("DBUS_SESSION_BUS_ADDRESS", savedAddress_->c_str(), 1);
        } else {
            ::unsetenv("DBUS_SESSION_BUS_ADDRESS");
        }
    }
    DBusSession(const DBusSession&) = delete;
    DBusSession& operator=(const DBusSession&) = delete;

    bool isRunning() const { return !address_.empty() && pid_ > 0; }
    const std::string& address() const { return address_; }
    // Ends the bus under its clients' feet.
    void stop()
    {
        if (pid_ > 0) {
            ::kill(pid_, SIGTERM);
            ::waitpid(pid_, nullptr, 0);
            pid_ = -1;
        }
    }

private:
    static void remember(const char* name, std::optional<std::string>& saved)
    {
        if (const char* value = std::getenv(name)) {
            saved = value;
        }
    }

    pid_t pid_ = -1;
    std::string address_;
    std::optional<std::string> savedAddress_;
};

} // namespace vexto::test
