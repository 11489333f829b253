#pragma once

#include "ports/Alerts.hpp"
#include "ports/FilePanels.hpp"

#include <deque>
#include <string>

namespace vexto {

// Alerts and file panels for hosts without a person to answer them. An alert takes the next
// queued answer, or the default button; a panel takes the next queued path, or is cancelled.
// Each is logged.
class ScriptedAlerts final : public Alerts, public FilePanels {
public:
    void queueAnswer(int answer) { answers_.push_back(answer); }
    int runModal(const AlertRequest& request) override;

    // None cancels the panel.
    void queueFileAnswer(std::optional<std::string> path)
    {
        fileAnswers_.push_back(std::move(path));
    }
    std::optional<std::string> runModal(const FilePanelRequest& request) override;

private:
    std::deque<int> answers_;
    std::deque<std::optional<std::string>> fileAnswers_;
};

} // namespace vexto
