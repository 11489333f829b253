#pragma once

#include <cstddef>
#include <sys/types.h>

namespace vexto {

// The system calls behind the file operations that must not lose a file when they fail: an
// atomic write, keeping a damaged file aside. Tests put failing calls in place of these to walk
// every failure path with the errors a full, failing or locked disk gives.
class FileSystemCalls {
public:
    virtual ~FileSystemCalls() = default;

    // Replaces the template's trailing "XXXXXX" with six random letters or digits; false when
    // it does not end so.
    static bool fillTemplate(char* pathTemplate);

    virtual int createTemporary(char* pathTemplate); // mkstemp, with the usual file mode
    virtual ssize_t write(int fd, const void* bytes, std::size_t count);
    virtual int syncFile(int fd);
    virtual int syncFolder(int folderFd);
    virtual int close(int fd);
    virtual int rename(const char* from, const char* to);
    virtual int link(const char* existing, const char* newPath);

    // The calls in force; the real ones unless a test has put others in place.
    static FileSystemCalls& current();
    // For tests only: none restores the real calls.
    static void replaceForTesting(FileSystemCalls* calls);
};

} // namespace vexto
