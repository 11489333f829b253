#pragma once

namespace vexto {

struct PanelAppearance;

// Where the daemon shows its sample panel.
class SamplePresenter {
public:
    virtual ~SamplePresenter() = default;
    // Shows the panel drawn in the appearance for a while, in place of one still shown; false
    // when there is nowhere to show it.
    virtual bool showSample(const PanelAppearance& appearance) = 0;
};

} // namespace vexto
