#pragma once

#include "ports/WorkspaceNotificationCenter.hpp"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace vexto {

// Workspace observers kept within the process; `post` delivers to those of a name.
class LocalWorkspaceNotificationCenter : public WorkspaceNotificationCenter {
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
        const auto snapshot = observers_; // handlers may subscribe or unsubscribe
        for (const Observer& o : snapshot) {
            if (o.name == name) {
                o.handler();
            }
        }
    }

    std::size_t workspaceObserverCount() const { return observers_.size(); }

private:
    struct Observer {
        const void* observer;
        std::string name;
        std::function<void()> handler;
    };
    std::vector<Observer> observers_;
};

} // namespace vexto
