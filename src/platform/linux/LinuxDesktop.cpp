#include "platform/linux/LinuxDesktop.hpp"

#include "foundation/Bundle.hpp"
#include "foundation/FileSystem.hpp"
#include "foundation/Log.hpp"
#include "platform/DescriptorWatcher.hpp"
#include "platform/linux/ProcessDescriptor.hpp"

#include <algorithm>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

extern char** environ;

namespace vexto {

namespace {

void collectWhenItEnds(pid_t pid)
{
    std::thread([pid] { ::waitpid(pid, nullptr, 0); }).detach();
}

// Starts a program as a background application: no shell, a session of its own (so that it
// outlives the pane and no terminal signal reaches it), default signal handling, and
// /dev/null for its standard streams. glibc reports a failed exec as the result, at once.
int spawnApplication(const std::string& executable, const std::vector<std::string>& arguments,
                     pid_t& pid)
{
    std::vector<char*> argv;
    argv.push_back(const_cast<char*>(executable.c_str()));
    for (const std::string& argument : arguments) {
        argv.push_back(const_cast<char*>(argument.c_str()));
    }
    argv.push_back(nullptr);

    posix_spawnattr_t attributes;
    posix_spawn_file_actions_t actions;
    ::posix_spawnattr_init(&attributes);
    ::posix_spawn_file_actions_init(&actions);
    sigset_t none;
    sigset_t all;
    sigemptyset(&none);
    sigfillset(&all);
    ::posix_spawnattr_setsigmask(&attributes, &none);
    ::posix_spawnattr_setsigdefault(&attributes, &all);
    ::posix_spawnattr_setflags(&attributes,
                               POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    ::posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
    ::posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
    ::posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
    const int result =
        ::posix_spawn(&pid, executable.c_str(), &actions, &attributes, argv.data(), environ);
    ::posix_spawn_file_actions_destroy(&actions);
    ::posix_spawnattr_destroy(&attributes);
    return result;
}

std::string causeOfEnd(int status)
{
    if (WIFSIGNALED(status)) {
        const char* name = ::sigabbrev_np(WTERMSIG(status));
        return name != nullptr ? std::string("SIG") + name
                               : "signal " + std::to_string(WTERMSIG(status));
    }
    return "exit status " + std::to_string(WEXITSTATUS(status));
}

} // namespace

LinuxDesktop::~LinuxDesktop()
{
    for (const auto& [pidfd, child] : children_) {
        loop_->unwatchDescriptor(pidfd);
        ::close(pidfd);
        collectWhenItEnds(child.pid);
    }
}

void LinuxDesktop::setApplicationEndedHandler(std::function<void(const ApplicationEnd&)> handler)
{
    applicationEnded_ = std::move(handler);
}

void LinuxDesktop::collectInRunLoop(int pid, const std::string& path)
{
    const int pidfd = loop_ != nullptr ? openProcessDescriptor(pid) : -1;
    if (pidfd < 0) {
        collectWhenItEnds(pid);
        return;
    }
    children_.emplace(pidfd, Child{pid, path});
    loop_->watchDescriptor(pidfd, [this, pidfd] { childEnded(pidfd); });
}

void LinuxDesktop::childEnded(int pidfd)
{
    const auto found = children_.find(pidfd);
    if (found == children_.end()) {
        return;
    }
    const Child child = found->second;
    int status = 0;
    // The descriptor is readable once the child has ended; until it is collected here, its
    // number cannot be given to another process.
    const pid_t collected = ::waitpid(child.pid, &status, WNOHANG);
    if (collected == 0) {
        return;
    }
    loop_->unwatchDescriptor(pidfd);
    ::close(pidfd);
    children_.erase(found);
    // Collected elsewhere (a host that ignores SIGCHLD): how it ended is not known.
    if (collected == child.pid && applicationEnded_) {
        applicationEnded_(ApplicationEnd{child.path, child.pid, causeOfEnd(status),
                                         WIFEXITED(status) && WEXITSTATUS(status) == 0});
    }
}

bool LinuxDesktop::openURL(const std::string& url)
{
    // No shell: the address is one argument, whatever it contains.
    char* argv[] = {const_cast<char*>("xdg-open"), const_cast<char*>(url.c_str()), nullptr};
    pid_t pid = 0;
    if (::posix_spawnp(&pid, "xdg-open", nullptr, nullptr, argv, environ) != 0) {
        Log::line("could not open <" + url + ">");
        return false;
    }
    collectWhenItEnds(pid);
    return true;
}

std::optional<std::string> LinuxDesktop::bundleExecutable(const std::string& bundlePath)
{
    const auto name = Bundle(bundlePath).infoString("CFBundleExecutable");
    if (!name || name->empty() || name->find('/') != std::string::npos) {
        return std::nullopt;
    }
    return FileSystem::join(FileSystem::join(bundlePath, "Contents/Linux"), *name);
}

bool LinuxDesktop::openFile(const std::string& path, const std::optional<std::string>& application,
                            bool)
{
    const auto executable = bundleExecutable(application.value_or(path));
    if (!executable) {
        if (application) {
            Log::line("could not open " + path + ": " + *application + " names no executable");
            return false;
        }
        if (FileSystem::isDirectory(path)) {
            Log::line("could not start " + path + ": its Info.plist names no executable");
            return false;
        }
        return openURL("file://" + path);
    }
    pid_t pid = 0;
    const std::vector<std::string> arguments =
        application ? std::vector<std::string>{path} : std::vector<std::string>{};
    const int error = spawnApplication(*executable, arguments, pid);
    if (error != 0) {
        Log::line("could not start " + *executable + ": " + std::strerror(error));
        return false;
    }
    collectInRunLoop(pid, application.value_or(path));
    return true;
}

int LinuxDesktop::registerHelpBook(const std::string& location)
{
    if (!FileSystem::exists(location)) {
        return -1;
    }
    if (std::find(helpBundles_.begin(), helpBundles_.end(), location) == helpBundles_.end()) {
        helpBundles_.push_back(location);
    }
    return 0;
}

void LinuxDesktop::gotoPage(const std::string& bookName, const std::string& page)
{
    for (const std::string& path : helpBundles_) {
        const Bundle bundle(path);
        if (bundle.infoString("CFBundleHelpBookName") != bookName) {
            continue;
        }
        const std::string folder = bundle.infoString("CFBundleHelpBookFolder").value_or(bookName);
        openURL("file://" +
                FileSystem::join(bundle.pathForUncachedPreferencePaneResourceFile(folder), page));
        return;
    }
    Log::line("no help book named " + bookName);
}

} // namespace vexto
