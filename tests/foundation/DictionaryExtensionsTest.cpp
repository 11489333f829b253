#include "foundation/DictionaryExtensions.hpp"

#include "TestSupport.hpp"
#include "foundation/FileSystem.hpp"
#include "foundation/HomeDirectory.hpp"
#include "foundation/StringExtensions.hpp"

#include <gtest/gtest.h>

namespace vexto {
namespace {

TEST(DictionaryExtensionsTest, DefaultsNeverOverwriteAndNoneNeverRemoves)
{
    PlistDictionary settings{{"Show Previews", false}, {"Panel Delay", "300"}};
    setDefaultBool(settings, true, "Show Previews");
    setDefaultBool(settings, true, "Switch Across Spaces");
    setDefaultInteger(settings, 200, "Panel Delay");
    setDefaultInteger(settings, 3, "Applications Sort Order");
    archiveObject(settings, std::nullopt, "Panel Delay");
    tryToSetObject(settings, std::nullopt, "Panel Delay");
    takeObjectForKey(settings, "Panel Delay", PlistDictionary{});
    EXPECT_EQ(settings.at("Show Previews"), PlistValue(false));
    EXPECT_EQ(settings.at("Switch Across Spaces"), PlistValue(true));
    EXPECT_EQ(settings.at("Panel Delay"), PlistValue("300"));
    EXPECT_EQ(integerForKey(settings, "Panel Delay"), 300);
    EXPECT_EQ(integerForKey(settings, "Applications Sort Order"), 3);
}

TEST(DictionaryExtensionsTest, TakingCopiesPresentValuesAndOverwrites)
{
    PlistDictionary layout{{"Item Height", 24}, {"Panel Shadow", true}};
    PlistDictionary settings{{"Item Height", 32}, {"Last Tab", "triggers"}};
    takeObjectForKey(settings, "Panel Shadow", layout);
    takeObjectForKey(settings, "Missing", layout);
    EXPECT_EQ(settings.at("Panel Shadow"), PlistValue(true));
    EXPECT_FALSE(settings.contains("Missing"));
    takeObjectsFromDictionary(settings, layout);
    EXPECT_EQ(settings.at("Item Height"), PlistValue(24));
    EXPECT_EQ(settings.at("Last Tab"), PlistValue("triggers"));
}

TEST(DictionaryExtensionsTest, ArchivedColoursRoundTripAndOtherValuesDoNotUnarchive)
{
    PlistDictionary settings{{"Text", "not data"}, {"Junk", PlistData{1, 2, 3}}};
    const Color background = Color::calibratedWhite(0.0f, 0.5f);
    archiveObject(settings, background, "Background Color");
    ASSERT_TRUE(settings.at("Background Color").isData());
    EXPECT_EQ(unarchivedObjectForKey(settings, "Background Color"), ArchivedObject(background));
    EXPECT_FALSE(unarchivedObjectForKey(settings, "Text"));
    EXPECT_FALSE(unarchivedObjectForKey(settings, "Junk"));
    EXPECT_FALSE(unarchivedObjectForKey(settings, "Absent"));
    EXPECT_EQ(integerForKey(settings, "Junk"), 0);
}

TEST(DictionaryExtensionsTest, DeepCopyIsAnEqualIndependentDictionary)
{
    const PlistDictionary original{
        {"Application Exceptions", PlistArray{"Finder", "Mail"}},
        {"Cycle All Windows", PlistDictionary{{"Forward", PlistDictionary{{"Key Code", "48"}}}}},
        {"Timeout", 0.2f}};
    auto copy = deepMutableAutoreleasedCopy(original);
    ASSERT_TRUE(copy);
    EXPECT_EQ(*copy, original);
    (*copy)["Application Exceptions"].asArray()->clear();
    EXPECT_EQ(original.at("Application Exceptions").asArray()->size(), 2u);
}

TEST(DictionaryExtensionsTest, ReadsDictionaryFilesOnly)
{
    test::TemporaryFolder folder;
    test::writeText(folder.file("dict.plist"),
                    "<?xml version=\"1.0\"?><plist "
                    "version=\"1.0\"><dict><key>a</key><integer>1</integer></dict></plist>");
    test::writeText(folder.file("array.plist"),
                    "<?xml version=\"1.0\"?><plist version=\"1.0\"><array/></plist>");
    test::writeText(folder.file("text.plist"), "hello");
    EXPECT_EQ(deeplyMutableDictionaryWithContentsOfFile(folder.file("dict.plist")),
              (PlistDictionary{{"a", 1}}));
    EXPECT_FALSE(deeplyMutableDictionaryWithContentsOfFile(folder.file("array.plist")));
    EXPECT_FALSE(deeplyMutableDictionaryWithContentsOfFile(folder.file("text.plist")));
    EXPECT_FALSE(deeplyMutableDictionaryWithContentsOfFile(folder.file("missing.plist")));
    EXPECT_FALSE(deeplyMutableDictionaryWithContentsOfFile(folder.path()));
}

TEST(DictionaryExtensionsTest, ArrayAndStringHelpers)
{
    EXPECT_EQ(firstObject(PlistArray{}), nullptr);
    EXPECT_EQ(*firstObject(PlistArray{"a", "b"}), PlistValue("a"));
    EXPECT_EQ(trimmedString(" \t\n Finder\u00a0\r\n"), "Finder");
    EXPECT_EQ(trimmedString("\u3000Safari , Mail\u2028"), "Safari , Mail");
    EXPECT_EQ(trimmedString(" \n "), "");
}

TEST(DictionaryExtensionsTest, FoldersAreCreatedWithTheirParentsUnderTheHome)
{
    test::TemporaryFolder home;
    HomeDirectory::setOverride(home.path());
    EXPECT_TRUE(checkFolderPathAndCreateIfNecessary("~/Library/Application Support/Vexto"));
    EXPECT_TRUE(isFolderPath(home.file("Library/Application Support/Vexto")));
    EXPECT_TRUE(checkFolderPathAndCreateIfNecessary("~/Library/Application Support/Vexto"));
    test::writeText(home.file("file"), "x");
    EXPECT_FALSE(checkFolderPathAndCreateIfNecessary("~/file"));
    EXPECT_FALSE(checkFolderPathAndCreateIfNecessary("~/file/below"));
    EXPECT_FALSE(isFolderPath(home.file("file")));
    HomeDirectory::clearOverride();
}

} // namespace
} // namespace vexto
