#include "platform/linux/DeferredImageDecoder.hpp"

#include "foundation/FileSystem.hpp"
#include "foundation/Log.hpp"

#include <dlfcn.h>

namespace vexto {

DeferredImageDecoder::DeferredImageDecoder() = default;

// The module stays loaded: the decoder it made comes from its code.
DeferredImageDecoder::~DeferredImageDecoder() = default;

std::string DeferredImageDecoder::modulePath()
{
    Dl_info info{};
    // Any function of the shared runtime names the file it was loaded from.
    if (::dladdr(reinterpret_cast<void*>(&FileSystem::exists), &info) == 0 ||
        info.dli_fname == nullptr) {
        return moduleName;
    }
    return FileSystem::join(FileSystem::folderOf(info.dli_fname), moduleName);
}

std::optional<Bitmap> DeferredImageDecoder::decode(const std::string& path, double scale) const
{
    if (!tried_) {
        tried_ = true;
        const std::string module = modulePath();
        void* handle = ::dlopen(module.c_str(), RTLD_NOW | RTLD_LOCAL);
        using Create = ImageDecoder* (*)();
        const auto create =
            handle != nullptr ? reinterpret_cast<Create>(::dlsym(handle, createSymbol)) : nullptr;
        if (create != nullptr) {
            decoder_.reset(create());
        } else {
            const char* reason = ::dlerror();
            Log::line("no images: " + std::string(reason != nullptr ? reason : module));
        }
    }
    return decoder_ ? decoder_->decode(path, scale) : std::nullopt;
}

} // namespace vexto
