#include "platform/linux/FontconfigCatalog.hpp"

#include "../foundation/TestSupport.hpp"
#include "platform/linux/DeferredFontCatalog.hpp"
#include "platform/linux/DesktopServices.hpp"

#include <gtest/gtest.h>

#include <filesystem>

namespace vexto {
namespace {

// A fontconfig of the test's own: three DejaVu faces copied into a folder, a cache beside them.
class FontconfigCatalogTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        const std::string source = "/usr/share/fonts/truetype/dejavu/";
        std::filesystem::create_directories(folder.file("fonts"));
        for (const char* face : {"DejaVuSans-Bold.ttf", "DejaVuSans.ttf", "DejaVuSansMono.ttf"}) {
            if (!std::filesystem::exists(source + face)) {
                GTEST_SKIP() << "fonts-dejavu-core is not installed";
            }
            std::filesystem::copy_file(source + face, folder.file("fonts/") + face);
        }
        test::writeText(folder.file("fonts.conf"),
                        "<?xml version=\"1.0\"?><fontconfig><dir>" + folder.file("fonts") +
                            "</dir><cachedir>" + folder.file("cache") + "</cachedir></fontconfig>");
    }

    test::TemporaryFolder folder;
};

TEST_F(FontconfigCatalogTest, FamiliesMembersAndNamesComeFromTheFontsThemselves)
{
    const FontconfigCatalog catalog(folder.file("fonts.conf"));
    EXPECT_EQ(catalog.availableFontFamilies(),
              (std::vector<std::string>{"DejaVu Sans", "DejaVu Sans Mono"}));
    // Lighter faces first.
    EXPECT_EQ(catalog.availableMembersOfFontFamily("DejaVu Sans"),
              (std::vector<std::string>{"DejaVuSans", "DejaVuSans-Bold"}));
    EXPECT_TRUE(catalog.availableMembersOfFontFamily("Nothing").empty());

    const auto bold = catalog.fontWithName("DejaVuSans-Bold", 14);
    ASSERT_TRUE(bold);
    EXPECT_EQ(bold->displayName(), "DejaVu Sans Bold");
    EXPECT_EQ(bold->familyName(), "DejaVu Sans");
    EXPECT_EQ(bold->pointSize(), 14.0);
    // Only an exact name: no nearest match stands in for a missing font.
    EXPECT_FALSE(catalog.fontWithName("dejavusans-bold", 14));
    EXPECT_FALSE(catalog.fontWithName("NoSuchFont-Regular", 14));
}

// A font installed while the pane runs is in the next menu: the folder's time tells.
TEST_F(FontconfigCatalogTest, FontsInstalledMeanwhileAreListedAtTheNextLook)
{
    const FontconfigCatalog catalog(folder.file("fonts.conf"));
    ASSERT_EQ(catalog.availableFontFamilies().size(), 2u);
    const std::string serif = "/usr/share/fonts/truetype/dejavu/DejaVuSerif.ttf";
    if (!std::filesystem::exists(serif)) {
        GTEST_SKIP() << "no DejaVu Serif to install";
    }
    std::filesystem::copy_file(serif, folder.file("fonts/DejaVuSerif.ttf"));
    EXPECT_EQ(catalog.availableFontFamilies(),
              (std::vector<std::string>{"DejaVu Sans", "DejaVu Sans Mono", "DejaVu Serif"}));
    EXPECT_TRUE(catalog.fontWithName("DejaVuSerif", 12));
}

TEST_F(FontconfigCatalogTest, AConfigurationThatCannotBeReadListsNothing)
{
    test::writeText(folder.file("bad.conf"), "<fontconfig><dir>");
    const FontconfigCatalog catalog(folder.file("bad.conf"));
    EXPECT_TRUE(catalog.availableFontFamilies().empty());
}

// The pane's fonts come from the desktop module beside the runtime, loaded on the first question:
// the machine's own fonts, the same as the catalog linked in directly lists.
TEST(DesktopServicesTest, TheDeferredCatalogAsksTheDesktopModule)
{
    const DeferredFontCatalog deferred;
    const FontconfigCatalog direct;
    EXPECT_EQ(deferred.availableFontFamilies(), direct.availableFontFamilies());
    ASSERT_NE(DesktopServices::shared(), nullptr) << "the module was loaded";
    EXPECT_EQ(&DesktopServices::shared()->fonts(), &DesktopServices::shared()->fonts())
        << "one instance for the process";
}

} // namespace
} // namespace vexto
