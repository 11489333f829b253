#include "system/QLVXProcessSignals.hpp"

#include "ports/ProcessSignals.hpp"
#include "system/ProcessPlatform.hpp"

namespace vexto {

bool QLVXProcessSetStopped(std::int32_t pid, bool stopped)
{
    if (pid < 0) {
        return false;
    }
    if (QLVXProcessIsStopped(pid) == stopped) {
        return true;
    }
    ProcessSignals& signals = ProcessPlatform::signals();
    return stopped ? signals.stop(pid) : signals.resume(pid);
}

bool QLVXProcessIsStopped(std::int32_t pid)
{
    if (pid < 0) {
        return false;
    }
    return ProcessPlatform::signals().isStopped(pid).value_or(false);
}

} // namespace vexto
