#pragma once

#include <string>
#include <vector>

namespace vexto {

class AccessibilityStatus;
class DistributedNotificationCenter;
class FilePanels;
class ForeignPreferences;
class FontCatalog;
class HelpViewer;
class HotKeyRegistrar;
class KeyEventTaps;
class KeyboardLayout;
class ImageDecoder;
class ProcessManager;
class ProcessSignals;
class RunLoop;
class ShortcutOwners;
class Workspace;
class WorkspaceNotificationCenter;

// The platform services the pane uses, supplied by its host.
struct PaneEnvironment {
    RunLoop& runLoop;
    DistributedNotificationCenter& distributedCenter;
    WorkspaceNotificationCenter& workspaceCenter;
    Workspace& workspace;
    HelpViewer& help;
    const FontCatalog* fonts = nullptr;       // none: only the default panel font is known
    const ImageDecoder* images = nullptr;     // none: the pane's widgets show no images
    const KeyboardLayout* keyboard = nullptr; // none: keys without a name have no label
    HotKeyRegistrar* hotKeys = nullptr;       // none: every free combination is accepted
    ShortcutOwners* shortcutOwners = nullptr; // none: the desktop names no one
    KeyEventTaps* keyTaps = nullptr;          // none: Tab reaches recording fields as it can
    ProcessManager* processes = nullptr;      // none: no process, so no daemon, is ever found
    ProcessSignals* processSignals = nullptr; // none: no process can be stopped or continued
    ForeignPreferences* foreignPreferences = nullptr; // none: other applications say nothing
    AccessibilityStatus* accessibility = nullptr;     // none: assistive access is off
    FilePanels* filePanels = nullptr;                 // none: every panel is cancelled
    // Layouts shared by everyone on the machine; empty: the pane's own machine-wide folder.
    std::string sharedLayoutsFolder = {};
    // Where other preference panes are looked for, in order; empty: the system's folders and the
    // user's.
    std::vector<std::string> preferencePaneFolders = {};
    // The pane is shown only to be drawn: it shows what it would, and starts nothing.
    bool drawingOnly = false;
};

} // namespace vexto
