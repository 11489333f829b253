#pragma once

#include "ChildProcess.hpp"

#include <cstdlib>
#include <optional>
#include <string>

namespace vexto::test {

// A private D-Bus session bus for the test, made the process's session bus while it lives. Given a
// socket path, it listens there, so that a bus started again on that path is found by clients
// that knew the first.
class DBusSession {
public:
    explicit DBusSession(const std::string& socketPath = {}) : bus_(arguments(socketPath))
    {
        if (const char* value = std::getenv("DBUS_SESSION_BUS_ADDRESS")) {
            savedAddress_ = value;
        }
        // The address, a line written once the bus takes connections. On a fixed path the
        // address names no bus instance, as a desktop session's does, so that a bus started
        // again there is taken for the same.
        address_ = bus_.firstLine();
        if (!address_.empty() && !socketPath.empty()) {
            address_ = "unix:path=" + socketPath;
        }
        if (!address_.empty()) {
            ::setenv("DBUS_SESSION_BUS_ADDRESS", address_.c_str(), 1);
        }
    }
    ~DBusSession()
    {
        bus_.stop();
        if (savedAddress_) {
            ::setenv("DBUS_SESSION_BUS_ADDRESS", savedAddress_->c_str(), 1);
        } else {
            ::unsetenv("DBUS_SESSION_BUS_ADDRESS");
        }
    }
    DBusSession(const DBusSession&) = delete;
    DBusSession& operator=(const DBusSession&) = delete;

    bool isRunning() const { return !address_.empty() && bus_.isRunning(); }
    const std::string& address() const { return address_; }
    // Ends the bus under its clients' feet.
    void stop() { bus_.stop(); }

private:
    static std::vector<std::string> arguments(const std::string& socketPath)
    {
        std::vector<std::string> arguments{"dbus-daemon", "--session", "--nofork", "--nopidfile",
                                           "--print-address={fd}"};
        if (!socketPath.empty()) {
            arguments.push_back("--address=unix:path=" + socketPath);
        }
        return arguments;
    }

    ChildProcess bus_;
    std::string address_;
    std::optional<std::string> savedAddress_;
};

} // namespace vexto::test
