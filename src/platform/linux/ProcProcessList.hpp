#pragma once

#include "ports/ProcessManager.hpp"
#include "ports/ProcessSignals.hpp"

#include <dirent.h>
#include <optional>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <vector>

namespace vexto {

class DescriptorWatcher;
class ProcessWindows;

// The process list from /proc, and signals by kill(2).
//
// A process's serial number is (0, pid). The special numbers keep their meaning, so the system
// process (0, 1) is pid 1, and pid 2, which (0, 2) cannot name, is (1, 2). Walking the list
// reads one directory stream from start to end and allocates nothing per step. Like the process
// manager, the walk lists programs, not the kernel's own threads: those are most of a machine's
// entries, and asking anything of an entry is the walk's dearest step. They are known at the start
// of each walk from the children of the kernel's thread spawner; where that list cannot be read,
// each entry without an executable (kernel threads and zombies) is passed over. Only the
// current user's processes are listed, named or signalled (the owner of an entry is the owner of
// its process): another user's daemon is none of the pane's business. Quitting sends
// SIGTERM; showing, hiding and the front process go through the desktop's windows when a
// desktop is given, and fail as for a process without windows otherwise. An end is seen through
// the process's descriptor (pidfd) in the run loop, at the moment it happens.
class ProcProcessList final : public ProcessManager, public ProcessSignals {
public:
    explicit ProcProcessList(ProcessWindows* windows = nullptr, DescriptorWatcher* loop = nullptr);
    ~ProcProcessList() override;
    ProcProcessList(const ProcProcessList&) = delete;
    ProcProcessList& operator=(const ProcProcessList&) = delete;

    static ProcessSerialNumber serialNumberForPID(int pid);
    static std::optional<int> pidForSerialNumber(const ProcessSerialNumber& psn);

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

    // Processes of these names are found through the process register, not by a walk: each of
    // them enters itself there when it starts.
    void setRegisteredNames(std::vector<std::string> names) { registeredNames_ = std::move(names); }
    std::optional<std::vector<ProcessSerialNumber>>
    registeredProcessesNamed(std::string_view name) override;

    bool stop(std::int32_t pid) override;
    bool resume(std::int32_t pid) override;
    std::optional<bool> isStopped(std::int32_t pid) override;
    std::shared_ptr<void> watchForExit(std::int32_t pid, std::function<void()> ended) override;

private:
    struct Stat;
    bool readStat(int pid, Stat& stat) const;
    // The PID of a process that runs (not a zombie), with its stat read; none otherwise.
    std::optional<int> readLivingStat(const ProcessSerialNumber& psn, Stat& stat) const;
    std::optional<int> livingPID(const ProcessSerialNumber& psn) const;
    bool readKernelThreads();
    bool isProgram(int pid) const;
    bool isOwn(int pid) const;
    bool signalAndWait(std::int32_t pid, int signal, bool stopped);

    ProcessWindows* windows_;
    DescriptorWatcher* loop_;
    int procFolder_ = -1;
    DIR* walk_ = nullptr;
    int lastWalkedPID_ = -1;
    std::vector<int> kernelThreads_; // sorted; read at the start of each walk
    bool kernelThreadsKnown_ = false;
    long ticksPerSecond_ = 100;
    uid_t user_;
    std::vector<std::string> registeredNames_;
};

} // namespace vexto
