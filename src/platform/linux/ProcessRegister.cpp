#include "platform/linux/ProcessRegister.hpp"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace vexto {

namespace {

constexpr std::size_t mostEntries = 1024; // a register is a handful of files; more is an attack

// A folder of this user's that only this user may enter: anything else may hold planted files.
bool isPrivateFolder(const std::string& path)
{
    struct stat info {};
    return ::lstat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode) &&
           info.st_uid == ::getuid() && (info.st_mode & 0077) == 0;
}

std::string parentFolder()
{
    const char* runtime = std::getenv("XDG_RUNTIME_DIR");
    if (runtime != nullptr && runtime[0] == '/' && isPrivateFolder(runtime)) {
        return std::string(runtime) + "/vexto";
    }
    return "/tmp/vexto-" + std::to_string(::getuid());
}

// "vextodaemon.1234" names an entry of "vextodaemon"; temporary names start with a dot.
bool isEntryOf(std::string_view file, std::string_view name)
{
    if (file.size() <= name.size() + 1 || !file.starts_with(name) || file[name.size()] != '.') {
        return false;
    }
    const std::string_view number = file.substr(name.size() + 1);
    return std::all_of(number.begin(), number.end(), [](char c) { return c >= '0' && c <= '9'; });
}

struct flock writeLock()
{
    struct flock lock {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    return lock;
}

// The PID of the process holding the entry's lock: 0 when it is held from outside this process's
// PID namespace, none when nobody holds it.
std::optional<int> holderOf(int folder, const char* file)
{
    const int fd = ::openat(folder, file, O_RDONLY | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK);
    if (fd < 0) {
        return 0; // gone meanwhile, or not ours to read: nobody to count, nothing to remove
    }
    struct flock lock = writeLock();
    const bool asked = ::fcntl(fd, F_GETLK, &lock) == 0;
    std::optional<int> holder;
    if (!asked) {
        holder = 0;
    } else if (lock.l_type != F_UNLCK) {
        holder = static_cast<int>(lock.l_pid);
    } else if (::fcntl(fd, F_SETLK, &(lock = writeLock())) == 0) {
        ::unlinkat(folder, file, 0); // its process has ended; holding the lock, no one else can
    }
    ::close(fd);
    return holder;
}

} // namespace

std::optional<std::string> ProcessRegister::folder(bool create)
{
    const std::string path = parentFolder();
    if (create && ::mkdir(path.c_str(), 0700) != 0 && errno != EEXIST) {
        return std::nullopt;
    }
    return isPrivateFolder(path) ? std::optional<std::string>(path) : std::nullopt;
}

int ProcessRegister::enter(std::string_view name)
{
    const auto home = folder(true);
    if (!home) {
        return -1;
    }
    const std::string entry = *home + "/" + std::string(name) + "." + std::to_string(::getpid());
    // Locked under a name no reader takes for an entry, then renamed: a reader never finds the
    // entry unlocked while its process lives.
    std::string temporary = *home + "/." + std::string(name) + ".XXXXXX";
    const int fd = ::mkostemp(temporary.data(), O_CLOEXEC);
    if (fd < 0) {
        return -1;
    }
    struct flock lock = writeLock();
    if (::fcntl(fd, F_SETLK, &lock) != 0 || ::rename(temporary.c_str(), entry.c_str()) != 0) {
        ::unlink(temporary.c_str());
        ::close(fd);
        return -1;
    }
    return fd;
}

void ProcessRegister::leave(std::string_view name, int fd)
{
    if (fd < 0) {
        return;
    }
    if (const auto home = folder(false)) {
        ::unlink((*home + "/" + std::string(name) + "." + std::to_string(::getpid())).c_str());
    }
    ::close(fd);
}

std::optional<std::vector<int>> ProcessRegister::processesNamed(std::string_view name)
{
    const auto home = folder(false);
    if (!home) {
        folder(true); // the walk the caller makes now is the last one needed
        return std::nullopt;
    }
    const int fd = ::open(home->c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    DIR* listing = fd >= 0 ? ::fdopendir(fd) : nullptr;
    if (listing == nullptr) {
        if (fd >= 0) {
            ::close(fd);
        }
        return std::nullopt;
    }
    std::vector<int> pids;
    std::size_t seen = 0;
    while (const dirent* entry = ::readdir(listing)) {
        if (++seen > mostEntries) {
            ::closedir(listing);
            return std::nullopt;
        }
        if (!isEntryOf(entry->d_name, name)) {
            continue;
        }
        const auto holder = holderOf(fd, entry->d_name);
        if (holder && *holder > 0) {
            pids.push_back(*holder);
        }
    }
    ::closedir(listing);
    std::sort(pids.begin(), pids.end());
    pids.erase(std::unique(pids.begin(), pids.end()), pids.end());
    return pids;
}

} // namespace vexto
