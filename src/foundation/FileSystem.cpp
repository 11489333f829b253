#include "foundation/FileSystem.hpp"

#include "foundation/FileSystemCalls.hpp"

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vexto {

namespace {

class FileDescriptor {
public:
    explicit FileDescriptor(int fd, FileSystemCalls* calls = nullptr) : fd_(fd), calls_(calls) {}
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
        const int result = calls_ != nullptr ? calls_->close(fd_) : ::close(fd_);
        fd_ = -1;
        return result == 0;
    }

private:
    int fd_;
    FileSystemCalls* calls_;
};

bool writeAll(FileSystemCalls& calls, int fd, std::span<const std::uint8_t> bytes)
{
    std::size_t written = 0;
    while (written < bytes.size()) {
        const ssize_t n = calls.write(fd, bytes.data() + written, bytes.size() - written);
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

bool syncFolder(FileSystemCalls& calls, const std::string& folder)
{
    FileDescriptor fd(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    return fd.valid() && calls.syncFolder(fd.get()) == 0;
}

// A new file beside `path` holding `bytes`, flushed to disk; none when any step fails, in which
// case nothing is left behind.
std::optional<std::string> flushedTemporaryFile(FileSystemCalls& calls, const std::string& path,
                                                std::span<const std::uint8_t> bytes)
{
    std::string temporary = path + ".XXXXXX";
    FileDescriptor fd(calls.createTemporary(temporary.data()), &calls);
    if (!fd.valid()) {
        return std::nullopt;
    }
    const bool written = writeAll(calls, fd.get(), bytes) && calls.syncFile(fd.get()) == 0;
    if (!fd.close() || !written) {
        ::unlink(temporary.c_str());
        return std::nullopt;
    }
    return temporary;
}

// A second name for the file now at `path`, so that its content can be put back if the folder
// cannot be flushed after the replacement. None when there is no file or no second name can be
// made (a file system without hard links): the write then goes ahead without that safety.
std::optional<std::string> previousVersionOf(FileSystemCalls& calls, const std::string& path)
{
    for (int attempt = 0; attempt < 8; ++attempt) {
        std::string name = path + ".XXXXXX";
        FileSystemCalls::fillTemplate(name.data());
        if (calls.link(path.c_str(), name.c_str()) == 0) {
            return name;
        }
        if (errno != EEXIST) {
            return std::nullopt;
        }
    }
    return std::nullopt;
}

const char* kindOfNonRegularFile(mode_t mode)
{
    if (S_ISDIR(mode)) {
        return "is a directory";
    }
    if (S_ISFIFO(mode)) {
        return "is a FIFO";
    }
    if (S_ISSOCK(mode)) {
        return "is a socket";
    }
    if (S_ISCHR(mode) || S_ISBLK(mode)) {
        return "is a device";
    }
    return "is not a regular file";
}

} // namespace

std::optional<std::vector<std::uint8_t>>
FileSystem::readFile(const std::string& path, std::size_t maximumBytes, std::string* reason)
{
    const auto refuse = [reason](std::string cause) {
        if (reason != nullptr) {
            *reason = std::move(cause);
        }
        return std::nullopt;
    };
    FileDescriptor fd(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    struct stat info {};
    if (!fd.valid() || ::fstat(fd.get(), &info) != 0) {
        return refuse(std::strerror(errno));
    }
    if (!S_ISREG(info.st_mode)) {
        return refuse(kindOfNonRegularFile(info.st_mode));
    }
    if (static_cast<std::uint64_t>(info.st_size) > maximumBytes) {
        return refuse(tooLarge);
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
            return refuse(std::strerror(errno));
        }
        if (n == 0) {
            break;
        }
        if (bytes.size() + static_cast<std::size_t>(n) > maximumBytes) {
            return refuse(tooLarge); // grew while being read
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

bool FileSystem::writeFileAtomically(const std::string& linkOrPath,
                                     std::span<const std::uint8_t> bytes)
{
    const auto end = endOfLinks(linkOrPath);
    if (!end) {
        errno = ELOOP;
        return false;
    }
    const std::string& path = *end;
    FileSystemCalls& calls = FileSystemCalls::current();
    const auto temporary = flushedTemporaryFile(calls, path, bytes);
    if (!temporary) {
        return false;
    }
    const bool replacing = exists(path);
    const auto previous = replacing ? previousVersionOf(calls, path) : std::nullopt;
    const auto forgetPrevious = [&] {
        if (previous) {
            ::unlink(previous->c_str());
        }
    };
    if (calls.rename(temporary->c_str(), path.c_str()) != 0) {
        ::unlink(temporary->c_str());
        forgetPrevious();
        return false;
    }
    if (!syncFolder(calls, folderOf(path))) {
        // The replacement may not survive a power cut: a failed save leaves the file as it was.
        if (!replacing) {
            ::unlink(path.c_str());
        } else if (!previous || calls.rename(previous->c_str(), path.c_str()) != 0) {
            forgetPrevious();
        }
        return false;
    }
    forgetPrevious();
    return true;
}

std::optional<std::string> FileSystem::endOfLinks(const std::string& path)
{
    constexpr int linksTheKernelFollows = 40;
    std::string current = path;
    for (int hop = 0; hop <= linksTheKernelFollows; ++hop) {
        char target[PATH_MAX];
        const ssize_t length = ::readlink(current.c_str(), target, sizeof target);
        if (length < 0) {
            // Not a link, not there, or not reachable: the write itself reports what is wrong.
            return current;
        }
        if (static_cast<std::size_t>(length) == sizeof target) {
            return std::nullopt;
        }
        const std::string next(target, static_cast<std::size_t>(length));
        current = next.starts_with('/') ? next : join(folderOf(current), next);
    }
    return std::nullopt;
}

bool FileSystem::isSymbolicLink(const std::string& path)
{
    struct stat info {};
    return ::lstat(path.c_str(), &info) == 0 && S_ISLNK(info.st_mode);
}

bool FileSystem::isPresent(const std::string& path)
{
    struct stat info {};
    return ::lstat(path.c_str(), &info) == 0;
}

std::vector<std::string> FileSystem::namesInFolder(const std::string& folder)
{
    std::vector<std::string> names;
    DIR* directory = ::opendir(folder.c_str());
    if (directory == nullptr) {
        return names;
    }
    while (const dirent* entry = ::readdir(directory)) {
        const std::string_view name = entry->d_name;
        if (name != "." && name != "..") {
            names.emplace_back(name);
        }
    }
    ::closedir(directory);
    return names;
}

bool FileSystem::moveFile(const std::string& from, const std::string& to)
{
    return FileSystemCalls::current().rename(from.c_str(), to.c_str()) == 0;
}

bool FileSystem::removeFile(const std::string& path)
{
    return ::unlink(path.c_str()) == 0;
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
