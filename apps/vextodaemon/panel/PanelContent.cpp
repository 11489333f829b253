#include "panel/PanelContent.hpp"

#include "cycling/WindowCycle.hpp"

#include <algorithm>

namespace vexto {

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
    content.selectedApplication = 1;
    return content;
}

PanelContent PanelContent::fromCycle(const WindowCycle& cycle)
{
    PanelContent content;
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
