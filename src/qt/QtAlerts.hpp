#pragma once

#include "ports/Alerts.hpp"

namespace vexto {

// Alerts as modal Qt message boxes, with the buttons in the platform's order.
class QtAlerts final : public Alerts {
public:
    int runModal(const AlertRequest& request) override;
};

} // namespace vexto
