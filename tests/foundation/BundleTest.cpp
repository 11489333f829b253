#include "foundation/Bundle.hpp"

#include "TestSupport.hpp"
#include "foundation/FileSystem.hpp"
#include "foundation/Localization.hpp"
#include "foundation/Log.hpp"
#include "foundation/StringsTable.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>

namespace vexto {
namespace {

std::string find(const StringsTable& table, std::string_view key)
{
    const std::string* value = table.find(key);
    return value != nullptr ? *value : "<missing>";
}

TEST(StringsTableTest, ReadsEntriesCommentsAndEscapes)
{
    const auto table = StringsTable::parse(test::bytesOf(R"(
        /* A block comment with "quotes" and = signs; */
        "Vexto %@" = "Vexto %@";   // a line comment
        "Quote" = "He said \"hi\" \\ ok";
        "Lines" = "one\ntwo\tthree";
        "Unicode" = "caf\U00e9 \U2318";
        "Pair" = "\UD83D\UDE00";
        "Octal" = "\101";
        Bare_Key = bare.value;
        "Alone";
    )"));
    ASSERT_TRUE(table);
    EXPECT_EQ(find(*table, "Vexto %@"), "Vexto %@");
    EXPECT_EQ(find(*table, "Quote"), "He said \"hi\" \\ ok");
    EXPECT_EQ(find(*table, "Lines"), "one\ntwo\tthree");
    EXPECT_EQ(find(*table, "Unicode"), "caf\u00e9 \u2318");
    EXPECT_EQ(find(*table, "Pair"), "\U0001F600");
    EXPECT_EQ(find(*table, "Octal"), "A");
    EXPECT_EQ(find(*table, "Bare_Key"), "bare.value");
    EXPECT_EQ(find(*table, "Alone"), "Alone");
    EXPECT_EQ(table->size(), 8u);
}

TEST(StringsTableTest, ReadsUtf16WithEitherByteOrderMark)
{
    const std::u16string text = u"\"Send Feedback\" = \"R\u00fcckmeldung senden\";";
    std::vector<std::uint8_t> little{0xFF, 0xFE};
    std::vector<std::uint8_t> big{0xFE, 0xFF};
    for (char16_t unit : text) {
        little.insert(little.end(), {std::uint8_t(unit & 0xFF), std::uint8_t(unit >> 8)});
        big.insert(big.end(), {std::uint8_t(unit >> 8), std::uint8_t(unit & 0xFF)});
    }
    for (const auto& bytes : {little, big}) {
        const auto table = StringsTable::parse(bytes);
        ASSERT_TRUE(table);
        EXPECT_EQ(find(*table, "Send Feedback"), "R\u00fcckmeldung senden");
    }
}

TEST(StringsTableTest, RefusesBrokenTables)
{
    for (std::string_view text : {"\"a\" = \"b\"", "\"a\" = \"b;", "\"a\" \"b\";", "/* open",
                                  "\"a\" = ;", "\"bad\\U12\" = \"x\";"}) {
        EXPECT_FALSE(StringsTable::parse(test::bytesOf(text))) << text;
    }
    EXPECT_TRUE(StringsTable::parse(test::bytesOf("")));
}

TEST(LocalizationTest, PrefersTheLocalesLanguageThenEnglish)
{
    using Folders = std::vector<std::string>;
    EXPECT_EQ(Localization::localizationFoldersForLocale("de_DE.UTF-8@euro"),
              (Folders{"de_DE.lproj", "de-DE.lproj", "de.lproj", "en.lproj", "English.lproj"}));
    EXPECT_EQ(Localization::localizationFoldersForLocale("C"),
              (Folders{"en.lproj", "English.lproj"}));
    EXPECT_EQ(Localization::localizationFoldersForLocale("en_GB"),
              (Folders{"en_GB.lproj", "en-GB.lproj", "en.lproj", "English.lproj"}));
}

class BundleTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        resources_ = folder_.file("Vexto.prefPane/Contents/Resources");
        std::filesystem::create_directories(resources_ + "/en.lproj");
        std::filesystem::create_directories(resources_ + "/de.lproj");
        test::writeText(resources_ + "/en.lproj/Localizable.strings",
                        "\"Send Feedback\" = \"Send Feedback\";\n\"Only English\" = \"English\";");
        test::writeText(resources_ + "/de.lproj/Localizable.strings",
                        "\"Send Feedback\" = \"R\u00fcckmeldung senden\";");
        writeInfo("3.1", "310");
        saved_ = std::getenv("LC_ALL") != nullptr ? std::getenv("LC_ALL") : "";
    }
    void TearDown() override { ::setenv("LC_ALL", saved_.c_str(), 1); }

    void writeInfo(const std::string& version, const std::string& build)
    {
        test::writeText(folder_.file("Vexto.prefPane/Contents/Info.plist"),
                        "<?xml version=\"1.0\"?><plist version=\"1.0\"><dict>"
                        "<key>CFBundleShortVersionString</key><string>" +
                            version +
                            "</string>"
                            "<key>CFBundleVersion</key><string>" +
                            build + "</string></dict></plist>");
    }

