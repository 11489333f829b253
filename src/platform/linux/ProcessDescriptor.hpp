#pragma once

#include <sys/syscall.h>
#include <sys/types.h>
#include <unistd.h>

namespace vexto {

// A descriptor for the process (pidfd_open): readable once the process has ended. -1 when it
// cannot be had. glibc 2.36 declares pidfd_open without C linkage, so C++ cannot link to it: the
// call is made directly.
inline int openProcessDescriptor(pid_t pid)
{
    return static_cast<int>(::syscall(SYS_pidfd_open, pid, 0));
}

} // namespace vexto
