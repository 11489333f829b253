#pragma once

namespace vexto {

class DescriptorWatcher;
class RunLoop;
class PanelPresenter;
struct PanelAppearance;

// What the daemon does once its run loop and presenter exist; returns the exit status.
using DaemonBody = int (*)(RunLoop& loop, DescriptorWatcher& watcher, PanelPresenter* presenter);

// The daemon's Qt module, loaded only where there is a display or a picture to draw.
inline constexpr const char* daemonQtModuleName = "vextodaemon-qt.so";
inline constexpr const char* runDaemonWithQtSymbol = "vexto_daemon_run_with_qt";
inline constexpr const char* renderSampleSymbol = "vexto_daemon_render_sample";
using RunDaemonWithQt = int (*)(int argc, char** argv, DaemonBody body);
// Renders the sample panel for a screen of the given width to a PNG file; 0 on success.
using RenderSample = int (*)(const PanelAppearance* appearance, double screenWidth,
                             const char* pngPath);

} // namespace vexto
