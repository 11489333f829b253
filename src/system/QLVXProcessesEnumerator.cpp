#include "system/QLVXProcessesEnumerator.hpp"

#include "ports/ProcessManager.hpp"
#include "system/ProcessPlatform.hpp"
#include "system/QLVXProcess.hpp"

namespace vexto {

QLVXProcess* QLVXProcessesEnumerator::nextObject()
{
    if (ProcessPlatform::manager().getNextProcess(currentProcessSerialNumber_) !=
            ProcessManager::noErr ||
        currentProcessSerialNumber_ == kNoProcess) {
        return nullptr;
    }
    return &QLVXProcess::processWithProcessSerialNumber(currentProcessSerialNumber_);
}

} // namespace vexto
