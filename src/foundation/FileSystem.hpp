#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace vexto {

// The few file operations the pane needs, reporting failure as false or none.
class FileSystem {
public:
    // The whole file, or none when it cannot be read or is larger than `maximumBytes`, with the
    // cause in `reason`: the system's text for the error, what the path is when it is not a
    // regular file ("is a FIFO", "is a directory", "is a device", ...), or `tooLarge`. Nothing but
    // a regular file is read, and opening never waits (a FIFO without a writer would hang it).
    static std::optional<std::vector<std::uint8_t>>
    readFile(const std::string& path, std::size_t maximumBytes, std::string* reason = nullptr);
    static constexpr const char* tooLarge = "too large";
    // Size in bytes; 0 when the file does not exist.
    static std::uint64_t fileSize(const std::string& path);

    // Writes a temporary file next to the target, flushes it to disk and renames it over the
    // target, then flushes the folder. Unless every step succeeds the target is left as it was
    // (when the folder cannot be flushed, the old file is put back) and nothing is left behind.
    // The temporary names are the target's name, a dot and six letters or digits.
    // A symbolic link is followed: the file it ends at is replaced, in that file's own folder, and
    // the link stays a link (people keep settings in their dotfiles). A looping chain of links
    // refuses the write.
    static bool writeFileAtomically(const std::string& path, std::span<const std::uint8_t> bytes);

    // Where a chain of symbolic links starting at `path` ends: `path` itself when it is no link.
    // The end need not exist. None when the chain loops or is longer than the kernel follows.
    static std::optional<std::string> endOfLinks(const std::string& path);
    static bool isSymbolicLink(const std::string& path);
    // Whether anything at all stands at the path: a file, a folder, or a link that leads nowhere.
    static bool isPresent(const std::string& path);

    // The names of a folder's entries, in the order the file system gives them; empty when the
    // folder cannot be read.
    static std::vector<std::string> namesInFolder(const std::string& folder);
    // Renames within one file system; false when that fails.
    static bool moveFile(const std::string& from, const std::string& to);
    static bool removeFile(const std::string& path);

    static bool exists(const std::string& path);
    static bool isDirectory(const std::string& path);
    // Creates the folder and any missing parents; true when it exists as a folder afterwards.
    static bool createDirectories(const std::string& path);

    // Joins two path components with exactly one slash.
    static std::string join(const std::string& folder, const std::string& name);
    // The folder part of a path ("." when there is none).
    static std::string folderOf(const std::string& path);
};

} // namespace vexto
