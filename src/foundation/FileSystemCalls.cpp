#include "foundation/FileSystemCalls.hpp"

#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

namespace vexto {

namespace {

FileSystemCalls* replacement = nullptr;

} // namespace

int FileSystemCalls::createTemporary(char* pathTemplate)
{
    return ::mkostemp(pathTemplate, O_CLOEXEC);
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
