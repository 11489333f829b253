#include "system/DaemonControl.hpp"

#include "ports/DistributedNotificationCenter.hpp"
#include "system/DaemonNotifications.hpp"

namespace vexto {

void DaemonControl::updateDaemon()
{
    namespace names = daemonnotifications;
    center_.post(names::named(names::updateDaemon),
                 dummyDisplay_ ? std::optional<std::string>(names::dummyObject) : std::nullopt);
    dummyDisplay_ = false;
}

} // namespace vexto
