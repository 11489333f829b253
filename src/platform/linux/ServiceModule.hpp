#pragma once

#include <string>

namespace vexto {

// A module of services that lies beside the shared runtime and is loaded only when one of its
// services is first needed, so that a start that needs none of them never maps its libraries.
// Once loaded it stays for the life of the process: its services live in its code.
class ServiceModule {
public:
    // The function `symbol` of the module `fileName`, loading the module if needed; none when
    // either cannot be found, with the loader's reason in `reason`.
    static void* function(const char* fileName, const char* symbol, std::string& reason);
};

} // namespace vexto
