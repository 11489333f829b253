#pragma once

#include <string>

namespace vexto {

// A modal alert with up to three buttons (an empty title means no such button).
struct AlertRequest {
    std::string title;
    std::string message;
    std::string defaultButton;
    std::string alternateButton;
    std::string otherButton;
};

// Runs application-modal alerts. Answers with the platform's alert return codes.
class Alerts {
public:
    static constexpr int defaultReturn = 1;
    static constexpr int alternateReturn = 0;
    static constexpr int otherReturn = -1;
    static constexpr int errorReturn = -2;

    virtual ~Alerts() = default;
    virtual int runModal(const AlertRequest& request) = 0;
};

} // namespace vexto
