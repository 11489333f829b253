#include "ThemeIcons.hpp"

#include "QtTestApplication.hpp"

#include <QIcon>
#include <QImage>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace vexto {
namespace {

namespace fs = std::filesystem;

// A theme of its own with one icon, and desktop entries that name it by theme name and by path.
TEST(ThemeIconsTest, AnApplicationWithoutIconsGetsItsDesktopEntrysFromTheTheme)
{
    test::ensureQApplication();
    char pattern[] = "/tmp/vexto-theme-XXXXXX";
    const fs::path root = ::mkdtemp(pattern);
    const fs::path icons = root / "icons" / "vextotest" / "48x48" / "apps";
    fs::create_directories(icons);
    std::ofstream(root / "icons" / "vextotest" / "index.theme")
        << "[Icon Theme]\nName=vextotest\nDirectories=48x48/apps\n\n"
           "[48x48/apps]\nSize=48\nType=Fixed\n";
    QImage red(48, 48, QImage::Format_ARGB32);
    red.fill(QColor(255, 0, 0, 128));
    ASSERT_TRUE(red.save(QString::fromStdString((icons / "painter.png").string())));
    ASSERT_TRUE(red.save(QString::fromStdString((root / "direct.png").string())));
    fs::create_directories(root / "applications");
    std::ofstream(root / "applications" / "painter.desktop") << "[Desktop Entry]\nIcon=painter\n";
    std::ofstream(root / "applications" / "direct.desktop")
        << "[Desktop Entry]\nIcon=" << (root / "direct.png").string() << "\n";
    QIcon::setThemeSearchPaths({QString::fromStdString((root / "icons").string())});
    QIcon::setThemeName("vextotest");

    ThemeIcons themed(DesktopEntryIcons({(root / "applications").string()}));
    PanelContent content;
    content.applications = {{"Painter", "p", {}}, {"Direct", "d", {}}, {"Nameless", "n", {}}};
    const auto own = std::make_shared<const Bitmap>(Bitmap{1, 1, {1, 2, 3, 4}});
    content.applications.push_back({"Painter", "q", {}, own});
    const PanelContent unfilled = content;
    themed.fill(content, 24, false);
    for (std::size_t index : {0u, 1u}) {
        const auto& icon = content.applications[index].icon;
        ASSERT_TRUE(icon) << index;
        EXPECT_EQ(icon->width, 48);
        // Straight alpha: the red stays full, whatever the transparency.
        EXPECT_EQ((std::vector<std::uint8_t>(icon->rgba.begin(), icon->rgba.begin() + 4)),
                  (std::vector<std::uint8_t>{255, 0, 0, 128}));
    }
    EXPECT_FALSE(content.applications[2].icon);
    EXPECT_EQ(content.applications[3].icon, own) << "a window's own icon comes first";
    EXPECT_FALSE(content.applications[3].overlay);

    // With overlays the program's icon comes first, and the window's own goes over it where it
    // shows another picture: not where it is the program's icon in another size.
    PanelContent overlaid = unfilled;
    Bitmap sameRed{16, 16, {}};
    for (int pixel = 0; pixel < 16 * 16; ++pixel) {
        sameRed.rgba.insert(sameRed.rgba.end(), {250, 4, 0, 130});
    }
    const auto alike = std::make_shared<const Bitmap>(sameRed);
    overlaid.applications.push_back({"Painter", "r", {}, alike});
    themed.fill(overlaid, 24, true);
    EXPECT_EQ(overlaid.applications[3].icon->width, 48);
    EXPECT_EQ(overlaid.applications[3].overlay, own);
    EXPECT_EQ(overlaid.applications[4].icon->width, 48);
    EXPECT_FALSE(overlaid.applications[4].overlay);
    EXPECT_FALSE(overlaid.applications[2].overlay) << "no program icon, nothing to go over";
    fs::remove_all(root);
}

} // namespace
} // namespace vexto
