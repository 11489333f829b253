#include "platform/linux/DBusDistributedNotificationCenter.hpp"

#include "foundation/Log.hpp"
#include "foundation/TextEncoding.hpp"
#include "platform/DescriptorWatcher.hpp"

#include <cstring>
#include <systemd/sd-bus.h>

namespace vexto {

namespace {

int receive(sd_bus_message* message, void* center, sd_bus_error*)
{
    const char* name = nullptr;
    int hasObject = 0;
    const char* object = nullptr;
    if (sd_bus_message_read(message, "sbs", &name, &hasObject, &object) < 0) {
        return 0; // not one of ours after all
    }
    static_cast<DBusDistributedNotificationCenter*>(center)->deliver(
        name, hasObject != 0 ? std::optional<std::string>(object) : std::nullopt);
    return 0;
}

} // namespace

DBusDistributedNotificationCenter::DBusDistributedNotificationCenter(DescriptorWatcher& watcher)
    : watcher_(watcher)
{
    connect("no session bus");
}

bool DBusDistributedNotificationCenter::reconnect()
{
    return bus_ != nullptr || connect("could not reach the session bus again");
}

bool DBusDistributedNotificationCenter::connect(const std::string& failure)
{
    int result = sd_bus_open_user(&bus_);
    if (result < 0) {
        bus_ = nullptr;
        disconnect(failure, result);
        return false;
    }
    // Waits for the bus to take the match, so that nothing posted from now on is missed.
    result = sd_bus_match_signal(bus_, &match_, nullptr, objectPath, interfaceName, memberName,
                                 &receive, this);
    if (result < 0) {
        disconnect("the session bus refused to deliver notifications", result);
        return false;
    }
    fd_ = sd_bus_get_fd(bus_);
    watcher_.watchDescriptor(fd_, [this] { processIncoming(); });
    return true;
}

DBusDistributedNotificationCenter::~DBusDistributedNotificationCenter()
{
    if (fd_ >= 0) {
        watcher_.unwatchDescriptor(fd_);
    }
    sd_bus_slot_unref(match_);
    sd_bus_flush_close_unref(bus_);
}

void DBusDistributedNotificationCenter::disconnect(const std::string& reason, int error)
{
    Log::line(reason + " (" + std::strerror(-error) + "): notifications stay within this process");
    if (fd_ >= 0) {
        watcher_.unwatchDescriptor(fd_);
        fd_ = -1;
    }
    match_ = sd_bus_slot_unref(match_);
    bus_ = sd_bus_flush_close_unref(bus_);
}

void DBusDistributedNotificationCenter::connectionLost(int error)
{
    disconnect("lost the session bus", error);
    if (lost_) {
        lost_();
    }
}

void DBusDistributedNotificationCenter::post(const std::string& name,
                                             const std::optional<std::string>& object)
{
    if (bus_ == nullptr) {
        local_.post(name, object);
        return;
    }
    // The bus takes UTF-8 only; anything else could not be read by anyone.
    if (!TextEncoding::isValidUtf8(name) || (object && !TextEncoding::isValidUtf8(*object))) {
        Log::line("not posted: the notification is not UTF-8 text");
        return;
    }
    int result =
        sd_bus_emit_signal(bus_, objectPath, interfaceName, memberName, "sbs", name.c_str(),
                           object.has_value() ? 1 : 0, object ? object->c_str() : "");
    if (result >= 0) {
        result = sd_bus_flush(bus_);
    }
    if (result < 0) {
        connectionLost(result);
        local_.post(name, object);
    }
}

void DBusDistributedNotificationCenter::addObserver(const void* observer, const std::string& name,
                                                    Handler handler, bool deliverImmediately)
{
    // Delivery from the bus is always immediate.
    local_.addObserver(observer, name, std::move(handler), deliverImmediately);
}

void DBusDistributedNotificationCenter::removeObserver(const void* observer)
{
    local_.removeObserver(observer);
}

void DBusDistributedNotificationCenter::processIncoming()
{
    while (bus_ != nullptr) {
        const int result = sd_bus_process(bus_, nullptr);
        if (result < 0) {
            connectionLost(result);
            return;
        }
        if (result == 0) {
            return;
        }
    }
}

} // namespace vexto
