#include "platform/linux/ServiceModule.hpp"

#include "foundation/FileSystem.hpp"

#include <dlfcn.h>

namespace vexto {

namespace {

// Beside the shared runtime, which any of its functions names.
std::string pathBesideRuntime(const char* fileName)
{
    Dl_info info{};
    if (::dladdr(reinterpret_cast<void*>(&FileSystem::exists), &info) == 0 ||
        info.dli_fname == nullptr) {
        return fileName;
    }
    return FileSystem::join(FileSystem::folderOf(info.dli_fname), fileName);
}

} // namespace

void* ServiceModule::function(const char* fileName, const char* symbol, std::string& reason)
{
    const std::string path = pathBesideRuntime(fileName);
    void* module = ::dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    void* found = module != nullptr ? ::dlsym(module, symbol) : nullptr;
    if (found == nullptr) {
        const char* error = ::dlerror();
        reason = error != nullptr ? error : path;
    }
    return found;
}

} // namespace vexto
