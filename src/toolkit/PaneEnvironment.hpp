#pragma once

namespace vexto {

class DistributedNotificationCenter;
class FontCatalog;
class HelpViewer;
class HotKeyRegistrar;
class KeyEventTaps;
class KeyboardLayout;
class ImageDecoder;
class RunLoop;
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
    KeyEventTaps* keyTaps = nullptr;          // none: Tab reaches recording fields as it can
};

} // namespace vexto
