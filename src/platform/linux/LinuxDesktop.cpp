#include "platform/linux/LinuxDesktop.hpp"

#include "foundation/Bundle.hpp"
#include "foundation/FileSystem.hpp"
#include "foundation/Log.hpp"

#include <algorithm>
#include <spawn.h>
#include <sys/wait.h>
#include <thread>

extern char** environ;

namespace vexto {

bool LinuxDesktop::openURL(const std::string& url)
{
    // No shell: the address is one argument, whatever it contains.
    char* argv[] = {const_cast<char*>("xdg-open"), const_cast<char*>(url.c_str()), nullptr};
    pid_t pid = 0;
    if (::posix_spawnp(&pid, "xdg-open", nullptr, nullptr, argv, environ) != 0) {
        Log::line("could not open <" + url + ">");
        return false;
    }
    std::thread([pid] { ::waitpid(pid, nullptr, 0); }).detach();
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
