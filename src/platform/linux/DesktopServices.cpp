#include "platform/linux/DesktopServices.hpp"

#include "foundation/FileSystem.hpp"
#include "foundation/Log.hpp"

#include <dlfcn.h>

namespace vexto {

namespace {

constexpr const char* moduleName = "libvexto-desktop.so";
constexpr const char* createSymbol = "vexto_create_desktop_services";

// Beside the shared runtime, which any of its functions names.
std::string modulePath()
{
    Dl_info info{};
    if (::dladdr(reinterpret_cast<void*>(&FileSystem::exists), &info) == 0 ||
        info.dli_fname == nullptr) {
        return moduleName;
    }
    return FileSystem::join(FileSystem::folderOf(info.dli_fname), moduleName);
}

DesktopServices* load()
{
    const std::string path = modulePath();
    // Kept loaded for the life of the process: the services live in its code.
    void* module = ::dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    using Create = DesktopServices* (*)();
    const auto create =
        module != nullptr ? reinterpret_cast<Create>(::dlsym(module, createSymbol)) : nullptr;
    if (create == nullptr) {
        const char* reason = ::dlerror();
        Log::line("no desktop services: " + std::string(reason != nullptr ? reason : path));
        return nullptr;
    }
    return create();
}

} // namespace

DesktopServices* DesktopServices::shared()
{
    static DesktopServices* const services = load();
    return services;
}

} // namespace vexto
