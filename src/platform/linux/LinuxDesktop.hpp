#pragma once

#include "platform/LocalWorkspaceNotificationCenter.hpp"
#include "ports/HelpViewer.hpp"
#include "ports/Workspace.hpp"

#include <map>
#include <string>
#include <vector>

namespace vexto {

class DescriptorWatcher;

// The desktop on Linux: addresses, help pages and plain files open with xdg-open; a bundle opens
// by running the executable its information names, in a session of its own, and never with the
// desktop's opener (which would show the bundle's folder). Children are collected when they end,
// so none is left a zombie; with a run loop, their ends are collected there and reported with
// their cause.
class LinuxDesktop final : public LocalWorkspaceNotificationCenter,
                           public Workspace,
                           public HelpViewer {
public:
    explicit LinuxDesktop(DescriptorWatcher* loop = nullptr) : loop_(loop) {}
    ~LinuxDesktop() override;
    LinuxDesktop(const LinuxDesktop&) = delete;
    LinuxDesktop& operator=(const LinuxDesktop&) = delete;

    bool openURL(const std::string& url) override;
    bool openFile(const std::string& path, const std::optional<std::string>& application,
                  bool deactivate) override;
    // The executable a bundle runs: Contents/Linux/<CFBundleExecutable>; none without one.
    static std::optional<std::string> bundleExecutable(const std::string& bundlePath);
    void setApplicationEndedHandler(std::function<void(const ApplicationEnd&)> handler) override;

    // Help books are found through the bundles registered here, by their information's
    // "CFBundleHelpBookName" and "CFBundleHelpBookFolder".
    int registerHelpBook(const std::string& location) override;
    void gotoPage(const std::string& bookName, const std::string& page) override;

private:
    struct Child {
        int pid;
        std::string path;
    };
    void collectInRunLoop(int pid, const std::string& path);
    void childEnded(int pidfd);

    DescriptorWatcher* loop_;
    std::function<void(const ApplicationEnd&)> applicationEnded_;
    std::map<int, Child> children_; // by their pidfd
    std::vector<std::string> helpBundles_;
};

} // namespace vexto
