#include "platform/linux/NoDisplay.hpp"

#include <cstdlib>

namespace vexto {

bool NoDisplay::isNamed()
{
    const char* name = std::getenv("DISPLAY");
    return name != nullptr && *name != '\0';
}

} // namespace vexto
