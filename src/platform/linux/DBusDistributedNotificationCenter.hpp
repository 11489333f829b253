#pragma once

#include "platform/LocalDistributedNotificationCenter.hpp"

#include <functional>
#include <string>

struct sd_bus;
struct sd_bus_slot;

namespace vexto {

class DescriptorWatcher;

// Distributed notifications on the user's D-Bus session bus, shared by every process of the
// user: each is one "Posted" signal carrying the name, whether there is an object, and the
// object. Posts reach this process's own observers back through the bus, as everyone else's do.
//
// Without a session bus, or once the connection fails, notifications stay within this process
// and one line says so. A lost connection is also told to whoever wants to try `reconnect`.
class DBusDistributedNotificationCenter final : public DistributedNotificationCenter {
public:
    static constexpr const char* objectPath = "/org/vexto/DistributedNotificationCenter";
    static constexpr const char* interfaceName = "org.vexto.DistributedNotificationCenter";
    static constexpr const char* memberName = "Posted";

    explicit DBusDistributedNotificationCenter(DescriptorWatcher& watcher);
    ~DBusDistributedNotificationCenter() override;
    DBusDistributedNotificationCenter(const DBusDistributedNotificationCenter&) = delete;
    DBusDistributedNotificationCenter& operator=(const DBusDistributedNotificationCenter&) = delete;

    bool isConnected() const { return bus_ != nullptr; }
    // Called, from the run loop, when a working connection breaks.
    void setConnectionLostHandler(std::function<void()> lost) { lost_ = std::move(lost); }
    // Connects to the session bus afresh (its address is read again); the observers stay. True
    // when connected.
    bool reconnect();

    void post(const std::string& name, const std::optional<std::string>& object) override;
    void addObserver(const void* observer, const std::string& name, Handler handler,
                     bool deliverImmediately) override;
    void removeObserver(const void* observer) override;

    // Reads what the bus has for this process and hands it to the observers.
    void processIncoming();
    // One notification read from the bus.
    void deliver(const std::string& name, const std::optional<std::string>& object)
    {
        local_.deliver(name, object);
    }

private:
    bool connect(const std::string& failure);
    void disconnect(const std::string& reason, int error);
    void connectionLost(int error);

    DescriptorWatcher& watcher_;
    LocalDistributedNotificationCenter local_;
    sd_bus* bus_ = nullptr;
    sd_bus_slot* match_ = nullptr;
    int fd_ = -1;
    std::function<void()> lost_;
};

} // namespace vexto
