#pragma once

#include "platform/linux/OpenboxShortcutOwners.hpp"
#include "ports/ShortcutOwners.hpp"

#include <memory>
#include <string>

struct _XDisplay;

namespace vexto {

// The shortcut owners of the session the pane runs in, chosen when asked: in a Wayland session
// the compositor's keys cannot be asked for (Unknown); on X11 under Openbox its configuration
// names them; under another window manager the display's grab probe speaks alone (Free).
class DesktopShortcutOwners final : public ShortcutOwners {
public:
    // The display named (empty: $DISPLAY).
    explicit DesktopShortcutOwners(const std::string& displayName = {});
    ~DesktopShortcutOwners() override;
    DesktopShortcutOwners(const DesktopShortcutOwners&) = delete;
    DesktopShortcutOwners& operator=(const DesktopShortcutOwners&) = delete;

    ShortcutOwner ownerOf(std::uint16_t keyCode, unsigned modifiers) override;

    static bool isWaylandSession();
    // The name the running window manager gives itself (_NET_WM_NAME of its check window).
    std::string windowManagerName() const;

private:
    std::string readWindowManagerName() const;

    _XDisplay* display_ = nullptr;
    std::unique_ptr<OpenboxShortcutOwners> openbox_;
};

} // namespace vexto
