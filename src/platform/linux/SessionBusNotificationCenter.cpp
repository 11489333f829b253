#include "platform/linux/SessionBusNotificationCenter.hpp"

#include "foundation/FileSystem.hpp"
#include "foundation/Log.hpp"
#include "platform/LocalDistributedNotificationCenter.hpp"
#include "platform/linux/ServiceModule.hpp"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <unistd.h>

namespace vexto {

namespace {

std::unique_ptr<DistributedNotificationCenter> withinThisProcess(const std::string& reason)
{
    Log::line("no session bus (" + reason + "): notifications stay within this process");
    return std::make_unique<LocalDistributedNotificationCenter>();
}

} // namespace

bool SessionBusNotificationCenter::mayExist()
{
    // An address given, the user's runtime folder (where the bus's socket lies), or the socket
    // where newer libraries look when no runtime folder is named.
    return std::getenv("DBUS_SESSION_BUS_ADDRESS") != nullptr ||
           std::getenv("XDG_RUNTIME_DIR") != nullptr ||
           FileSystem::exists("/run/user/" + std::to_string(::getuid()) + "/bus");
}

SessionBusNotificationCenter::SessionBusNotificationCenter(DescriptorWatcher& watcher)
{
    if (!mayExist()) {
        center_ = withinThisProcess(std::strerror(ENOMEDIUM));
        return;
    }
    std::string reason;
    using Create = DistributedNotificationCenter* (*)(DescriptorWatcher&);
    const auto create = reinterpret_cast<Create>(
        ServiceModule::function("libvexto-bus.so", "vexto_create_notification_center", reason));
    if (create == nullptr) {
        center_ = withinThisProcess(reason);
        return;
    }
    center_.reset(create(watcher));
}

SessionBusNotificationCenter::~SessionBusNotificationCenter() = default;

} // namespace vexto
