#include "panel/DesktopEntryIcons.hpp"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <sys/stat.h>

namespace vexto {
namespace {

namespace fs = std::filesystem;

class DesktopEntryIconsTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        char pattern[] = "/tmp/vexto-entries-XXXXXX";
        root = ::mkdtemp(pattern);
        fs::create_directories(root / "user");
        fs::create_directories(root / "system");
    }
    void TearDown() override { fs::remove_all(root); }

    void write(const std::string& folder, const std::string& name, const std::string& text)
    {
        std::ofstream(root / folder / name, std::ios::binary) << text;
    }
    DesktopEntryIcons icons()
    {
        return DesktopEntryIcons({(root / "user").string(), (root / "system").string()});
    }

    fs::path root;
};

TEST_F(DesktopEntryIconsTest, AWindowsClassFindsItsEntryByStartupClassThenByNameTheUsersFirst)
{
    write("system", "org.mozilla.firefox.desktop",
          "[Desktop Entry]\nName=Firefox\nIcon=firefox-esr\nStartupWMClass=Firefox-esr\n");
    write("system", "xterm.desktop", "[Desktop Entry]\r\nIcon = mini.xterm\r\n");
    write("system", "gimp.desktop", "[Desktop Entry]\nIcon=gimp\n");
    write("user", "gimp.desktop", "[Desktop Entry]\nIcon=/home/me/gimp-dark.png\n");
    auto found = icons();
    EXPECT_EQ(found.iconNameFor("firefox-ESR"), "firefox-esr");
    EXPECT_EQ(found.iconNameFor("XTerm"), "mini.xterm");
    EXPECT_EQ(found.iconNameFor("Gimp"), "/home/me/gimp-dark.png");
    EXPECT_EQ(found.iconNameFor("Unknown"), std::nullopt);
    EXPECT_EQ(found.iconNameFor(""), std::nullopt);
}

TEST_F(DesktopEntryIconsTest, EntriesThatCannotBeTrustedAreSkippedWithoutWaitingOrReadingTooMuch)
{
    write("system", "big.desktop",
          "[Desktop Entry]\nIcon=big\n" + std::string(DesktopEntryIcons::largestEntry, '#'));
    write("system", "binary.desktop", "[Desktop Entry]\nIcon=bin\xff\xfe\n");
    write("system", "action.desktop",
          "[Desktop Entry]\nName=A\n[Desktop Action new]\nIcon=action-icon\n");
    write("system", "local.desktop", "[Desktop Entry]\nIcon[de]=lokal\n");
    write("system", "nogroup.desktop", "Icon=orphan\n");
    write("system", "noicon.desktop", "[Desktop Entry]\nStartupWMClass=Big\n");
    ASSERT_EQ(::mkfifo((root / "system" / "fifo.desktop").c_str(), 0600), 0);
    auto found = icons();
    for (const char* name : {"big", "binary", "action", "local", "nogroup", "noicon", "fifo"}) {
        EXPECT_EQ(found.iconNameFor(name), std::nullopt) << name;
    }
}

TEST(DesktopEntryFoldersTest, TheBaseDirectoriesAreHonouredAsTheirRulesSay)
{
    ::setenv("XDG_DATA_HOME", "/data/home", 1);
    ::setenv("XDG_DATA_DIRS", "/one:relative/two::/three/", 1);
    EXPECT_EQ(DesktopEntryIcons::applicationFolders(),
              (std::vector<std::string>{"/data/home/applications", "/one/applications",
                                        "/three/applications"}));
    ::setenv("XDG_DATA_HOME", "not/absolute", 1);
    ::unsetenv("XDG_DATA_DIRS");
    const auto folders = DesktopEntryIcons::applicationFolders();
    ASSERT_EQ(folders.size(), 3u);
    EXPECT_TRUE(folders[0].ends_with("/.local/share/applications"));
    EXPECT_EQ(folders[1], "/usr/local/share/applications");
    EXPECT_EQ(folders[2], "/usr/share/applications");
    ::unsetenv("XDG_DATA_HOME");
}

} // namespace
} // namespace vexto
