#pragma once

#include "platform/LocalWorkspaceNotificationCenter.hpp"
#include "ports/HelpViewer.hpp"
#include "ports/Workspace.hpp"

#include <string>
#include <vector>

namespace vexto {

// The desktop on Linux: addresses and help pages open with xdg-open. No desktop here reports
// changes of the active virtual desktop, so workspace observers are kept and never called.
class LinuxDesktop final : public LocalWorkspaceNotificationCenter,
                           public Workspace,
                           public HelpViewer {
public:
    bool openURL(const std::string& url) override;

    // Help books are found through the bundles registered here, by their information's
    // "CFBundleHelpBookName" and "CFBundleHelpBookFolder".
    int registerHelpBook(const std::string& location) override;
    void gotoPage(const std::string& bookName, const std::string& page) override;

private:
    std::vector<std::string> helpBundles_;
};

} // namespace vexto
