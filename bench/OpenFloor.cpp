// What any headless open of the pane must do on this machine, with none of the pane's own work:
// a C++ program with libplist reads the settings file and the pane's strings, and looks for the
// daemon WALKS times in the process list (twice by default: once for the update controls, once
// before the automatic start), reading the state of every program (the kernel's threads, the
// children of kthreadd, are passed over). With 0 walks it is the floor of an open that finds the
// daemon without walking. Whether a daemon runs does not change the work, nor the exit status.
// bench/headless-open.sh puts the pane beside it.
//
// Usage: vexto_open_floor SETTINGS STRINGS [WALKS]
#include <plist/plist.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <dirent.h>
#include <fcntl.h>
#include <string>
#include <unistd.h>
#include <utility>
#include <vector>

namespace {

std::vector<char> contents(const char* path)
{
    std::vector<char> bytes;
    if (std::FILE* file = std::fopen(path, "re")) {
        char buffer[65536];
        for (std::size_t n; (n = std::fread(buffer, 1, sizeof buffer, file)) > 0;) {
            bytes.insert(bytes.end(), buffer, buffer + n);
        }
        std::fclose(file);
    }
    return bytes;
}

std::vector<std::string> kernelThreads()
{
    std::vector<std::string> pids{"2"};
    const std::vector<char> children = contents("/proc/2/task/2/children");
    std::string pid;
    for (const char c : children) {
        if (c == ' ' && !pid.empty()) {
            pids.push_back(std::exchange(pid, std::string()));
        } else if (c != ' ' && c != '\n') {
            pid += c;
        }
    }
    return pids;
}

bool daemonRuns(int proc)
{
    const std::vector<std::string> skipped = kernelThreads();
    DIR* walk = ::fdopendir(::openat(proc, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    bool found = false;
    while (const dirent* entry = walk != nullptr ? ::readdir(walk) : nullptr) {
        if (entry->d_name[0] < '1' || entry->d_name[0] > '9') {
            continue;
        }
        const std::string pid = entry->d_name;
        if (std::find(skipped.begin(), skipped.end(), pid) != skipped.end()) {
            continue;
        }
        char stat[1024];
        const int fd = ::openat(proc, (pid + "/stat").c_str(), O_RDONLY | O_CLOEXEC);
        const ssize_t length = fd >= 0 ? ::read(fd, stat, sizeof stat - 1) : -1;
        if (fd >= 0) {
            ::close(fd);
        }
        found = found ||
                (length > 0 &&
                 std::string(stat, std::size_t(length)).find("(vextodaemon)") != std::string::npos);
    }
    if (walk != nullptr) {
        ::closedir(walk);
    }
    return found;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 3 || argc > 4) {
        std::fputs("usage: vexto_open_floor SETTINGS STRINGS [WALKS]\n", stderr);
        return 2;
    }
    const int walks = argc == 4 ? std::atoi(argv[3]) : 2;
    const std::vector<char> settings = contents(argv[1]);
    plist_t root = nullptr;
    plist_from_memory(settings.data(), static_cast<uint32_t>(settings.size()), &root);
    const bool parsed = root != nullptr;
    plist_free(root);
    const std::vector<char> strings = contents(argv[2]);
    const int proc = ::open("/proc", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    int found = 0;
    for (int walk = 0; walk < walks; ++walk) {
        found += daemonRuns(proc) ? 1 : 0;
    }
    ::close(proc);
    return parsed && !strings.empty() && found >= 0 ? 0 : 1;
}
