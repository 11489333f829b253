#pragma once

#include "ports/ProcessManager.hpp"
#include "ports/ProcessSignals.hpp"

#include <cstdint>
#include <string>
#include <vector>

namespace vexto {

class RunLoop;

// A process list the test writes: serial numbers (0, pid), in the order added. Quit requests
// are recorded; a process quits only when `quitsWhenAsked` says so. A process that goes tells
// its watchers through `runLoop` (at once when there is none), as the kernel's would.
class FakeProcessList final : public ProcessManager, public ProcessSignals {
public:
    struct Process {
        int pid = 0;
        std::string name;
        std::uint32_t launchDate = 0;
        int launcherPID = 0;
        bool stopped = false;
        bool visible = true;
        bool quitsWhenAsked = false;
    };

    Process& add(Process process);
    Process* find(int pid);
    void remove(int pid);
    // A new process that took over the PID of one that ended.
    void reusePID(int pid, std::string name, std::uint32_t launchDate);

    int currentPID = 1000;
    int frontPID = -1;
    std::vector<int> quitRequests;
    RunLoop* runLoop = nullptr;
    int getNextProcessCalls = 0;

    OSErr getNextProcess(ProcessSerialNumber& psn) override;
    OSErr getCurrentProcess(ProcessSerialNumber& psn) override;
    OSErr getFrontProcess(ProcessSerialNumber& psn) override;
    OSErr sameProcess(const ProcessSerialNumber& first, const ProcessSerialNumber& second,
                      bool& result) override;
    OSErr getProcessInformation(const ProcessSerialNumber& psn, ProcessInfoRec& info) override;
    OSErr getProcessPID(const ProcessSerialNumber& psn, std::int32_t& pid) override;
    OSErr setFrontProcessWithOptions(const ProcessSerialNumber& psn,
                                     std::uint32_t options) override;
    OSErr wakeUpProcess(const ProcessSerialNumber& psn) override;
    bool isProcessVisible(const ProcessSerialNumber& psn) override;
    OSErr showHideProcess(const ProcessSerialNumber& psn, bool visible) override;
    OSErr sendAppleEvent(const ProcessSerialNumber& target, std::uint32_t eventClass,
                         std::uint32_t eventID) override;

    bool stop(std::int32_t pid) override;
    bool resume(std::int32_t pid) override;
    std::optional<bool> isStopped(std::int32_t pid) override;
    std::shared_ptr<void> watchForExit(std::int32_t pid, std::function<void()> ended) override;
    std::size_t exitWatchCount() const;

private:
    Process* find(const ProcessSerialNumber& psn);

    void tellExitWatchers(int pid);

    std::vector<Process> processes_;
    std::vector<std::pair<int, std::weak_ptr<std::function<void()>>>> exitWatches_;
};

} // namespace vexto
