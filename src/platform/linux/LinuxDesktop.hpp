#pragma once

#include "platform/HelpViewer.hpp"
#include "platform/Workspace.hpp"
#include "platform/WorkspaceNotificationCenter.hpp"

#include <functional>
#include <string>
#include <vector>

namespace vexto {

// The desktop on Linux: addresses and help pages open with xdg-open. No desktop here reports
// changes of the active virtual desktop, so workspace observers are kept and never called.
class LinuxDesktop final : public WorkspaceNotificationCenter, public Workspace, public HelpViewer {
public:
    void addObserver(const void* observer, const std::string& name,
                     std::function<void()> handler) override;
    void removeObserver(const void* observer) override;

    bool openURL(const std::string& url) override;

    // Help books are found through the bundles registered here, by their information's
    // "CFBundleHelpBookName" and "CFBundleHelpBookFolder".
    int registerHelpBook(const std::string& location) override;
    void gotoPage(const std::string& bookName, const std::string& page) override;

private:
    struct Observer {
        const void* observer;
        std::string name;
        std::function<void()> handler;
    };
    std::vector<Observer> observers_;
    std::vector<std::string> helpBundles_;
};

} // namespace vexto
