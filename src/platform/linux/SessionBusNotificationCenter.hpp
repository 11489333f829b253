#pragma once

#include "ports/DistributedNotificationCenter.hpp"

#include <memory>

namespace vexto {

class DescriptorWatcher;

// Distributed notifications on the session bus, through the bus module and its D-Bus library,
// which are loaded only where a session bus can exist. Where none can (no bus address, no user
// runtime folder), or the module cannot be loaded, notifications stay within this process and
// one line says so.
class SessionBusNotificationCenter final : public DistributedNotificationCenter {
public:
    explicit SessionBusNotificationCenter(DescriptorWatcher& watcher);
    ~SessionBusNotificationCenter() override;
    SessionBusNotificationCenter(const SessionBusNotificationCenter&) = delete;
    SessionBusNotificationCenter& operator=(const SessionBusNotificationCenter&) = delete;

    void post(const std::string& name, const std::optional<std::string>& object) override
    {
        center_->post(name, object);
    }
    void addObserver(const void* observer, const std::string& name, Handler handler,
                     bool deliverImmediately) override
    {
        center_->addObserver(observer, name, std::move(handler), deliverImmediately);
    }
    void removeObserver(const void* observer) override { center_->removeObserver(observer); }

    // Whether a session bus can be reached at all, decided as the D-Bus library decides it.
    static bool mayExist();

private:
    std::unique_ptr<DistributedNotificationCenter> center_;
};

} // namespace vexto
