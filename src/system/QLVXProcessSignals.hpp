#pragma once

#include <cstdint>

namespace vexto {

// Stops or continues a process; true when it is in the wished state or the signal was sent.
// False for a negative PID.
bool QLVXProcessSetStopped(std::int32_t pid, bool stopped);
// False for a negative PID or a process the kernel does not know.
bool QLVXProcessIsStopped(std::int32_t pid);

} // namespace vexto
