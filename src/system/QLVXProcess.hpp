#pragma once

#include "ports/ProcessInfoRec.hpp"
#include "ports/ProcessSerialNumber.hpp"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vexto {

class QLVXProcessesEnumerator;

// One process of the system's process list, named by its serial number, with what the list
// knows of it cached until the object is pointed at another process.
//
// Lookups hand out one shared, reused instance so that walking the list allocates nothing: a
// pointer or reference returned by processWithProcessSerialNumber, currentProcess,
// frontProcess, firstProcessNamed or an enumerator is valid until the next such call. Whoever
// keeps a process copies it, and the copy is independent.
class QLVXProcess {
public:
    QLVXProcess() = default;
    explicit QLVXProcess(const ProcessSerialNumber& psn) { setProcessSerialNumber(psn); }
    static std::optional<QLVXProcess> initWithCurrentProcess();
    static std::optional<QLVXProcess> initWithFrontProcess();

    // --- the reused instance ---
    static QLVXProcess& processWithProcessSerialNumber(const ProcessSerialNumber& psn);
    static QLVXProcess* currentProcess();
    static QLVXProcess* frontProcess();
    bool isReusedInstance() const;

    // --- the whole list ---
    static QLVXProcessesEnumerator processesEnumerator();
    static std::vector<QLVXProcess> everyProcess();
    // Exact, case-sensitive names; an empty list when none matches.
    static std::vector<QLVXProcess> everyProcessNamed(std::string_view name);
    // The reused instance at the first match, or none.
    static QLVXProcess* firstProcessNamed(std::string_view name);

    // --- identity ---
    const ProcessSerialNumber& processSerialNumber() const { return psn_; }
    bool isFrontProcess() const;
    bool isCurrentProcess() const;
    bool isNoProcess() const { return isSameProcessAs(kNoProcess); }
    bool isSystemProcess() const { return isSameProcessAs(kSystemProcess); }
    // Re-reads the process list. A process whose PID now belongs to a later process is not
    // valid any more.
    bool isValid();
    bool operator==(const QLVXProcess& other) const { return isSameProcessAs(other.psn_); }

    // --- what the list knows ---
    // None when the process cannot be asked; "no process" for kNoProcess.
    const std::string* name();
    // Exact, case-sensitive; false when the name cannot be read.
    bool isNamed(std::string_view name);
    std::uint32_t type();
    std::uint32_t signature();
    std::uint32_t mode();
    std::optional<QLVXProcess> launcher();
    // Seconds since the system started; 0 when unknown.
    double launchTime();
    std::int32_t PID() const;

    // --- acting on it ---
    bool makeFrontProcessWithOptions(std::uint32_t options) const;
    bool makeFrontProcess() const { return makeFrontProcessWithOptions(0); }
    bool makeFrontProcessWithOneWindow() const { return makeFrontProcessWithOptions(1); }
    bool wakeUpProcess() const;
    bool isHidden() const;
    // A stopped process is continued for it and stopped again once the desktop has done it.
    void setHidden(bool hidden);
    // Asks the process to quit (continuing it first when it is stopped); false when it is gone
    // or cannot be asked.
    bool quit();
    bool setStopped(bool stopped) const;
    bool isStopped() const;

private:
    void setProcessSerialNumber(const ProcessSerialNumber& psn);
    bool fillProcessInfoRec();
    bool isSameProcessAs(const ProcessSerialNumber& psn) const;
    std::string displayNameForLog();
    void logCouldNotWakeUp(std::string_view purpose);

    ProcessSerialNumber psn_;
    ProcessInfoRec infoRec_;
    std::string name_;
    bool hasName_ = false;
    // The launch date first seen for this number: a PID taken over by a later process shows
    // another one.
    std::optional<std::uint32_t> firstLaunchDate_;
};

} // namespace vexto
