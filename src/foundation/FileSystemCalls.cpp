#include "foundation/FileSystemCalls.hpp"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <random>
#include <string>
#include <unistd.h>

namespace vexto {

namespace {

FileSystemCalls* replacement = nullptr;

} // namespace

bool FileSystemCalls::fillTemplate(char* pathTemplate)
{
    static constexpr char characters[] =
        "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
    static std::mt19937 random{std::random_device{}()};
    const std::size_t length = std::strlen(pathTemplate);
    if (length < 6 || std::strcmp(pathTemplate + length - 6, "XXXXXX") != 0) {
        return false;
    }
    for (std::size_t i = length - 6; i < length; ++i) {
        pathTemplate[i] = characters[random() % (sizeof characters - 1)];
    }
    return true;
}

int FileSystemCalls::createTemporary(char* pathTemplate)
{
    // As mkstemp, but with the usual mode (0666 less the umask) from the start, so that the file
    // that replaces the target needs no change of mode afterwards.
    const std::string original = pathTemplate;
    for (int attempt = 0; attempt < 100; ++attempt) {
        std::strcpy(pathTemplate, original.c_str());
        if (!fillTemplate(pathTemplate)) {
            errno = EINVAL;
            return -1;
        }
        const int fd = ::open(pathTemplate, O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (fd >= 0 || errno != EEXIST) {
            return fd;
        }
    }
    return -1;
}

ssize_t FileSystemCalls::write(int fd, const void* bytes, std::size_t count)
{
    return ::write(fd, bytes, count);
}

int FileSystemCalls::syncFile(int fd)
{
    return ::fsync(fd);
}

int FileSystemCalls::syncFolder(int folderFd)
{
    return ::fsync(folderFd);
}

int FileSystemCalls::close(int fd)
{
    return ::close(fd);
}

int FileSystemCalls::rename(const char* from, const char* to)
{
    return ::rename(from, to);
}

int FileSystemCalls::link(const char* existing, const char* newPath)
{
    return ::link(existing, newPath);
}

FileSystemCalls& FileSystemCalls::current()
{
    static FileSystemCalls real;
    return replacement != nullptr ? *replacement : real;
}

void FileSystemCalls::replaceForTesting(FileSystemCalls* calls)
{
    replacement = calls;
}

} // namespace vexto
