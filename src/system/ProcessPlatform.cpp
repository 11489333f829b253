#include "system/ProcessPlatform.hpp"

#include "ports/ProcessManager.hpp"
#include "ports/ProcessSignals.hpp"
#include "ports/RunLoop.hpp"

#include <vector>

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
    std::shared_ptr<void> watchForExit(std::int32_t, std::function<void()>) override
    {
        return nullptr;
    }
};

struct Installation {
    int token;
    ProcessPlatform::Ports ports;
};

std::vector<Installation>& installations()
{
    static std::vector<Installation> list;
    return list;
}

ProcessPlatform::Ports installed()
{
    return installations().empty() ? ProcessPlatform::Ports{} : installations().back().ports;
}

NoProcesses& noProcesses()
{
    static NoProcesses none;
    return none;
}

} // namespace

int ProcessPlatform::install(ProcessManager* manager, ProcessSignals* signals, RunLoop* runLoop)
{
    static int lastToken = 0;
    installations().push_back(Installation{++lastToken, Ports{manager, signals, runLoop}});
    return lastToken;
}

void ProcessPlatform::uninstall(int token)
{
    std::erase_if(installations(), [token](const Installation& installation) {
        return installation.token == token;
    });
}

void ProcessPlatform::uninstall()
{
    installations().clear();
}

ProcessManager& ProcessPlatform::manager()
{
    ProcessManager* manager = installed().manager;
    return manager != nullptr ? *manager : noProcesses();
}

ProcessSignals& ProcessPlatform::signals()
{
    ProcessSignals* signals = installed().signals;
    return signals != nullptr ? *signals : noProcesses();
}

void ProcessPlatform::sleep(double seconds)
{
    if (RunLoop* runLoop = installed().runLoop) {
        runLoop->sleep(seconds);
    }
}

} // namespace vexto