    test::TemporaryFolder folder_;
    std::string resources_;
    std::string saved_;
};

TEST_F(BundleTest, ReadsItsInformationAfreshEachTime)
{
    Bundle bundle(folder_.file("Vexto.prefPane"));
    EXPECT_EQ(bundle.infoString("CFBundleVersion"), "310");
    writeInfo("3.2", "320");
    EXPECT_EQ(bundle.infoString("CFBundleShortVersionString"), "3.2");
    EXPECT_EQ(bundle.pathForUncachedPreferencePaneResourceFile("vextodaemon.app"),
              resources_ + "/vextodaemon.app");
    EXPECT_FALSE(Bundle(folder_.file("Missing.prefPane")).uncachedPreferencePaneInfo());
}

TEST_F(BundleTest, LocalisesWithTheEnvironmentsLanguageAndFallsBack)
{
    ::setenv("LC_ALL", "de_DE.UTF-8", 1);
    Bundle german(folder_.file("Vexto.prefPane"));
    EXPECT_EQ(german.localizedString("Send Feedback"), "R\u00fcckmeldung senden");
    EXPECT_EQ(german.localizedString("Only English"), "Only English") << "German table wins whole";
    EXPECT_EQ(german.localizedString("Not In Any Table"), "Not In Any Table");

    ::setenv("LC_ALL", "fr_FR.UTF-8", 1);
    Bundle french(folder_.file("Vexto.prefPane"));
    EXPECT_EQ(french.localizedString("Only English"), "English");
    EXPECT_EQ(french.localizedString("Missing", "Fallback"), "Fallback");
    EXPECT_EQ(french.localizedString("Send Feedback", "", "NoSuchTable"), "Send Feedback");
}

TEST_F(BundleTest, InformationOrATableThatCannotBeUsedIsLoggedOnceWithItsCause)
{
    std::vector<std::string> logged;
    Log::setSink([&](const std::string& line) { logged.push_back(line); });
    ::setenv("LC_ALL", "de_DE.UTF-8", 1);
    test::writeText(resources_ + "/de.lproj/Localizable.strings", "\"Send Feedback\" = ");
    test::writeText(folder_.file("Vexto.prefPane/Contents/Info.plist"), "<plist><dict>");
    Bundle bundle(folder_.file("Vexto.prefPane"));
    EXPECT_EQ(bundle.infoString("CFBundleVersion"), std::nullopt);
    EXPECT_EQ(bundle.infoString("CFBundleShortVersionString"), std::nullopt);
    EXPECT_EQ(bundle.localizedString("Send Feedback"), "Send Feedback") << "English stands in";
    EXPECT_EQ(bundle.localizedString("Only English"), "English");
    // A missing table or information is no surprise and says nothing.
    EXPECT_FALSE(Bundle(folder_.file("Missing.prefPane")).uncachedPreferencePaneInfo());
    Log::clearSink();
    EXPECT_EQ(logged,
              (std::vector<std::string>{
                  "[Vexto] could not use " + folder_.file("Vexto.prefPane/Contents/Info.plist") +
                      " (not a property list): the bundle's name, version and executable "
                      "are unknown",
                  "[Vexto] could not use " + resources_ +
                      "/de.lproj/Localizable.strings (not a strings table): its texts are "
                      "not shown"}));
}

TEST_F(BundleTest, ThePseudoLocaleLengthensEveryTextAndKeepsItsDirectives)
{
    ::setenv("LC_ALL", "x-pseudo", 1);
    Bundle pseudo(folder_.file("Vexto.prefPane"));
    std::vector<std::string> missing;
    Localization::setMissingTranslationObserver(
        [&](std::string_view key) { missing.emplace_back(key); });
    const std::string feedback = pseudo.localizedString("Send Feedback");
    const std::string width = pseudo.localizedString("Vexto panel width: %@ (%lu ms, 100%%)");
    Localization::setMissingTranslationObserver(nullptr);

    EXPECT_EQ(feedback.rfind("[Šéñd Féédbáçk", 0), 0u) << feedback;
    EXPECT_EQ(feedback.back(), ']');
    const auto characters = [](const std::string& text) {
        return std::count_if(text.begin(), text.end(),
                             [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; });
    };
    EXPECT_GE(characters(feedback) * 10, 14 * 13) << "at least 40% more than its 13 characters";
    for (const char* directive : {"%@ (", "%lu ", "100%%)"}) {
        EXPECT_NE(width.find(directive), std::string::npos) << width;
    }
    EXPECT_EQ(pseudo.localizedString(""), "");
    EXPECT_EQ(missing, std::vector<std::string>{"Vexto panel width: %@ (%lu ms, 100%%)"})
        << "only the text the table lacks is reported";
}

} // namespace
} // namespace vexto
