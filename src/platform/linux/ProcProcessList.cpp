#include "platform/linux/ProcProcessList.hpp"

#include "platform/DescriptorWatcher.hpp"
#include "platform/linux/ProcessDescriptor.hpp"
#include "platform/linux/ProcessRegister.hpp"
#include "platform/linux/ProcessWindows.hpp"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace vexto {

namespace {

// Serial numbers whose high word is this name a PID that a special number would shadow.
constexpr std::uint32_t shadowedPIDHighWord = 1;
constexpr int longestShortName = 15; // the kernel cuts a process's short name to 15 bytes
constexpr std::size_t maximumNameLength = 255;
constexpr std::uint32_t applicationType = fourCharCode("APPL");
constexpr std::uint32_t unknownSignature = fourCharCode("????");

// A decimal number at the start of `text`; none when it does not start with a digit.
std::optional<unsigned long long> leadingNumber(std::string_view& text)
{
    if (text.empty() || text.front() < '0' || text.front() > '9') {
        return std::nullopt;
    }
    unsigned long long value = 0;
    while (!text.empty() && text.front() >= '0' && text.front() <= '9') {
        value = value * 10 + static_cast<unsigned>(text.front() - '0');
        text.remove_prefix(1);
    }
    return value;
}

// The PID a /proc entry names; none for the entries that are not processes.
std::optional<int> pidOfEntry(const char* name)
{
    std::string_view text(name);
    const auto value = leadingNumber(text);
    if (!value || !text.empty() || *value == 0 || *value > 0x7FFFFFFF) {
        return std::nullopt;
    }
    return static_cast<int>(*value);
}

void skipFields(std::string_view& text, int count)
{
    for (int field = 0; field < count; ++field) {
        const auto space = text.find(' ');
        text.remove_prefix(space == std::string_view::npos ? text.size() : space + 1);
    }
}

// One process's descriptor in the run loop: readable once the process has ended.
class ExitWatch {
public:
    ExitWatch(DescriptorWatcher& loop, int fd, std::function<void()> ended)
        : loop_(loop), fd_(fd), ended_(std::move(ended))
    {
        loop_.watchDescriptor(fd_, [this] {
            // The handler may let go of this watch: nothing of it is touched after the call.
            loop_.unwatchDescriptor(fd_);
            const auto ended = std::exchange(ended_, nullptr);
            if (ended) {
                ended();
            }
        });
    }
    ~ExitWatch()
    {
        loop_.unwatchDescriptor(fd_);
        ::close(fd_);
    }
    ExitWatch(const ExitWatch&) = delete;
    ExitWatch& operator=(const ExitWatch&) = delete;

private:
    DescriptorWatcher& loop_;
    int fd_;
    std::function<void()> ended_;
};

} // namespace

struct ProcProcessList::Stat {
    std::string_view shortName; // points into `line`
    char state = '?';
    int parentPID = 0;
    unsigned long long startTicks = 0;
    std::array<char, 1024> line; // filled by read(2) as far as it reads
};

