#pragma once

#include "cycling/CyclePanel.hpp"

namespace vexto {

struct PanelAppearance;

// Where the daemon shows its panel: a cycle's, in the look the settings give, and a sample of
// a new look for a while when the pane asks for one.
class PanelPresenter : public CyclePanel {
public:
    // The look cycles are shown in from now on.
    virtual void setAppearance(const PanelAppearance& appearance) = 0;
    // Shows the panel drawn in the appearance for a while, in place of one still shown; false
    // when there is nowhere to show it.
    virtual bool showSample(const PanelAppearance& appearance) = 0;
};

} // namespace vexto
