#pragma once

#include "ports/Alerts.hpp"

#include <deque>

namespace vexto {

// Alerts for hosts without a person to answer them: each takes the next queued answer, or the
// default button, and is logged.
class ScriptedAlerts final : public Alerts {
public:
    void queueAnswer(int answer) { answers_.push_back(answer); }
    int runModal(const AlertRequest& request) override;

private:
    std::deque<int> answers_;
};

} // namespace vexto
