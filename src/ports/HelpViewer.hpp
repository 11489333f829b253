#pragma once

#include <string>

namespace vexto {

// The system's help viewer.
class HelpViewer {
public:
    virtual ~HelpViewer() = default;
    // Registers the help book found at the location; 0 on success, else an error code.
    virtual int registerHelpBook(const std::string& location) = 0;
    virtual void gotoPage(const std::string& bookName, const std::string& page) = 0;
};

} // namespace vexto
