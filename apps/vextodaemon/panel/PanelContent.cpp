#include "panel/PanelContent.hpp"

#include "cycling/WindowCycle.hpp"

#include <algorithm>
#include <array>

namespace vexto {

namespace {

// A page with a folded corner and lines of text: what the sample shows as a window's own icon.
std::shared_ptr<const Bitmap> samplePage()
{
    constexpr int side = 32;
    Bitmap page;
    page.width = side;
    page.height = side;
    page.rgba.assign(std::size_t(side * side * 4), 0);
    for (int y = 2; y < side - 2; ++y) {
        for (int x = 6; x < side - 6; ++x) {
            const bool folded = x - (side - 14) > y - 2;
            const bool line = y > 10 && y % 4 == 0 && x > 9 && x < side - 9;
            const bool edge = x == 6 || x == side - 7 || y == 2 || y == side - 3;
            std::uint8_t* pixel = &page.rgba[std::size_t((y * side + x) * 4)];
            if (folded) {
                continue;
            }
            const std::uint8_t grey = edge ? 120 : 250;
            pixel[0] = line ? 60 : grey;
            pixel[1] = line ? 110 : grey;
            pixel[2] = line ? 200 : grey;
            pixel[3] = 255;
        }
    }
    return std::make_shared<const Bitmap>(std::move(page));
}

} // namespace

void PanelContent::useProgramIcons(const ProgramIcons& programIcon, bool overlays,
                                   const Likeness& alike)
{
    for (Application& application : applications) {
        if (application.kind != CycleItemKind::Window || (application.icon && !overlays)) {
            continue;
        }
        const std::shared_ptr<const Bitmap> program = programIcon(application.name);
        if (!program) {
            continue;
        }
        if (application.icon && !alike(application.icon, program)) {
            application.overlay = application.icon;
        }
        application.icon = program;
    }
}

PanelContent PanelContent::sample()
{
    PanelContent content;
    const char* names[] = {"Files", "Mail", "Terminal", "Browser", "Notes"};
    std::size_t index = 0;
    for (const char* name : names) {
        content.applications.push_back({name, name, {{name, index++, nullptr}}, nullptr});
    }
    content.applications[1].windows = {
        {"Inbox", 1, nullptr}, {"Re: Quarterly figures", 1, nullptr}, {"Drafts", 1, nullptr}};
    content.applications[1].overlay = samplePage();
    content.selectedApplication = 1;
    return content;
}

Bitmap PanelContent::samplePreview()
{
    constexpr int width = 320;
    constexpr int height = 200;
    constexpr std::array<std::uint8_t, 4> titleBar = {205, 210, 225, 255};
    constexpr std::array<std::uint8_t, 4> text = {120, 120, 120, 255};
    constexpr std::array<std::uint8_t, 4> page = {246, 246, 246, 255};
    Bitmap preview{width, height, {}};
    preview.rgba.reserve(std::size_t(width * height * 4));
    for (int y = 0; y < height; ++y) {
        // Lines of differing lengths, as a paragraph has.
        const int lineEnd = width - 20 - (y / 16 % 3) * 40;
        for (int x = 0; x < width; ++x) {
            const bool onLine = y > 40 && (y - 40) % 16 < 6 && x > 20 && x < lineEnd;
            const auto& colour = y < 22 ? titleBar : onLine ? text : page;
            preview.rgba.insert(preview.rgba.end(), colour.begin(), colour.end());
        }
    }
    return preview;
}

PanelContent PanelContent::fromCycle(const WindowCycle& cycle)
{
    PanelContent content;
    // Nothing selected (after an action that selects nothing) shows no selection at all.
    content.selectedApplication = noSelection;
    const auto& items = cycle.items();
    for (std::size_t index = 0; index < items.size(); ++index) {
        const CycleWindow& window = items[index];
        if (!window.isWindow()) {
            const bool activates = window.kind == CycleItemKind::ActivationItem;
            content.applications.push_back(
                {activates ? "Switch" : "Cancel",
                 {},
                 {{activates ? "Switch to the selected window" : "Close without switching", index}},
                 nullptr,
                 window.kind});
            if (cycle.selectedIndex() == index) {
                content.selectedApplication = content.applications.size() - 1;
                content.selectedWindow = 0;
            }
            continue;
        }
        auto application =
            std::find_if(content.applications.begin(), content.applications.end(),
                         [&](const Application& a) { return a.key == window.applicationKey; });
        if (application == content.applications.end()) {
            content.applications.push_back(
                {window.applicationName, window.applicationKey, {}, nullptr});
            application = content.applications.end() - 1;
        }
        const bool everywhere = !window.desktop.has_value();
        application->windows.push_back({window.title, index, window.icon,
                                        everywhere ? std::string() : window.desktopName,
                                        everywhere || window.desktop == cycle.currentDesktop()});
        if (!application->icon) {
            application->icon = window.icon;
        }
        if (cycle.selectedIndex() == index) {
            content.selectedApplication =
                static_cast<std::size_t>(application - content.applications.begin());
            content.selectedWindow = application->windows.size() - 1;
        }
    }
    return content;
}

} // namespace vexto
