#pragma once

#include "cycling/CycleWindow.hpp"

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace vexto {

// The desktop's windows as the daemon sees and drives them. Times are the window system's own
// time stamps of the key events that asked for the change, so that a window manager can tell a
// request made by the user from a stale one.
class WindowSystem {
public:
    virtual ~WindowSystem() = default;

    // Every window a switcher should offer, the most recently used first.
    virtual std::vector<CycleWindow> windowsInRecentOrder() const = 0;
    virtual std::optional<std::uint64_t> activeWindow() const = 0;
    virtual std::optional<std::uint32_t> currentDesktop() const = 0;

    // The whole keyboard for the daemon while a cycle is up, so that the release of the
    // modifiers is seen wherever the focus is. False when another program holds it.
    virtual bool grabKeyboard(std::uint32_t time) = 0;
    virtual void ungrabKeyboard(std::uint32_t time) = 0;

    // Brings the window to the front with the focus: switches to its desktop first and
    // restores it when minimised.
    virtual void activate(const CycleWindow& window, std::uint32_t time) = 0;

    // Maximised both ways, or back to its size when it already is.
    virtual void toggleZoom(const CycleWindow& window, std::uint32_t time) = 0;
    virtual void minimize(const CycleWindow& window) = 0;
    // Asks the window's program to close it, as its close button does.
    virtual void close(const CycleWindow& window, std::uint32_t time) = 0;

    // A picture of the window's contents as they are now, at most `largestSide` pixels a side;
    // none when neither a compositing manager's copy nor the window itself, shown, can give one.
    virtual std::shared_ptr<const Bitmap> pictureOf(const CycleWindow& window,
                                                    int largestSide) const = 0;
};

} // namespace vexto
