#pragma once

#include "ports/ProcessSerialNumber.hpp"

namespace vexto {

class QLVXProcess;

// Walks the process list from its first process. Each step hands out the reused instance.
class QLVXProcessesEnumerator {
public:
    static QLVXProcessesEnumerator processesEnumerator() { return QLVXProcessesEnumerator(); }

    // The next process, or none at the end of the list (or on an error).
    QLVXProcess* nextObject();

private:
    ProcessSerialNumber currentProcessSerialNumber_ = kNoProcess;
};

} // namespace vexto
