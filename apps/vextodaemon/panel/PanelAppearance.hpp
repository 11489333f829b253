#pragma once

#include "foundation/Color.hpp"
#include "foundation/Font.hpp"
#include "foundation/PlistValue.hpp"

#include <cstdint>
#include <optional>

namespace vexto {

class FontCatalog;

// What the panel is drawn with, read from the settings as the daemon reads them.
struct PanelAppearance {
    Color background;
    Color selection;
    Color selectionBorder;
    Color applicationName;
    Color windowName;
    Color selectionWindowName;
    Color keyBadge;
    Color spaceBadge;
    Color previewBorder;
    // Whether a sample shows a preview beside the panel, as cycles then do.
    bool showPreviews = true;
    std::int64_t selectionGradient = 0;
    // The item size in points.
    double itemSize = 48;
    // The widest the panel may be, as a part of the screen's width; none: as wide as needed.
    std::optional<double> maximumWidth;
    // None: the system's font.
    std::optional<Font> font;
    bool smoothFonts = true;
    bool panelShadow = true;
    bool applicationNameShadow = true;
    bool windowNameShadow = false;
    bool shortcutBadges = true;
    bool showApplicationNames = true;
    // 0: no icons; 1: application icons; 2: application and window icons.
    std::int64_t iconMode = 1;
    // A window's own icon drawn small over its program's where they differ.
    bool documentIconOverlays = true;
    bool onMouseScreen = false;
    // Off: a window's desktop is named only when it is not the current one. On: always, unless
    // `hideCurrentSpaceBadges`.
    bool alwaysShowSpaceBadges = false;
    bool hideCurrentSpaceBadges = false;

    static constexpr double smallestItem = 12;
    static constexpr double largestItem = 256;

    // The user's settings over the shipped defaults; a value of the wrong kind reads as absent,
    // and colours come from their archived data. Fonts are looked up in the catalog when there
    // is one, by their name or, as layouts store them, by their display name.
    static PanelAppearance fromSettings(const PlistDictionary& settings,
                                        const PlistDictionary& defaults, const FontCatalog* fonts);
};

} // namespace vexto
