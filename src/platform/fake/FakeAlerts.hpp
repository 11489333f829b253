#pragma once

#include "ports/Alerts.hpp"
#include "ports/FilePanels.hpp"

#include <deque>
#include <vector>

namespace vexto {

// Remembers every alert and file panel shown and answers each as the test chose: alerts with
// `answer`, panels with the next of `fileAnswers` (cancelled when there is none).
class FakeAlerts final : public Alerts, public FilePanels {
public:
    std::optional<std::string> runModal(const FilePanelRequest& request) override
    {
        panels.push_back(request);
        if (fileAnswers.empty()) {
            return std::nullopt;
        }
        auto path = fileAnswers.front();
        fileAnswers.pop_front();
        return path;
    }

    int runModal(const AlertRequest& request) override
    {
        shown.push_back(request);
        return answer;
    }

    int answer = defaultReturn;
    std::vector<AlertRequest> shown;
    std::deque<std::string> fileAnswers;
    std::vector<FilePanelRequest> panels;
};

} // namespace vexto
