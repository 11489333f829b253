#include "system/KRVXAppleEventSender.hpp"

#include "ports/ProcessManager.hpp"
#include "system/ProcessPlatform.hpp"

namespace vexto {

bool KRVXAppleEventSender::sendAppleEvent(std::uint32_t eventID, std::uint32_t eventClass,
                                          const ProcessSerialNumber& psn)
{
    return ProcessPlatform::manager().sendAppleEvent(psn, eventClass, eventID) ==
           ProcessManager::noErr;
}

} // namespace vexto
