#pragma once

#include "platform/HelpViewer.hpp"
#include "platform/Workspace.hpp"
#include "platform/WorkspaceNotificationCenter.hpp"

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace vexto {

// The desktop's workspace, its notifications and its help viewer, recording what the pane asks.
class FakeDesktop final : public WorkspaceNotificationCenter, public Workspace, public HelpViewer {
public:
    void addObserver(const void* observer, const std::string& name,
                     std::function<void()> handler) override
    {
        observers_.push_back({observer, name, std::move(handler)});
    }
    void removeObserver(const void* observer) override
    {
        std::erase_if(observers_, [&](const Observer& o) { return o.observer == observer; });
    }
    void postWorkspaceNotification(const std::string& name)
    {
        const auto snapshot = observers_;
        for (const Observer& o : snapshot) {
            if (o.name == name) {
                o.handler();
            }
        }
    }
    std::size_t workspaceObserverCount() const { return observers_.size(); }

    bool openURL(const std::string& url) override
    {
        openedURLs.push_back(url);
        return true;
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
    std::vector<std::string> registeredHelpBooks;
    std::vector<std::string> helpPagesShown;
    int helpRegistrationResult = 0;

private:
    struct Observer {
        const void* observer;
        std::string name;
        std::function<void()> handler;
    };
    std::vector<Observer> observers_;
};

} // namespace vexto
