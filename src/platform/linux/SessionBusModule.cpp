// The bus module: distributed notifications on the session bus through libsystemd's sd-bus.
#include "platform/linux/DBusDistributedNotificationCenter.hpp"

extern "C" __attribute__((visibility("default"))) vexto::DistributedNotificationCenter*
vexto_create_notification_center(vexto::DescriptorWatcher& watcher)
{
    return new vexto::DBusDistributedNotificationCenter(watcher);
}
