// Writes the preset appearance layouts the pane ships into a folder:
//   vexto-make-presets FOLDER
// Each is a property list of appearance settings, colours archived as the settings hold them.
#include "foundation/Color.hpp"
#include "foundation/DictionaryExtensions.hpp"
#include "foundation/FileSystem.hpp"

#include <cstdio>
#include <string>

using namespace vexto;

namespace {

struct Preset {
    const char* name;
    double itemHeight;
    double maximumWidth; // -1: as wide as needed
    int selectionGradient;
    Color background;
    Color selection;
    Color selectionBorder;
    Color applicationName;
    Color windowName;
    Color selectionWindowName;
    Color keyBadge;
    bool shadows;
};

PlistDictionary layoutOf(const Preset& preset)
{
    PlistDictionary layout;
    layout["Item Height"] = PlistValue(preset.itemHeight);
    layout["Maximum Width"] = PlistValue(preset.maximumWidth);
    layout["Selection Gradient"] = PlistValue(preset.selectionGradient);
    archiveObject(layout, preset.background, "Background Color");
    archiveObject(layout, preset.selection, "Selection Color");
    archiveObject(layout, preset.selectionBorder, "Selection Border Color");
    archiveObject(layout, preset.applicationName, "Application Name Color");
    archiveObject(layout, preset.windowName, "Window Name Color");
    archiveObject(layout, preset.selectionWindowName, "Selection Window Name Color");
    archiveObject(layout, preset.keyBadge, "Key Badge Color");
    layout["Panel Shadow"] = PlistValue(preset.shadows);
    layout["Application Name Shadow"] = PlistValue(preset.shadows);
    layout["Window Name Shadow"] = PlistValue(preset.shadows);
    return layout;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: vexto-make-presets FOLDER\n");
        return 2;
    }
    const Color white = Color::whiteColor();
    const Preset presets[] = {
        // Quiet on dark desktops: smoked glass, a graphite selection, soft white names.
        {"Graphite", 48, -1, -15, Color::calibratedWhite(0.12f, 0.82f),
         Color::calibratedRGB(0.42f, 0.45f, 0.50f, 1.0f), Color::calibratedWhite(0.85f, 0.9f),
         Color::calibratedWhite(0.95f, 1.0f), Color::calibratedWhite(0.75f, 1.0f), white,
         Color::calibratedRGB(0.42f, 0.45f, 0.50f, 1.0f), true},
        // For light themes and bright rooms: a pale panel, a blue selection, dark names.
        {"Daylight", 48, 0.8, -8, Color::calibratedWhite(0.96f, 0.92f),
         Color::calibratedRGB(0.16f, 0.45f, 0.86f, 1.0f),
         Color::calibratedRGB(0.10f, 0.30f, 0.62f, 1.0f), Color::calibratedWhite(0.10f, 1.0f),
         Color::calibratedWhite(0.30f, 1.0f), white,
         Color::calibratedRGB(0.16f, 0.45f, 0.86f, 1.0f), false},
        // The easiest to read: opaque black, large items, a yellow frame around the selection.
        {"High Contrast", 72, -1, 0, Color::calibratedWhite(0.0f, 1.0f),
         Color::calibratedWhite(0.0f, 1.0f), Color::calibratedRGB(1.0f, 0.85f, 0.0f, 1.0f), white,
         white, Color::calibratedRGB(1.0f, 0.85f, 0.0f, 1.0f),
         Color::calibratedRGB(1.0f, 0.85f, 0.0f, 1.0f), false},
    };
    const std::string folder = argv[1];
    FileSystem::createDirectories(folder);
    for (const Preset& preset : presets) {
        const std::string path =
            FileSystem::join(folder, std::string(preset.name) + ".vextolayout");
        if (!writeToFileAtomically(layoutOf(preset), path)) {
            std::fprintf(stderr, "vexto-make-presets: could not write %s\n", path.c_str());
            return 1;
        }
    }
    return 0;
}
