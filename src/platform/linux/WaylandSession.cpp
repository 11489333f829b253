#include "platform/linux/WaylandSession.hpp"

#include <cstdlib>

namespace vexto {

std::optional<std::string> WaylandSession::evidence()
{
    const char* type = std::getenv("XDG_SESSION_TYPE");
    const char* wayland = std::getenv("WAYLAND_DISPLAY");
    if (type != nullptr && std::string(type) == "wayland") {
        return "XDG_SESSION_TYPE is wayland";
    }
    if (wayland != nullptr && *wayland != '\0') {
        return "WAYLAND_DISPLAY is " + std::string(wayland);
    }
    return std::nullopt;
}

} // namespace vexto
