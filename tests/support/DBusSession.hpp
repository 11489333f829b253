#pragma once

#include "ChildProcess.hpp"

#include <cstdlib>
#include <optional>
#include <string>

namespace vexto::test {

// A private D-Bus session bus for the test, made the process's session bus while it lives.
class DBusSession {
public:
    DBusSession()
        : bus_({"dbus-daemon", "--session", "--nofork", "--nopidfile", "--print-address={fd}"})
    {
        if (const char* value = std::getenv("DBUS_SESSION_BUS_ADDRESS")) {
            savedAddress_ = value;
        }
        // The address, a line written once the bus takes connections.
        address_ = bus_.firstLine();
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
    ChildProcess bus_;
    std::string address_;
    std::optional<std::string> savedAddress_;
};

} // namespace vexto::test
