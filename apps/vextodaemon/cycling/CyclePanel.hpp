#pragma once

#include <cstddef>
#include <functional>

namespace vexto {

struct Bitmap;
class WindowCycle;

// Where a cycle is shown: the panel over every window, which never takes the focus.
class CyclePanel {
public:
    virtual ~CyclePanel() = default;

    // Shows the cycle's windows with its selection, or redraws them after a change; false when
    // there is nowhere to show it.
    virtual bool showCycle(const WindowCycle& cycle) = 0;
    // Hides the preview with the panel.
    virtual void hideCycle() = 0;
    // A larger picture of the selected window beside the panel, until the selection moves.
    virtual void showPreview(const Bitmap& picture) = 0;
    virtual void hidePreview() = 0;
    // Told the index of an item the user clicks.
    virtual void setItemClickedHandler(std::function<void(std::size_t index)> clicked) = 0;
};

} // namespace vexto
