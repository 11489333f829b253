#pragma once

#include "platform/LocalWorkspaceNotificationCenter.hpp"
#include "ports/HelpViewer.hpp"
#include "ports/Workspace.hpp"

#include <string>
#include <vector>

namespace vexto {

// The desktop on Linux: addresses, help pages and plain files open with xdg-open; a bundle opens
// by running the executable its information names, in a session of its own. Children are
// collected when they end, so none is left a zombie.
class LinuxDesktop final : public LocalWorkspaceNotificationCenter,
                           public Workspace,
                           public HelpViewer {
public:
    bool openURL(const std::string& url) override;
    bool openFile(const std::string& path, const std::optional<std::string>& application,
                  bool deactivate) override;
    // The executable a bundle runs: Contents/Linux/<CFBundleExecutable>; none without one.
    static std::optional<std::string> bundleExecutable(const std::string& bundlePath);

    // Help books are found through the bundles registered here, by their information's
    // "CFBundleHelpBookName" and "CFBundleHelpBookFolder".
    int registerHelpBook(const std::string& location) override;
    void gotoPage(const std::string& bookName, const std::string& page) override;

private:
    std::vector<std::string> helpBundles_;
};

} // namespace vexto
