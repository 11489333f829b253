#include "platform/linux/LinuxDesktop.hpp"

#include "foundation/Bundle.hpp"
#include "foundation/FileSystem.hpp"
#include "foundation/Log.hpp"

#include <algorithm>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <thread>

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

} // namespace

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
    collectWhenItEnds(pid);
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
