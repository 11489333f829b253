#include "system/QLVXProcess.hpp"

#include "foundation/FormatString.hpp"
#include "foundation/Log.hpp"
#include "foundation/TextEncoding.hpp"
#include "ports/ProcessManager.hpp"
#include "system/KRVXAppleEventSender.hpp"
#include "system/ProcessPlatform.hpp"
#include "system/QLVXProcessSignals.hpp"
#include "system/QLVXProcessesEnumerator.hpp"

#include <array>

namespace vexto {

namespace {

constexpr std::size_t nameBufferSize = 256;
constexpr int showHidePolls = 10;
constexpr double showHidePollInterval = 0.1;

ProcessManager& processManager()
{
    return ProcessPlatform::manager();
}

QLVXProcess& reusableInstance()
{
    static QLVXProcess instance;
    return instance;
}

std::optional<ProcessSerialNumber> currentSerialNumber()
{
    ProcessSerialNumber psn;
    return processManager().getCurrentProcess(psn) == ProcessManager::noErr ? std::optional(psn)
                                                                            : std::nullopt;
}

std::optional<ProcessSerialNumber> frontSerialNumber()
{
    ProcessSerialNumber psn;
    return processManager().getFrontProcess(psn) == ProcessManager::noErr ? std::optional(psn)
                                                                          : std::nullopt;
}

} // namespace

// --- the reused instance ----------------------------------------------------------------

QLVXProcess& QLVXProcess::processWithProcessSerialNumber(const ProcessSerialNumber& psn)
{
    QLVXProcess& process = reusableInstance();
    process.setProcessSerialNumber(psn);
    return process;
}

bool QLVXProcess::isReusedInstance() const
{
    return this == &reusableInstance();
}

QLVXProcess* QLVXProcess::currentProcess()
{
    const auto psn = currentSerialNumber();
    return psn ? &processWithProcessSerialNumber(*psn) : nullptr;
}

QLVXProcess* QLVXProcess::frontProcess()
{
    const auto psn = frontSerialNumber();
    return psn ? &processWithProcessSerialNumber(*psn) : nullptr;
}

std::optional<QLVXProcess> QLVXProcess::initWithCurrentProcess()
{
    const auto psn = currentSerialNumber();
    return psn ? std::optional(QLVXProcess(*psn)) : std::nullopt;
}

std::optional<QLVXProcess> QLVXProcess::initWithFrontProcess()
{
    const auto psn = frontSerialNumber();
    return psn ? std::optional(QLVXProcess(*psn)) : std::nullopt;
}

void QLVXProcess::setProcessSerialNumber(const ProcessSerialNumber& psn)
{
    psn_ = psn;
    infoRec_.processInfoLength = 0;
    name_.clear(); // keeps its storage: the reused instance names processes without allocating
    hasName_ = false;
    firstLaunchDate_.reset();
}

// --- the whole list ---------------------------------------------------------------------

QLVXProcessesEnumerator QLVXProcess::processesEnumerator()
{
    return QLVXProcessesEnumerator::processesEnumerator();
}

std::vector<QLVXProcess> QLVXProcess::everyProcess()
{
    std::vector<QLVXProcess> processes;
    QLVXProcessesEnumerator enumerator;
    while (QLVXProcess* process = enumerator.nextObject()) {
        processes.push_back(*process);
    }
    return processes;
}

namespace {

// Hands `found` each process of the name in the walk's order, until it returns false. Where the
// platform keeps a register of the name, only its processes are looked at: the same answer as a
// walk, at a cost that does not grow with the machine's processes.
template <typename Found> void visitProcessesNamed(std::string_view name, Found found)
{
    if (const auto registered = ProcessPlatform::manager().registeredProcessesNamed(name)) {
        for (const ProcessSerialNumber& psn : *registered) {
            QLVXProcess& process = QLVXProcess::processWithProcessSerialNumber(psn);
            if (process.isNamed(name) && !found(process)) {
                return;
            }
        }
        return;
    }
    QLVXProcessesEnumerator enumerator;
    while (QLVXProcess* process = enumerator.nextObject()) {
        if (process->isNamed(name) && !found(*process)) {
            return;
        }
    }
}

} // namespace

std::vector<QLVXProcess> QLVXProcess::everyProcessNamed(std::string_view name)
{
    std::vector<QLVXProcess> processes;
    visitProcessesNamed(name, [&processes](QLVXProcess& process) {
        processes.push_back(process);
        return true;
    });
    return processes;
}

QLVXProcess* QLVXProcess::firstProcessNamed(std::string_view name)
{
    QLVXProcess* first = nullptr;
    visitProcessesNamed(name, [&first](QLVXProcess& process) {
        first = &process;
        return false;
    });
    return first;
}

// --- identity ---------------------------------------------------------------------------

bool QLVXProcess::isSameProcessAs(const ProcessSerialNumber& psn) const
{
    bool same = false;
    return processManager().sameProcess(psn_, psn, same) == ProcessManager::noErr && same;
}

bool QLVXProcess::isFrontProcess() const
{
    const auto front = frontSerialNumber();
    return front && isSameProcessAs(*front);
}

bool QLVXProcess::isCurrentProcess() const
{
    const auto current = currentSerialNumber();
    return current && isSameProcessAs(*current);
}

bool QLVXProcess::isValid()
{
    infoRec_.processInfoLength = 0;
    return fillProcessInfoRec() && infoRec_.processLaunchDate == firstLaunchDate_;
}

bool QLVXProcess::fillProcessInfoRec()
{
    if (infoRec_.processInfoLength == 0) {
        infoRec_.processInfoLength = sizeof(infoRec_);
        if (processManager().getProcessInformation(psn_, infoRec_) != ProcessManager::noErr) {
            infoRec_.processInfoLength = 0;
        } else if (!firstLaunchDate_) {
            firstLaunchDate_ = infoRec_.processLaunchDate;
        }
    }
    return infoRec_.processInfoLength != 0;
}

// --- what the list knows ----------------------------------------------------------------

const std::string* QLVXProcess::name()
{
    if (hasName_) {
        return &name_;
    }
    if (isNoProcess()) {
        name_ = "no process";
        hasName_ = true;
        return &name_;
    }
    std::array<unsigned char, nameBufferSize> buffer{};
    infoRec_.processInfoLength = 0;
    infoRec_.processName = buffer.data();
    const bool filled = fillProcessInfoRec();
    infoRec_.processName = nullptr;
    if (!filled) {
        return nullptr;
    }
    const std::string_view bytes(reinterpret_cast<const char*>(buffer.data() + 1), buffer[0]);
    if (!TextEncoding::isValidUtf8(bytes)) {
        return nullptr;
    }
    name_.assign(bytes);
    if (bytes.empty()) {
        Log::line("couldn't get name for process with PID: " + std::to_string(PID()));
    }
    hasName_ = true;
    return &name_;
}

bool QLVXProcess::isNamed(std::string_view name)
{
    const std::string* processName = this->name();
    return processName != nullptr && *processName == name;
}

std::uint32_t QLVXProcess::type()
{
    return fillProcessInfoRec() ? infoRec_.processType : 0;
}

std::uint32_t QLVXProcess::signature()
{
    return fillProcessInfoRec() ? infoRec_.processSignature : 0;
}

std::uint32_t QLVXProcess::mode()
{
    return fillProcessInfoRec() ? infoRec_.processMode : 0;
}

std::optional<QLVXProcess> QLVXProcess::launcher()
{
    if (!fillProcessInfoRec()) {
        return std::nullopt;
    }
    return QLVXProcess(infoRec_.processLauncher);
}

double QLVXProcess::launchTime()
{
    return fillProcessInfoRec() ? infoRec_.processLaunchDate / 60.0 : 0.0;
}

std::int32_t QLVXProcess::PID() const
{
    std::int32_t pid = -1;
    return processManager().getProcessPID(psn_, pid) == ProcessManager::noErr ? pid : -1;
}

// --- acting on it -----------------------------------------------------------------------

bool QLVXProcess::makeFrontProcessWithOptions(std::uint32_t options) const
{
    return processManager().setFrontProcessWithOptions(psn_, options) == ProcessManager::noErr;
}

bool QLVXProcess::wakeUpProcess() const
{
    return processManager().wakeUpProcess(psn_) == ProcessManager::noErr;
}

bool QLVXProcess::isHidden() const
{
    return !processManager().isProcessVisible(psn_);
}

std::string QLVXProcess::displayNameForLog()
{
    const std::string* processName = name();
    return processName != nullptr ? *processName : std::string("(null)");
}

void QLVXProcess::logCouldNotWakeUp(std::string_view purpose)
{
    Log::line(
        FormatString::fill("could not wake up process \"%@\" (PID %@) for %@",
                           {displayNameForLog(), std::to_string(PID()), std::string(purpose)}));
}

void QLVXProcess::setHidden(bool hidden)
{
    const bool wasStopped = isStopped();
    if (wasStopped && !setStopped(false)) {
        logCouldNotWakeUp("hiding/showing");
        return;
    }
    const ProcessManager::OSErr error = processManager().showHideProcess(psn_, !hidden);
    if (error != ProcessManager::noErr) {
        Log::line(FormatString::fill(
            "could not hide/show process \"%@\" (PID %@): error %@",
            {displayNameForLog(), std::to_string(PID()), std::to_string(error)}));
        return;
    }
    if (!wasStopped) {
        return;
    }
    // The desktop acts on the running process; give it a moment before stopping it again.
    for (int poll = 0; poll < showHidePolls && isHidden() != hidden; ++poll) {
        ProcessPlatform::sleep(showHidePollInterval);
    }
    setStopped(true);
}

bool QLVXProcess::quit()
{
    if (!isValid()) {
        return false;
    }
    if (isStopped() && !setStopped(false)) {
        logCouldNotWakeUp("quitting");
        return false;
    }
    return KRVXAppleEventSender::sendAppleCoreEvent(ProcessManager::kAEQuitApplication, psn_);
}

bool QLVXProcess::setStopped(bool stopped) const
{
    return QLVXProcessSetStopped(PID(), stopped);
}

bool QLVXProcess::isStopped() const
{
    return QLVXProcessIsStopped(PID());
}

} // namespace vexto
