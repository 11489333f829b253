#pragma once

#include "ports/ProcessInfoRec.hpp"
#include "ports/ProcessSerialNumber.hpp"

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace vexto {

// A four-letter code as the process manager's events use them: 'aevt' is 0x61657674.
constexpr std::uint32_t fourCharCode(std::string_view code)
{
    std::uint32_t value = 0;
    for (char letter : code.substr(0, 4)) {
        value = value << 8 | static_cast<unsigned char>(letter);
    }
    return value;
}

// The system's process list, in the process manager's terms: results are error codes (0 for
// success), and processes are named by serial numbers.
class ProcessManager {
public:
    using OSErr = int;
    static constexpr OSErr noErr = 0;
    static constexpr OSErr paramErr = -50;
    static constexpr OSErr procNotFound = -600;
    // The process has no windows the desktop can show, hide or bring to the front.
    static constexpr OSErr appIsDaemon = -606;
    static constexpr OSErr errAEEventNotHandled = -1708;

    static constexpr std::uint32_t kCoreEventClass = fourCharCode("aevt");
    static constexpr std::uint32_t kAEQuitApplication = fourCharCode("quit");

    virtual ~ProcessManager() = default;

    // The process after `psn`, written back into it; kNoProcess starts the walk, and
    // procNotFound (with kNoProcess) ends it.
    virtual OSErr getNextProcess(ProcessSerialNumber& psn) = 0;
    virtual OSErr getCurrentProcess(ProcessSerialNumber& psn) = 0;
    virtual OSErr getFrontProcess(ProcessSerialNumber& psn) = 0;
    virtual OSErr sameProcess(const ProcessSerialNumber& first, const ProcessSerialNumber& second,
                              bool& result) = 0;
    // Fails for a process that no longer runs.
    virtual OSErr getProcessInformation(const ProcessSerialNumber& psn, ProcessInfoRec& info) = 0;
    virtual OSErr getProcessPID(const ProcessSerialNumber& psn, std::int32_t& pid) = 0;

    // Options: 1 brings only the front window forward.
    virtual OSErr setFrontProcessWithOptions(const ProcessSerialNumber& psn,
                                             std::uint32_t options) = 0;
    virtual OSErr wakeUpProcess(const ProcessSerialNumber& psn) = 0;
    virtual bool isProcessVisible(const ProcessSerialNumber& psn) = 0;
    virtual OSErr showHideProcess(const ProcessSerialNumber& psn, bool visible) = 0;

    // Sends an event and waits for no reply, as the 'aevt' 'quit' request to quit.
    virtual OSErr sendAppleEvent(const ProcessSerialNumber& target, std::uint32_t eventClass,
                                 std::uint32_t eventID) = 0;
    // The processes that may bear this name, in the walk's order, where the platform keeps a
    // register of them: a walk would find no other. None when only a walk can tell.
    virtual std::optional<std::vector<ProcessSerialNumber>>
    registeredProcessesNamed(std::string_view name)
    {
        (void)name;
        return std::nullopt;
    }
};

} // namespace vexto
