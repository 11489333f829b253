#pragma once

#include <cstddef>
#include <functional>

namespace vexto {

class WindowCycle;

// Where a cycle is shown: the panel over every window, which never takes the focus.
class CyclePanel {
public:
    virtual ~CyclePanel() = default;

    // Shows the cycle's windows with its selection, or redraws them after a change; false when
    // there is nowhere to show it.
    virtual bool showCycle(const WindowCycle& cycle) = 0;
    virtual void hideCycle() = 0;
    // Told the index of an item the user clicks.
    virtual void setItemClickedHandler(std::function<void(std::size_t index)> clicked) = 0;
};

} // namespace vexto
