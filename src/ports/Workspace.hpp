#pragma once

#include <string>

namespace vexto {

// Opens addresses and files with the desktop's default handlers.
class Workspace {
public:
    virtual ~Workspace() = default;
    virtual bool openURL(const std::string& url) = 0;
};

} // namespace vexto
