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

    // Gives each application its entry's icon where its windows publish none, or, with
    // `overlays`, first and with the window's own over it; in pixels for items of that size on
    // a screen of twice the usual density.
    void fill(PanelContent& content, double itemSize, bool overlays);

private:
    std::shared_ptr<const Bitmap> iconFor(const std::string& windowClass, int pixels);

    // Compared once per pair: a step of a cycle draws the same icons again.
    bool lookAlike(const std::shared_ptr<const Bitmap>& own,
                   const std::shared_ptr<const Bitmap>& program);

    DesktopEntryIcons entries_;
    std::map<std::string, std::shared_ptr<const Bitmap>> icons_;
    // Holding the icons keeps their addresses from being reused by others.
    struct Compared {
        std::shared_ptr<const Bitmap> own;
        std::shared_ptr<const Bitmap> program;
        bool alike;
    };
    std::map<std::pair<const Bitmap*, const Bitmap*>, Compared> compared_;
};

} // namespace vexto
