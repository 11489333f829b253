#include "platform/fake/FakeProcessList.hpp"

#include "ports/RunLoop.hpp"

#include <algorithm>
#include <cstring>

namespace vexto {

namespace {

ProcessSerialNumber serialNumber(int pid)
{
    return {0, static_cast<std::uint32_t>(pid)};
}

} // namespace

FakeProcessList::Process& FakeProcessList::add(Process process)
{
    processes_.push_back(std::move(process));
    return processes_.back();
}

FakeProcessList::Process* FakeProcessList::find(int pid)
{
    const auto found = std::find_if(processes_.begin(), processes_.end(),
                                    [pid](const Process& process) { return process.pid == pid; });
    return found != processes_.end() ? &*found : nullptr;
}

FakeProcessList::Process* FakeProcessList::find(const ProcessSerialNumber& psn)
{
    if (psn == kNoProcess) {
        return nullptr;
    }
    return find(psn == kCurrentProcess ? currentPID : static_cast<int>(psn.lowLongOfPSN));
}

void FakeProcessList::remove(int pid)
{
    std::erase_if(processes_, [pid](const Process& process) { return process.pid == pid; });
    tellExitWatchers(pid);
}

void FakeProcessList::tellExitWatchers(int pid)
{
    std::vector<std::weak_ptr<std::function<void()>>> due;
    std::erase_if(exitWatches_, [&](const auto& watch) {
        if (watch.first != pid) {
            return watch.second.expired();
        }
        due.push_back(watch.second);
        return true;
    });
    for (auto& watch : due) {
        const auto tell = [watch] {
            if (const auto ended = watch.lock()) {
                (*ended)();
            }
        };
        if (runLoop != nullptr) {
            runLoop->performAfterDelay(this, "processDidExit", {}, 0.0,
                                       RunLoopModes{RunLoopMode::Default}, tell);
        } else {
            tell();
        }
    }
}

std::shared_ptr<void> FakeProcessList::watchForExit(std::int32_t pid, std::function<void()> ended)
{
    if (find(pid) == nullptr) {
        return nullptr;
    }
    auto watch = std::make_shared<std::function<void()>>(std::move(ended));
    exitWatches_.emplace_back(pid, watch);
    return watch;
}

std::size_t FakeProcessList::exitWatchCount() const
{
    return static_cast<std::size_t>(
        std::count_if(exitWatches_.begin(), exitWatches_.end(),
                      [](const auto& watch) { return !watch.second.expired(); }));
}

void FakeProcessList::reusePID(int pid, std::string name, std::uint32_t launchDate)
{
    if (Process* process = find(pid)) {
        *process = Process{pid, std::move(name), launchDate};
    }
}

ProcessManager::OSErr FakeProcessList::getNextProcess(ProcessSerialNumber& psn)
{
    ++getNextProcessCalls;
    auto next = processes_.begin();
    if (psn != kNoProcess) {
        next = std::find_if(processes_.begin(), processes_.end(), [&](const Process& process) {
            return serialNumber(process.pid) == psn;
        });
        if (next != processes_.end()) {
            ++next;
        }
    }
    if (next == processes_.end()) {
        psn = kNoProcess;
        return procNotFound;
    }
    psn = serialNumber(next->pid);
    return noErr;
}

ProcessManager::OSErr FakeProcessList::getCurrentProcess(ProcessSerialNumber& psn)
{
    psn = serialNumber(currentPID);
    return noErr;
}

ProcessManager::OSErr FakeProcessList::getFrontProcess(ProcessSerialNumber& psn)
{
    if (frontPID < 0) {
        return procNotFound;
    }
    psn = serialNumber(frontPID);
    return noErr;
}

ProcessManager::OSErr FakeProcessList::sameProcess(const ProcessSerialNumber& first,
                                                   const ProcessSerialNumber& second, bool& result)
{
    const auto resolve = [this](const ProcessSerialNumber& psn) {
        return psn == kCurrentProcess ? serialNumber(currentPID) : psn;
    };
    result = resolve(first) == resolve(second);
    return noErr;
}

ProcessManager::OSErr FakeProcessList::getProcessInformation(const ProcessSerialNumber& psn,
                                                             ProcessInfoRec& info)
{
    const Process* process = find(psn);
    if (process == nullptr) {
        return procNotFound;
    }
    info.processNumber = serialNumber(process->pid);
    info.processLauncher =
        process->launcherPID > 0 ? serialNumber(process->launcherPID) : kNoProcess;
    info.processLaunchDate = process->launchDate;
    if (info.processName != nullptr) {
        const std::size_t length = std::min<std::size_t>(process->name.size(), 255);
        info.processName[0] = static_cast<unsigned char>(length);
        std::memcpy(info.processName + 1, process->name.data(), length);
    }
    return noErr;
}

ProcessManager::OSErr FakeProcessList::getProcessPID(const ProcessSerialNumber& psn,
                                                     std::int32_t& pid)
{
    const Process* process = find(psn);
    if (process == nullptr) {
        return procNotFound;
    }
    pid = process->pid;
    return noErr;
}

ProcessManager::OSErr FakeProcessList::setFrontProcessWithOptions(const ProcessSerialNumber& psn,
                                                                  std::uint32_t)
{
    const Process* process = find(psn);
    if (process == nullptr) {
        return procNotFound;
    }
    frontPID = process->pid;
    return noErr;
}

ProcessManager::OSErr FakeProcessList::wakeUpProcess(const ProcessSerialNumber& psn)
{
    return find(psn) != nullptr ? noErr : procNotFound;
}

bool FakeProcessList::isProcessVisible(const ProcessSerialNumber& psn)
{
    const Process* process = find(psn);
    return process != nullptr && process->visible;
}

ProcessManager::OSErr FakeProcessList::showHideProcess(const ProcessSerialNumber& psn, bool visible)
{
    Process* process = find(psn);
    if (process == nullptr) {
        return procNotFound;
    }
    // A stopped process cannot act on the request.
    if (!process->stopped) {
        process->visible = visible;
    }
    return noErr;
}

ProcessManager::OSErr FakeProcessList::sendAppleEvent(const ProcessSerialNumber& target,
                                                      std::uint32_t, std::uint32_t)
{
    const Process* process = find(target);
    if (process == nullptr) {
        return procNotFound;
    }
    const int pid = process->pid;
    quitRequests.push_back(pid);
    if (process->quitsWhenAsked && !process->stopped) {
        remove(pid);
    }
    return noErr;
}

bool FakeProcessList::stop(std::int32_t pid)
{
    Process* process = find(pid);
    return process != nullptr && (process->stopped = true);
}

bool FakeProcessList::resume(std::int32_t pid)
{
    Process* process = find(pid);
    if (process == nullptr) {
        return false;
    }
    process->stopped = false;
    return true;
}

std::optional<bool> FakeProcessList::isStopped(std::int32_t pid)
{
    const Process* process = find(pid);
    return process != nullptr ? std::optional<bool>(process->stopped) : std::nullopt;
}

} // namespace vexto
