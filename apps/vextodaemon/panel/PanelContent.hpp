#pragma once

#include "cycling/CycleWindow.hpp"
#include "foundation/Bitmap.hpp"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace vexto {

class WindowCycle;

// What the panel shows: a row of applications, one selected, and the selected application's
// windows listed under the row, one of them selected. Every entry knows the place of its window
// in the cycle, so that a click on it can be answered.
struct PanelContent {
    struct Window {
        std::string title;
        std::size_t cycleIndex = 0;
        std::shared_ptr<const Bitmap> icon = nullptr;
        // Its desktop's name; empty for a window shown on every desktop.
        std::string desktopName = {};
        bool onCurrentDesktop = true;
    };
    struct Application {
        std::string name;
        // One running program: two runs of the same program are two applications.
        std::string key;
        std::vector<Window> windows;
        // The first of its windows' own icons, or its program's; none: a generic one is drawn.
        std::shared_ptr<const Bitmap> icon = nullptr;
        // The cycle's own activation and cancellation items stand in the row like programs,
        // with a symbol for an icon and no badge.
        CycleItemKind kind = CycleItemKind::Window;
        // Its first window's own icon where that differs from the program's, drawn small over
        // the program's icon.
        std::shared_ptr<const Bitmap> overlay = nullptr;
    };
    using ProgramIcons = std::function<std::shared_ptr<const Bitmap>(const std::string& name)>;
    using Likeness = std::function<bool(const std::shared_ptr<const Bitmap>& own,
                                        const std::shared_ptr<const Bitmap>& program)>;
    static constexpr std::size_t noSelection = SIZE_MAX;

    std::vector<Application> applications;
    // `noSelection`: none is.
    std::size_t selectedApplication = 0;
    // Within the selected application's windows.
    std::size_t selectedWindow = 0;

    const Application* selected() const
    {
        return selectedApplication < applications.size() ? &applications[selectedApplication]
                                                         : nullptr;
    }

    // Gives each application its program's icon, as `programIcon` finds it by the program's
    // name, where its windows publish none. With `overlays` the program's icon comes first, and
    // a window icon of the application's own that shows another picture is kept as its overlay.
    // `alike` tells whether two icons show the same picture (a caller may remember answers).
    void useProgramIcons(const ProgramIcons& programIcon, bool overlays, const Likeness& alike);

    // Five applications of made-up names, the second selected with three windows: what a sample
    // shows, so that the look can be judged without windows of one's own.
    static PanelContent sample();
    // What the sample shows as the selected window's preview: a made-up window with a title
    // bar and lines of text.
    static Bitmap samplePreview();
    // The cycle's windows grouped under their applications, in the order the cycle offers them.
    static PanelContent fromCycle(const WindowCycle& cycle);
};

} // namespace vexto
