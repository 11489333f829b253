#pragma once

#include "cycling/WindowActions.hpp"
#include "cycling/WindowSystem.hpp"
#include "xserver/X11ClientList.hpp"
#include "xserver/X11KeyGrabs.hpp"
#include "xserver/X11WindowPicture.hpp"
#include "xserver/XcbConnection.hpp"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace vexto {

class CycleController;
class DescriptorWatcher;
class RunLoop;

// The daemon on an X11 desktop under an EWMH window manager: it grabs the hot keys on the root
// window, follows the window manager's client list and active window through the root's
// property changes, hands key presses to the cycle and switches windows through the window
// manager. It is woken only by the server's events, through the run loop's descriptor watch.
class X11WindowSystem final : public WindowSystem {
public:
    // None, with the reason, when the display cannot be reached.
    static std::unique_ptr<X11WindowSystem> open(RunLoop& loop, DescriptorWatcher& watcher,
                                                 const std::string& displayName,
                                                 std::string& problem);
    ~X11WindowSystem() override;
    X11WindowSystem(const X11WindowSystem&) = delete;
    X11WindowSystem& operator=(const X11WindowSystem&) = delete;

    void setController(CycleController* controller) { controller_ = controller; }
    // Icons are taken in the size nearest this many pixels a side.
    void setPreferredIconSize(int pixels) { clients_.setPreferredIconSize(pixels); }
    // Grabs these hot keys instead of the ones before, and logs each one it cannot take.
    void useBindings(const std::vector<HotKeyBinding>& bindings, X11KeyGrabs::Options options);
    // Serves every event the server has sent; also called after the daemon's own round trips,
    // which may have read events into the connection's queue without the descriptor showing it.
    void dispatch();
    // Called once when the server goes away.
    void setConnectionLostHandler(std::function<void()> lost) { lost_ = std::move(lost); }

    std::vector<CycleWindow> windowsInRecentOrder() const override;
    std::optional<std::uint64_t> activeWindow() const override;
    std::optional<std::uint32_t> currentDesktop() const override
    {
        return clients_.currentDesktop();
    }
    bool grabKeyboard(std::uint32_t time) override;
    void ungrabKeyboard(std::uint32_t time) override;
    void activate(const CycleWindow& window, std::uint32_t time) override;
    void toggleZoom(const CycleWindow& window, std::uint32_t time) override;
    void minimize(const CycleWindow& window) override;
    void close(const CycleWindow& window, std::uint32_t time) override;
    std::shared_ptr<const Bitmap> pictureOf(const CycleWindow& window,
                                            int largestSide) const override;

private:
    X11WindowSystem(RunLoop& loop, DescriptorWatcher& watcher,
                    std::unique_ptr<XcbConnection> connection);
    void handle(const xcb_generic_event_t& event);
    void keyPressed(const xcb_key_press_event_t& event);
    void keyReleased(const xcb_key_release_event_t& event);
    void propertyChanged(const xcb_property_notify_event_t& event);
    // Logs the hot keys that could not be taken, unless the same ones were logged last time.
    void logRefusals(const std::vector<X11KeyGrabs::Refusal>& refused);
    // A cycle started by a press whose modifiers were let go before the keyboard was taken
    // would never see their release: the state is read once the keyboard is held.
    void checkModifiersStillHeld(std::uint32_t time);
    // While a cycle holds the keyboard, the modifiers are looked at now and then as well: a
    // release the server never delivered (another client grabbing the server at that moment)
    // must not leave the user's keyboard held for ever.
    void watchModifiers();
    // A round trip reads what the server sent meanwhile into the connection's queue, where the
    // descriptor no longer shows it: it is served from the run loop, never in the middle of the
    // caller's work.
    void dispatchSoon() const;

    RunLoop& loop_;
    DescriptorWatcher& watcher_;
    std::unique_ptr<XcbConnection> connection_;
    X11KeyGrabs keys_;
    X11ClientList clients_;
    X11WindowPicture pictures_;
    xcb_atom_t changeStateAtom_;
    WindowActions actions_{*this};
    CycleController* controller_ = nullptr;
    std::function<void()> lost_;
    bool keyboardGrabbed_ = false;
    std::vector<HotKeyBinding> lastRefused_;
};

} // namespace vexto
