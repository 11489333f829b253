#pragma once

#include "ports/ProcessSerialNumber.hpp"

#include <cstdint>

namespace vexto {

// What the process list knows of one process. The caller sets `processInfoLength` to the
// record's size before asking; `processName`, when set, points at 256 bytes that receive the
// name as a length byte followed by its UTF-8 bytes.
struct ProcessInfoRec {
    std::uint32_t processInfoLength = 0;
    unsigned char* processName = nullptr;
    ProcessSerialNumber processNumber;
    std::uint32_t processType = 0;
    std::uint32_t processSignature = 0;
    std::uint32_t processMode = 0;
    ProcessSerialNumber processLauncher;
    // When the process started, in ticks of 1/60 s since the system started.
    std::uint32_t processLaunchDate = 0;
};

} // namespace vexto
