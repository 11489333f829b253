#pragma once

#include "panel/DesktopEntryIcons.hpp"
#include "panel/PanelContent.hpp"

#include <map>
#include <memory>
#include <string>

namespace vexto {

// The icons desktop entries name, from the desktop's icon theme, for applications whose windows
// publish none; looked up once per program.
class ThemeIcons {
public:
    explicit ThemeIcons(DesktopEntryIcons entries = DesktopEntryIcons())
        : entries_(std::move(entries))
    {}

    // Gives each application without an icon its entry's, in pixels for items of that size on
    // a screen of twice the usual density.
    void fill(PanelContent& content, double itemSize);

private:
    std::shared_ptr<const Bitmap> iconFor(const std::string& windowClass, int pixels);

    DesktopEntryIcons entries_;
    std::map<std::string, std::shared_ptr<const Bitmap>> icons_;
};

} // namespace vexto
