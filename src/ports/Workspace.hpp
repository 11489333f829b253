#pragma once

#include "ports/ApplicationEnd.hpp"

#include <functional>
#include <optional>
#include <string>

namespace vexto {

// Opens addresses and files with the desktop's default handlers.
class Workspace {
public:
    virtual ~Workspace() = default;
    virtual bool openURL(const std::string& url) = 0;
    // Opens a file with the given application, or a bundle with its own executable when no
    // application is given. False when it could not be started; without `deactivate` the
    // caller stays in front.
    virtual bool openFile(const std::string& path, const std::optional<std::string>& application,
                          bool deactivate) = 0;
    // Called from the run loop whenever a program this workspace started ends; none stops the
    // calls. A workspace that cannot tell never calls it.
    virtual void setApplicationEndedHandler(std::function<void(const ApplicationEnd&)> handler)
    {
        (void)handler;
    }
};

} // namespace vexto
