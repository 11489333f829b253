#pragma once

#include <string>

namespace vexto {

// How a program a workspace started came to an end.
struct ApplicationEnd {
    // As it was opened: the bundle's path.
    std::string path;
    int pid = 0;
    // "exit status 1", or the signal that ended it ("SIGSEGV").
    std::string cause;
    // It ended by itself with status 0: its own decision, which it explains itself.
    bool succeeded = false;
};

} // namespace vexto
