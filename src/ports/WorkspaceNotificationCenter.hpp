#pragma once

#include <functional>
#include <string>

namespace vexto {

// The workspace's notifications, such as "NSWorkspaceActiveSpaceDidChangeNotification".
class WorkspaceNotificationCenter {
public:
    static constexpr const char* activeSpaceDidChangeNotification =
        "NSWorkspaceActiveSpaceDidChangeNotification";

    virtual ~WorkspaceNotificationCenter() = default;
    virtual void addObserver(const void* observer, const std::string& name,
                             std::function<void()> handler) = 0;
    virtual void removeObserver(const void* observer) = 0;
};

} // namespace vexto