ProcProcessList::ProcProcessList(ProcessWindows* windows, DescriptorWatcher* loop)
    : windows_(windows), loop_(loop), user_(::getuid())
{
    procFolder_ = ::open("/proc", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    const long ticks = ::sysconf(_SC_CLK_TCK);
    if (ticks > 0) {
        ticksPerSecond_ = ticks;
    }
}

ProcProcessList::~ProcProcessList()
{
    if (walk_ != nullptr) {
        ::closedir(walk_);
    }
    if (procFolder_ >= 0) {
        ::close(procFolder_);
    }
}

ProcessSerialNumber ProcProcessList::serialNumberForPID(int pid)
{
    if (pid <= 0) {
        return kNoProcess;
    }
    if (pid == static_cast<int>(kCurrentProcess.lowLongOfPSN)) {
        return {shadowedPIDHighWord, static_cast<std::uint32_t>(pid)};
    }
    return {0, static_cast<std::uint32_t>(pid)};
}

std::optional<int> ProcProcessList::pidForSerialNumber(const ProcessSerialNumber& psn)
{
    if (psn == kNoProcess) {
        return std::nullopt;
    }
    if (psn == kCurrentProcess) {
        return static_cast<int>(::getpid());
    }
    const bool shadowed = psn.highLongOfPSN == shadowedPIDHighWord &&
                          psn.lowLongOfPSN == kCurrentProcess.lowLongOfPSN;
    if ((psn.highLongOfPSN != 0 && !shadowed) || psn.lowLongOfPSN > 0x7FFFFFFF) {
        return std::nullopt;
    }
    return static_cast<int>(psn.lowLongOfPSN);
}

bool ProcProcessList::readStat(int pid, Stat& stat) const
{
    std::array<char, 32> path{};
    std::snprintf(path.data(), path.size(), "%d/stat", pid);
    const int fd = ::openat(procFolder_, path.data(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) {
        return false;
    }
    struct stat owner {};
    if (::fstat(fd, &owner) != 0 || owner.st_uid != user_) {
        ::close(fd);
        return false;
    }
    const ssize_t length = ::read(fd, stat.line.data(), stat.line.size() - 1);
    ::close(fd);
    if (length <= 0) {
        return false;
    }
    const std::string_view line(stat.line.data(), static_cast<std::size_t>(length));
    // The short name may itself hold ")" and spaces: it ends at the last ")".
    const auto open = line.find('(');
    const auto close = line.rfind(')');
    if (open == std::string_view::npos || close == std::string_view::npos || close < open ||
        close + 4 > line.size()) {
        return false;
    }
    stat.shortName = line.substr(open + 1, close - open - 1);
    std::string_view fields = line.substr(close + 2);
    stat.state = fields.front();
    skipFields(fields, 1);
    const auto parent = leadingNumber(fields);
    skipFields(fields, 18); // up to the start time, field 22 of the line
    const auto start = leadingNumber(fields);
    if (!parent || !start) {
        return false;
    }
    stat.parentPID = static_cast<int>(*parent);
    stat.startTicks = *start;
    return true;
}

std::optional<int> ProcProcessList::readLivingStat(const ProcessSerialNumber& psn, Stat& stat) const
{
    const auto pid = pidForSerialNumber(psn);
    // A zombie has finished: only its exit status is left for its parent to collect.
    if (!pid || !readStat(*pid, stat) || stat.state == 'Z' || stat.state == 'X') {
        return std::nullopt;
    }
    return pid;
}

std::optional<int> ProcProcessList::livingPID(const ProcessSerialNumber& psn) const
{
    Stat stat;
    return readLivingStat(psn, stat);
}

ProcessManager::OSErr ProcProcessList::getNextProcess(ProcessSerialNumber& psn)
{
    int after = 0;
    if (psn != kNoProcess) {
        const auto pid = pidForSerialNumber(psn);
        if (!pid) {
            psn = kNoProcess;
            return paramErr;
        }
        after = *pid;
    }
    if (walk_ == nullptr && procFolder_ >= 0) {
        walk_ = ::fdopendir(::openat(procFolder_, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    }
    if (walk_ == nullptr) {
        psn = kNoProcess;
        return procNotFound;
    }
    // /proc lists processes in rising PID order, so a walk that goes on from where it stopped
    // reads on; any other start reads again from the top.
    if (after == 0 || after != lastWalkedPID_) {
        ::rewinddir(walk_);
        kernelThreadsKnown_ = readKernelThreads();
    }
    while (const dirent* entry = ::readdir(walk_)) {
        const auto pid = pidOfEntry(entry->d_name);
        if (pid && *pid > after && isProgram(*pid) && isOwn(*pid)) {
            lastWalkedPID_ = *pid;
            psn = serialNumberForPID(*pid);
            return noErr;
        }
    }
    lastWalkedPID_ = -1;
    psn = kNoProcess;
    return procNotFound;
}

// Every kernel thread is a child of the kernel's thread spawner, pid 2 where it is the kernel's
// (it has no executable; in a container's own numbering pid 2 may be a program like any other).
bool ProcProcessList::readKernelThreads()
{
    kernelThreads_.clear();
    char target = 0; // the link's text is not needed, only whether there is one
    if (::readlinkat(procFolder_, "2/exe", &target, 1) >= 0 || errno != ENOENT) {
        return false;
    }
    const int fd = ::openat(procFolder_, "2/task/2/children", O_RDONLY | O_CLOEXEC);
    if (fd < 0) {
        return false;
    }
    constexpr std::size_t maximumBytes = 1 << 20;
    constexpr int beyondAnyPID = 1 << 23; // the kernel's own limit is 2^22
    std::array<char, 4096> buffer;
    std::size_t total = 0;
    int value = -1;
    ssize_t length = 0;
    while (total < maximumBytes && (length = ::read(fd, buffer.data(), buffer.size())) > 0) {
        total += static_cast<std::size_t>(length);
        for (const char c : std::string_view(buffer.data(), static_cast<std::size_t>(length))) {
            if (c >= '0' && c <= '9') {
                value = std::min((value < 0 ? 0 : value) * 10 + (c - '0'), beyondAnyPID);
            } else if (value >= 0) {
                kernelThreads_.push_back(std::exchange(value, -1));
            }
        }
    }
    ::close(fd);
    if (length < 0) {
        return false;
    }
    if (value >= 0) {
        kernelThreads_.push_back(value);
    }
    kernelThreads_.push_back(2);
    std::sort(kernelThreads_.begin(), kernelThreads_.end());
    return true;
}

bool ProcProcessList::isProgram(int pid) const
{
    if (kernelThreadsKnown_) {
        return !std::binary_search(kernelThreads_.begin(), kernelThreads_.end(), pid);
    }
    // Another user's program hides its executable (EACCES) but is still listed.
    std::array<char, 32> path{};
    std::snprintf(path.data(), path.size(), "%d/exe", pid);
    char target = 0;
    return ::readlinkat(procFolder_, path.data(), &target, 1) >= 0 || errno != ENOENT;
}

bool ProcProcessList::isOwn(int pid) const
{
    std::array<char, 16> name{};
    std::snprintf(name.data(), name.size(), "%d", pid);
    struct stat entry {};
    return ::fstatat(procFolder_, name.data(), &entry, 0) == 0 && entry.st_uid == user_;
}

ProcessManager::OSErr ProcProcessList::getCurrentProcess(ProcessSerialNumber& psn)
{
    psn = serialNumberForPID(static_cast<int>(::getpid()));
    return noErr;
}

ProcessManager::OSErr ProcProcessList::getFrontProcess(ProcessSerialNumber& psn)
{
    const int pid = windows_ != nullptr ? windows_->activeWindowPID() : -1;
    if (pid <= 0) {
        return procNotFound;
    }
    psn = serialNumberForPID(pid);
    return noErr;
}

ProcessManager::OSErr ProcProcessList::sameProcess(const ProcessSerialNumber& first,
                                                   const ProcessSerialNumber& second, bool& result)
{
    result = pidForSerialNumber(first) == pidForSerialNumber(second);
    return noErr;
}

ProcessManager::OSErr ProcProcessList::getProcessInformation(const ProcessSerialNumber& psn,
                                                             ProcessInfoRec& info)
{
    Stat stat;
    const auto pid = readLivingStat(psn, stat);
    if (!pid) {
        return procNotFound;
    }
    info.processNumber = serialNumberForPID(*pid);
    info.processType = applicationType;
    info.processSignature = unknownSignature;
    info.processMode = 0;
    info.processLauncher = serialNumberForPID(stat.parentPID);
    info.processLaunchDate = static_cast<std::uint32_t>(
        stat.startTicks * 60 / static_cast<unsigned long long>(ticksPerSecond_));
    if (info.processName == nullptr) {
        return noErr;
    }
    std::string_view name = stat.shortName;
    std::array<char, 4096> executable; // filled by readlink(2) as far as it reads
    if (name.size() == longestShortName) {
        // The short name may be cut: the executable's own name is whole.
        std::array<char, 32> path{};
        std::snprintf(path.data(), path.size(), "%d/exe", *pid);
        const ssize_t length =
            ::readlinkat(procFolder_, path.data(), executable.data(), executable.size());
        if (length > 0 && static_cast<std::size_t>(length) < executable.size()) {
            std::string_view target(executable.data(), static_cast<std::size_t>(length));
            constexpr std::string_view deleted = " (deleted)";
            if (target.ends_with(deleted)) {
                target.remove_suffix(deleted.size());
            }
            const auto slash = target.rfind('/');
            const std::string_view base =
                slash == std::string_view::npos ? target : target.substr(slash + 1);
            if (base.starts_with(name)) {
                name = base;
            }
        }
    }
    name = name.substr(0, maximumNameLength);
    info.processName[0] = static_cast<unsigned char>(name.size());
    std::memcpy(info.processName + 1, name.data(), name.size());
    return noErr;
}

ProcessManager::OSErr ProcProcessList::getProcessPID(const ProcessSerialNumber& psn,
                                                     std::int32_t& pid)
{
    const auto living = livingPID(psn);
    if (!living) {
        return procNotFound;
    }
    pid = *living;
    return noErr;
}

ProcessManager::OSErr ProcProcessList::setFrontProcessWithOptions(const ProcessSerialNumber& psn,
                                                                  std::uint32_t options)
{
    const auto pid = livingPID(psn);
    if (!pid) {
        return procNotFound;
    }
    return windows_ != nullptr && windows_->activate(*pid, (options & 1) != 0) ? noErr
                                                                               : appIsDaemon;
}

ProcessManager::OSErr ProcProcessList::wakeUpProcess(const ProcessSerialNumber& psn)
{
    // No process here sleeps in an event wait that would need waking: a living one is awake.
    return livingPID(psn) ? noErr : procNotFound;
}

bool ProcProcessList::isProcessVisible(const ProcessSerialNumber& psn)
{
    const auto pid = livingPID(psn);
    return pid && windows_ != nullptr && windows_->isVisible(*pid);
}

ProcessManager::OSErr ProcProcessList::showHideProcess(const ProcessSerialNumber& psn, bool visible)
{
    const auto pid = livingPID(psn);
    if (!pid) {
        return procNotFound;
    }
    return windows_ != nullptr && windows_->setVisible(*pid, visible) ? noErr : appIsDaemon;
}

ProcessManager::OSErr ProcProcessList::sendAppleEvent(const ProcessSerialNumber& target,
                                                      std::uint32_t eventClass,
                                                      std::uint32_t eventID)
{
    // Only the quit request has a meaning here, and never for the system process: for it, it
    // would mean shutting the machine down.
    if (eventClass != kCoreEventClass || eventID != kAEQuitApplication ||
        target == kSystemProcess) {
        return errAEEventNotHandled;
    }
    const auto pid = livingPID(target);
    if (!pid) {
        return procNotFound;
    }
    return ::kill(*pid, SIGTERM) == 0 ? noErr : procNotFound;
}

// A signal takes effect when the process is next scheduled, a moment after kill returns. The
// process model reads the state right afterwards (to stop a process again only if it runs), so
// the state is waited for, briefly: 50 ms at most.
bool ProcProcessList::signalAndWait(std::int32_t pid, int signal, bool stopped)
{
    if (pid <= 0 || !isOwn(pid) || ::kill(pid, signal) != 0) {
        return false;
    }
    constexpr int polls = 50;
    const timespec pause{0, 1000 * 1000};
    for (int poll = 0; poll < polls && isStopped(pid) == !stopped; ++poll) {
        ::nanosleep(&pause, nullptr);
    }
    return true;
}

bool ProcProcessList::stop(std::int32_t pid)
{
    return signalAndWait(pid, SIGSTOP, true);
}

bool ProcProcessList::resume(std::int32_t pid)
{
    return signalAndWait(pid, SIGCONT, false);
}

std::optional<std::vector<ProcessSerialNumber>>
ProcProcessList::registeredProcessesNamed(std::string_view name)
{
    if (std::find(registeredNames_.begin(), registeredNames_.end(), name) ==
        registeredNames_.end()) {
        return std::nullopt;
    }
    const auto pids = ProcessRegister::processesNamed(name);
    if (!pids) {
        return std::nullopt;
    }
    // Whose each is, and its name, the process model asks as for any process.
    std::vector<ProcessSerialNumber> processes;
    for (const int pid : *pids) {
        processes.push_back(serialNumberForPID(pid));
    }
    return processes;
}

std::shared_ptr<void> ProcProcessList::watchForExit(std::int32_t pid, std::function<void()> ended)
{
    if (loop_ == nullptr || pid <= 0 || !isOwn(pid)) {
        return nullptr;
    }
    const int fd = openProcessDescriptor(pid);
    if (fd < 0) {
        return nullptr;
    }
    // A zombie's descriptor is readable at once: it has ended, though nobody collected it yet.
    return std::make_shared<ExitWatch>(*loop_, fd, std::move(ended));
}

std::optional<bool> ProcProcessList::isStopped(std::int32_t pid)
{
    Stat stat;
    if (pid <= 0 || !readStat(pid, stat)) {
        return std::nullopt;
    }
    // 't' is a stop for a tracer, which only the tracer can end.
    return stat.state == 'T';
}

} // namespace vexto
