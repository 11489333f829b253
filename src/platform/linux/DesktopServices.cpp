#include "platform/linux/DesktopServices.hpp"

#include "foundation/Log.hpp"
#include "platform/linux/ServiceModule.hpp"

namespace vexto {

namespace {

DesktopServices* load()
{
    std::string reason;
    using Create = DesktopServices* (*)();
    const auto create = reinterpret_cast<Create>(
        ServiceModule::function("libvexto-desktop.so", "vexto_create_desktop_services", reason));
    if (create == nullptr) {
        Log::line("no desktop services: " + reason);
        return nullptr;
    }
    return create();
}

} // namespace

DesktopServices* DesktopServices::shared()
{
    static DesktopServices* const services = load();
    return services;
}

} // namespace vexto
