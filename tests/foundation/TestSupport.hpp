#pragma once

#include "foundation/FileSystemCalls.hpp"

#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace vexto::test {

// A fresh folder under the system's temporary folder, removed with everything in it.
class TemporaryFolder {
public:
    TemporaryFolder()
    {
        std::string pattern =
            (std::filesystem::temp_directory_path() / "vexto-test-XXXXXX").string();
        path_ = ::mkdtemp(pattern.data()) != nullptr ? pattern : std::string();
    }
    ~TemporaryFolder()
    {
        std::error_code ignored;
        std::filesystem::permissions(path_, std::filesystem::perms::owner_all,
                                     std::filesystem::perm_options::add, ignored);
        std::filesystem::remove_all(path_, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::string& path() const { return path_; }
    std::string file(std::string_view name) const { return path_ + "/" + std::string(name); }

private:
    std::string path_;
};

inline std::vector<std::uint8_t> bytesOf(std::string_view text)
{
    return std::vector<std::uint8_t>(text.begin(), text.end());
}

inline std::vector<std::uint8_t> hexBytes(std::string_view hex)
{
    std::vector<std::uint8_t> bytes;
    int high = -1;
    for (char c : hex) {
        int digit = c >= '0' && c <= '9' ? c - '0' : c >= 'a' && c <= 'f' ? c - 'a' + 10 : -1;
        if (digit < 0) {
            continue;
        }
        if (high < 0) {
            high = digit;
        } else {
            bytes.push_back(static_cast<std::uint8_t>(high * 16 + digit));
            high = -1;
        }
    }
    return bytes;
}

inline std::string readText(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
}

inline void writeText(const std::string& path, std::string_view text)
{
    std::ofstream(path, std::ios::binary) << text;
}

inline std::string testData(std::string_view name)
{
    const char* folder = std::getenv("VEXTO_TEST_DATA");
    return std::string(folder != nullptr ? folder : "tests/data") + "/" + std::string(name);
}

enum class FailingStep { Create, Write, SyncFile, Rename, SyncFolder };

// While it lives, the chosen step of every atomic write fails with `error`, as a full, failing or
// locked disk would make it fail.
class FailingFileSystemCalls : public FileSystemCalls {
public:
    FailingFileSystemCalls(FailingStep step, int error) : step_(step), error_(error)
    {
        FileSystemCalls::replaceForTesting(this);
    }
    ~FailingFileSystemCalls() override { FileSystemCalls::replaceForTesting(nullptr); }
    FailingFileSystemCalls(const FailingFileSystemCalls&) = delete;
    FailingFileSystemCalls& operator=(const FailingFileSystemCalls&) = delete;

    int failures() const { return failures_; }

    int createTemporary(char* pathTemplate) override
    {
        return fails(FailingStep::Create) ? -1 : FileSystemCalls::createTemporary(pathTemplate);
    }
    ssize_t write(int fd, const void* bytes, std::size_t count) override
    {
        return fails(FailingStep::Write) ? -1 : FileSystemCalls::write(fd, bytes, count);
    }
    int syncFile(int fd) override
    {
        return fails(FailingStep::SyncFile) ? -1 : FileSystemCalls::syncFile(fd);
    }
    int rename(const char* from, const char* to) override
    {
        return fails(FailingStep::Rename) ? -1 : FileSystemCalls::rename(from, to);
    }
    int syncFolder(int folderFd) override
    {
        return fails(FailingStep::SyncFolder) ? -1 : FileSystemCalls::syncFolder(folderFd);
    }

private:
    // Only the first call of the step fails: what runs after a failure (putting a file back)
    // must itself be able to run.
    bool fails(FailingStep step)
    {
        if (step != step_ || failures_ > 0) {
            return false;
        }
        ++failures_;
        errno = error_;
        return true;
    }

    FailingStep step_;
    int error_;
    int failures_ = 0;
};

} // namespace vexto::test
