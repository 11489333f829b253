#include "foundation/FileSystem.hpp"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vexto {

namespace {

class FileDescriptor {
public:
    explicit FileDescriptor(int fd) : fd_(fd) {}
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    ~FileDescriptor() { close(); }

    int get() const { return fd_; }
    bool valid() const { return fd_ >= 0; }
    bool close()
    {
        if (fd_ < 0) {
            return true;
        }
        const int result = ::close(fd_);
        fd_ = -1;
        return result == 0;
    }

private:
    int fd_;
};

bool writeAll(int fd, std::span<const std::uint8_t> bytes)
{
    std::size_t written = 0;
    while (written < bytes.size()) {
        const ssize_t n = ::write(fd, bytes.data() + written, bytes.size() - written);
        if (n < 0 && errno == EINTR) {
            continue;
        }
        if (n <= 0) {
            return false;
        }
        written += static_cast<std::size_t>(n);
    }
    return true;
}

void syncFolder(const std::string& folder)
{
    FileDescriptor fd(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (fd.valid()) {
        ::fsync(fd.get());
    }
}

} // namespace

std::optional<std::vector<std::uint8_t>> FileSystem::readFile(const std::string& path,
                                                              std::size_t maximumBytes)
{
    FileDescriptor fd(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    struct stat info {};
    if (!fd.valid() || ::fstat(fd.get(), &info) != 0 || !S_ISREG(info.st_mode) ||
        static_cast<std::uint64_t>(info.st_size) > maximumBytes) {
        return std::nullopt;
    }
    std::vector<std::uint8_t> bytes;
    bytes.reserve(static_cast<std::size_t>(info.st_size));
    std::uint8_t buffer[65536];
    for (;;) {
        const ssize_t n = ::read(fd.get(), buffer, sizeof buffer);
        if (n < 0 && errno == EINTR) {
            continue;
        }
        if (n < 0) {
            return std::nullopt;
        }
        if (n == 0) {
            break;
        }
        if (bytes.size() + static_cast<std::size_t>(n) > maximumBytes) {
            return std::nullopt; // grew while being read
        }
        bytes.insert(bytes.end(), buffer, buffer + n);
    }
    return bytes;
}

std::uint64_t FileSystem::fileSize(const std::string& path)
{
    struct stat info {};
    return ::stat(path.c_str(), &info) == 0 ? static_cast<std::uint64_t>(info.st_size) : 0;
}

bool FileSystem::writeFileAtomically(const std::string& path, std::span<const std::uint8_t> bytes)
{
    const std::string folder = folderOf(path);
    std::string temporary = path + ".XXXXXX";
    FileDescriptor fd(::mkstemp(temporary.data()));
    if (!fd.valid()) {
        return false;
    }
    // mkstemp creates the file readable by its owner only; give it the usual mode.
    const mode_t mask = ::umask(0);
    ::umask(mask);
    const bool written = ::fchmod(fd.get(), 0666 & ~mask) == 0 && writeAll(fd.get(), bytes) &&
                         ::fsync(fd.get()) == 0;
    if (!fd.close() || !written || ::rename(temporary.c_str(), path.c_str()) != 0) {
        ::unlink(temporary.c_str());
        return false;
    }
    syncFolder(folder);
    return true;
}

bool FileSystem::exists(const std::string& path)
{
    struct stat info {};
    return ::stat(path.c_str(), &info) == 0;
}

bool FileSystem::isDirectory(const std::string& path)
{
    struct stat info {};
    return ::stat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
}

bool FileSystem::createDirectories(const std::string& path)
{
    if (path.empty()) {
        return false;
    }
    if (isDirectory(path)) {
        return true;
    }
    const std::string parent = folderOf(path);
    if (parent != path && parent != "." && !createDirectories(parent)) {
        return false;
    }
    return ::mkdir(path.c_str(), 0777) == 0 || (errno == EEXIST && isDirectory(path));
}

std::string FileSystem::join(const std::string& folder, const std::string& name)
{
    if (folder.empty()) {
        return name;
    }
    std::string joined = folder;
    while (joined.size() > 1 && joined.back() == '/') {
        joined.pop_back();
    }
    std::size_t start = 0;
    while (start < name.size() && name[start] == '/') {
        ++start;
    }
    if (joined != "/") {
        joined += '/';
    }
    return joined + name.substr(start);
}

std::string FileSystem::folderOf(const std::string& path)
{
    std::string trimmed = path;
    while (trimmed.size() > 1 && trimmed.back() == '/') {
        trimmed.pop_back();
    }
    const auto slash = trimmed.rfind('/');
    if (slash == std::string::npos) {
        return ".";
    }
    return slash == 0 ? "/" : trimmed.substr(0, slash);
}

} // namespace vexto
