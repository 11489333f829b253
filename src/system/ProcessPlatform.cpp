#include "system/ProcessPlatform.hpp"

#include "ports/ProcessManager.hpp"
#include "ports/ProcessSignals.hpp"
#include "ports/RunLoop.hpp"

#include <utility>

namespace vexto {

namespace {

// Answers as a system with no processes at all.
class NoProcesses final : public ProcessManager, public ProcessSignals {
public:
    OSErr getNextProcess(ProcessSerialNumber& psn) override
    {
        psn = kNoProcess;
        return procNotFound;
    }
    OSErr getCurrentProcess(ProcessSerialNumber&) override { return procNotFound; }
    OSErr getFrontProcess(ProcessSerialNumber&) override { return procNotFound; }
    OSErr sameProcess(const ProcessSerialNumber& first, const ProcessSerialNumber& second,
                      bool& result) override
    {
        result = first == second;
        return noErr;
    }
    OSErr getProcessInformation(const ProcessSerialNumber&, ProcessInfoRec&) override
    {
        return procNotFound;
    }
    OSErr getProcessPID(const ProcessSerialNumber&, std::int32_t&) override { return procNotFound; }
    OSErr setFrontProcessWithOptions(const ProcessSerialNumber&, std::uint32_t) override
    {
        return procNotFound;
    }
    OSErr wakeUpProcess(const ProcessSerialNumber&) override { return procNotFound; }
    bool isProcessVisible(const ProcessSerialNumber&) override { return false; }
    OSErr showHideProcess(const ProcessSerialNumber&, bool) override { return procNotFound; }
    OSErr sendAppleEvent(const ProcessSerialNumber&, std::uint32_t, std::uint32_t) override
    {
        return procNotFound;
    }

    bool stop(std::int32_t) override { return false; }
    bool resume(std::int32_t) override { return false; }
    std::optional<bool> isStopped(std::int32_t) override { return std::nullopt; }
};

ProcessPlatform::Ports& installed()
{
    static ProcessPlatform::Ports ports;
    return ports;
}

NoProcesses& noProcesses()
{
    static NoProcesses none;
    return none;
}

} // namespace

ProcessPlatform::Ports ProcessPlatform::install(ProcessManager* manager, ProcessSignals* signals,
                                                RunLoop* runLoop)
{
    return std::exchange(installed(), Ports{manager, signals, runLoop});
}

ProcessManager& ProcessPlatform::manager()
{
    return installed().manager != nullptr ? *installed().manager : noProcesses();
}

ProcessSignals& ProcessPlatform::signals()
{
    return installed().signals != nullptr ? *installed().signals : noProcesses();
}

void ProcessPlatform::sleep(double seconds)
{
    if (installed().runLoop != nullptr) {
        installed().runLoop->sleep(seconds);
    }
}

} // namespace vexto
