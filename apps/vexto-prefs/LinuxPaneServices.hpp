#pragma once

#include "platform/linux/DBusDistributedNotificationCenter.hpp"
#include "platform/linux/DeferredKeyboardLayout.hpp"
#include "platform/linux/EwmhProcessWindows.hpp"
#include "platform/linux/FontconfigCatalog.hpp"
#include "platform/linux/LinuxDesktop.hpp"
#include "platform/linux/PreferencesFolder.hpp"
#include "platform/linux/ProcProcessList.hpp"
#include "platform/linux/TiffImageDecoder.hpp"
#include "platform/linux/X11AccessibilityStatus.hpp"
#include "platform/linux/X11DesktopWatcher.hpp"
#include "platform/linux/X11HotKeyRegistrar.hpp"
#include "toolkit/PaneEnvironment.hpp"

#include <memory>

namespace vexto {

class RunLoop;

// The real Linux services the host gives the pane, with a window or without: notifications,
// the desktop and its virtual desktops, fonts, images, the keyboard layout, global hot keys, the
// process list and windows, other applications' preferences and assistive access.
class LinuxPaneServices {
public:
    // Notifications from other processes, and moves to another desktop, arrive through the
    // front's run loop.
    explicit LinuxPaneServices(DescriptorWatcher& loop)
        : center_(loop), processes_(&windows_), desktops_(loop, [this] {
              desktop_.postWorkspaceNotification(
                  WorkspaceNotificationCenter::activeSpaceDidChangeNotification);
          })
    {}
    LinuxPaneServices(const LinuxPaneServices&) = delete;
    LinuxPaneServices& operator=(const LinuxPaneServices&) = delete;

    // The services around the front's run loop; the front adds what only it has (key taps).
    PaneEnvironment environment(RunLoop& loop)
    {
        PaneEnvironment environment{loop, center_, desktop_, desktop_, desktop_, nullptr};
        environment.images = &images_;
        environment.fonts = &fonts_;
        environment.keyboard = &keyboard_;
        environment.hotKeys = &hotKeys_;
        environment.processes = &processes_;
        environment.processSignals = &processes_;
        environment.foreignPreferences = &preferences_;
        environment.accessibility = &accessibility_;
        return environment;
    }

private:
    DBusDistributedNotificationCenter center_;
    LinuxDesktop desktop_;
    TiffImageDecoder images_;
    FontconfigCatalog fonts_;
    DeferredKeyboardLayout keyboard_;
    X11HotKeyRegistrar hotKeys_;
    EwmhProcessWindows windows_;
    ProcProcessList processes_;
    PreferencesFolder preferences_;
    X11AccessibilityStatus accessibility_;
    X11DesktopWatcher desktops_;
};

} // namespace vexto
