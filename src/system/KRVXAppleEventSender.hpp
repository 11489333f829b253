#pragma once

#include "ports/ProcessManager.hpp"
#include "ports/ProcessSerialNumber.hpp"

#include <cstdint>

namespace vexto {

// Sends an event to a process without waiting for a reply.
class KRVXAppleEventSender {
public:
    static bool sendAppleEvent(std::uint32_t eventID, std::uint32_t eventClass,
                               const ProcessSerialNumber& psn);
    static bool sendAppleCoreEvent(std::uint32_t eventID, const ProcessSerialNumber& psn)
    {
        return sendAppleEvent(eventID, ProcessManager::kCoreEventClass, psn);
    }
    static bool sendSystemAppleCoreEvent(std::uint32_t eventID)
    {
        return sendAppleCoreEvent(eventID, kSystemProcess);
    }
};

} // namespace vexto
