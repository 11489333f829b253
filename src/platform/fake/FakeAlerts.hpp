#pragma once

#include "ports/Alerts.hpp"

#include <vector>

namespace vexto {

// Remembers every alert shown and answers each with the button the test chose.
class FakeAlerts final : public Alerts {
public:
    int runModal(const AlertRequest& request) override
    {
        shown.push_back(request);
        return answer;
    }

    int answer = defaultReturn;
    std::vector<AlertRequest> shown;
};

} // namespace vexto
