// vextodaemon for Linux: the reference daemon the pane starts, restarts and talks to. It runs
// until the pane asks it to quit, or SIGTERM or SIGINT arrives, and logs what it does to the
// system log and to ~/Library/Logs/vextodaemon.log.
#include "ReferenceDaemon.hpp"
#include "foundation/FileSystem.hpp"
#include "foundation/HomeDirectory.hpp"
#include "foundation/Log.hpp"
#include "platform/linux/DBusDistributedNotificationCenter.hpp"
#include "platform/linux/PollRunLoop.hpp"

#include <csignal>
#include <cstdio>
#include <sys/signalfd.h>
#include <unistd.h>

using namespace vexto;

namespace {

constexpr long longestLog = 1024 * 1024;

// .../vextodaemon.app/Contents/Linux/vextodaemon -> .../vextodaemon.app
std::string bundlePath()
{
    char path[4096];
    const ssize_t length = ::readlink("/proc/self/exe", path, sizeof path - 1);
    std::string bundle = length > 0 ? std::string(path, static_cast<std::size_t>(length)) : "";
    for (int level = 0; level < 3; ++level) {
        bundle = FileSystem::folderOf(bundle);
    }
    return bundle;
}

// Lines go to the log file as well as the system log; the file starts again past 1 MiB.
void logToFile()
{
    const std::string folder = HomeDirectory::expandTilde("~/Library/Logs");
    FileSystem::createDirectories(folder);
    const std::string path = FileSystem::join(folder, "vextodaemon.log");
    if (FileSystem::fileSize(path) > longestLog) {
        FileSystem::moveFile(path, path + ".old");
    }
    Log::setSink([path](const std::string& line) {
        if (std::FILE* file = std::fopen(path.c_str(), "a")) {
            std::fprintf(file, "%s\n", line.c_str());
            std::fclose(file);
        }
        std::fprintf(stderr, "%s\n", line.c_str());
    });
}

} // namespace

int main()
{
    // First of all, so that a stop asked for while starting is read as one too.
    sigset_t stops;
    sigemptyset(&stops);
    sigaddset(&stops, SIGTERM);
    sigaddset(&stops, SIGINT);
    ::sigprocmask(SIG_BLOCK, &stops, nullptr);
    const int signals = ::signalfd(-1, &stops, SFD_CLOEXEC | SFD_NONBLOCK);
    logToFile();

    PollRunLoop loop;
    DBusDistributedNotificationCenter center(loop);
    ReferenceDaemon daemon(center, bundlePath());
    loop.watchDescriptor(signals, [&] {
        signalfd_siginfo info{};
        if (::read(signals, &info, sizeof info) == sizeof info) {
            daemon.quit(info.ssi_signo == SIGTERM ? "SIGTERM" : "SIGINT");
        }
    });
    daemon.start();
    while (daemon.isRunning()) {
        loop.runFor(1.0);
    }
    loop.unwatchDescriptor(signals);
    ::close(signals);
    return 0;
}
