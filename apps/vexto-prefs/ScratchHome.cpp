#include "ScratchHome.hpp"

#include "foundation/FileSystem.hpp"
#include "foundation/HomeDirectory.hpp"
#include "foundation/ProductInfo.hpp"

#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace vexto {

namespace {

std::string productFolder()
{
    return FileSystem::join(
        HomeDirectory::expandTilde(std::string(product::applicationSupportFolder)),
        std::string(product::productFolderName));
}

std::string makeTemporaryFolder()
{
    std::error_code error;
    const std::filesystem::path base = std::filesystem::temp_directory_path(error);
    std::string pattern = (error ? std::filesystem::path("/tmp") : base) / "vexto-home-XXXXXX";
    return ::mkdtemp(pattern.data()) != nullptr ? pattern : std::string();
}

} // namespace

ScratchHome::ScratchHome()
{
    const std::string source = productFolder();
    std::string scratch = makeTemporaryFolder();
    if (scratch.empty()) {
        return;
    }
    HomeDirectory::setOverride(scratch);
    const std::string copy = productFolder();
    std::error_code error;
    std::filesystem::create_directories(std::filesystem::path(copy).parent_path(), error);
    if (!error && std::filesystem::exists(source, error)) {
        std::filesystem::copy(source, copy, std::filesystem::copy_options::recursive, error);
    }
    if (error) {
        HomeDirectory::clearOverride();
        std::filesystem::remove_all(scratch, error);
        return;
    }
    path_ = std::move(scratch);
}

ScratchHome::~ScratchHome()
{
    if (ready()) {
        HomeDirectory::clearOverride();
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
}

} // namespace vexto
