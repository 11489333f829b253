#pragma once

#include "platform/LocalWorkspaceNotificationCenter.hpp"
#include "ports/HelpViewer.hpp"
#include "ports/Workspace.hpp"

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace vexto {

// The desktop's workspace, its notifications and its help viewer, recording what the pane asks.
class FakeDesktop final : public LocalWorkspaceNotificationCenter,
                          public Workspace,
                          public HelpViewer {
public:
    bool openURL(const std::string& url) override
    {
        openedURLs.push_back(url);
        return true;
    }

    bool openFile(const std::string& path, const std::optional<std::string>& application,
                  bool deactivate) override
    {
        openedFiles.push_back(path);
        (void)application;
        (void)deactivate;
        return openFileHandler ? openFileHandler(path) : false;
    }

    void setApplicationEndedHandler(std::function<void(const ApplicationEnd&)> handler) override
    {
        applicationEnded = std::move(handler);
    }
    // Plays the system's part when a program it started ends.
    void endApplication(const ApplicationEnd& end)
    {
        if (applicationEnded) {
            applicationEnded(end);
        }
    }

    int registerHelpBook(const std::string& location) override
    {
        registeredHelpBooks.push_back(location);
        return helpRegistrationResult;
    }
    void gotoPage(const std::string& bookName, const std::string& page) override
    {
        helpPagesShown.push_back(bookName + "/" + page);
    }

    std::vector<std::string> openedURLs;
    std::vector<std::string> openedFiles;
    // Plays the system's part in opening a file: false when it cannot be opened.
    std::function<bool(const std::string&)> openFileHandler;
    std::function<void(const ApplicationEnd&)> applicationEnded;
    std::vector<std::string> registeredHelpBooks;
    std::vector<std::string> helpPagesShown;
    int helpRegistrationResult = 0;
};

} // namespace vexto
