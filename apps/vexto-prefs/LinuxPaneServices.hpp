#pragma once

#include "foundation/ProductInfo.hpp"
#include "platform/linux/DeferredFontCatalog.hpp"
#include "platform/linux/DeferredImageDecoder.hpp"
#include "platform/linux/DeferredKeyboardLayout.hpp"
#include "platform/linux/DesktopServices.hpp"
#include "platform/linux/LinuxDesktop.hpp"
#include "platform/linux/NoDisplay.hpp"
#include "platform/linux/PreferencesFolder.hpp"
#include "platform/linux/ProcProcessList.hpp"
#include "platform/linux/SessionBusNotificationCenter.hpp"
#include "toolkit/PaneEnvironment.hpp"

#include <memory>

namespace vexto {

class RunLoop;

// The real Linux services the host gives the pane, with a window or without: notifications,
// the desktop and its virtual desktops, fonts, images, the keyboard layout, global hot keys, the
// process list and windows, other applications' preferences and assistive access. What needs
// the desktop's libraries comes from the desktop module: at once where a display is named,
// otherwise (fonts, the keyboard layout, images' pixels) only when first asked for.
class LinuxPaneServices {
public:
    // Notifications from other processes, and moves to another desktop, arrive through the
    // front's run loop.
    explicit LinuxPaneServices(DescriptorWatcher& loop)
        : center_(loop), desktop_(&loop),
          display_(NoDisplay::isNamed() ? DesktopServices::shared() : nullptr),
          processes_(display_ != nullptr ? &display_->windows()
                                         : static_cast<ProcessWindows*>(&noDisplay_),
                     &loop)
    {
        processes_.setRegisteredNames({std::string(product::daemonProcessName)});
        if (display_ != nullptr) {
            desktops_ = display_->watchDesktops(loop, [this] {
                desktop_.postWorkspaceNotification(
                    WorkspaceNotificationCenter::activeSpaceDidChangeNotification);
            });
        }
    }
    LinuxPaneServices(const LinuxPaneServices&) = delete;
    LinuxPaneServices& operator=(const LinuxPaneServices&) = delete;

    // The services around the front's run loop; the front adds what only it has (key taps).
    PaneEnvironment environment(RunLoop& loop)
    {
        PaneEnvironment environment{loop, center_, desktop_, desktop_, desktop_, nullptr};
        environment.images = &images_;
        environment.fonts = &fonts_;
        environment.keyboard = &keyboard_;
        environment.hotKeys =
            display_ != nullptr ? &display_->hotKeys() : static_cast<HotKeyRegistrar*>(&noDisplay_);
        environment.shortcutOwners = display_ != nullptr ? &display_->shortcutOwners() : nullptr;
        environment.processes = &processes_;
        environment.processSignals = &processes_;
        environment.foreignPreferences = &preferences_;
        environment.accessibility = display_ != nullptr
                                        ? &display_->accessibility()
                                        : static_cast<AccessibilityStatus*>(&noDisplay_);
        return environment;
    }

private:
    SessionBusNotificationCenter center_;
    LinuxDesktop desktop_;
    DeferredImageDecoder images_;
    DeferredFontCatalog fonts_;
    DeferredKeyboardLayout keyboard_;
    NoDisplay noDisplay_;
    DesktopServices* display_;
    ProcProcessList processes_;
    PreferencesFolder preferences_;
    std::shared_ptr<void> desktops_;
};

} // namespace vexto
