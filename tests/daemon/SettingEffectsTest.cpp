// The README's table of what the daemon does with each setting is where a user looks, and where
// a reviewer finds the test that shows each effect. Every setting the pane writes must have its
// row, every row must name a test, and every test it names must exist.
#include "settings/SettingDeclarations.hpp"

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace vexto {
namespace {

const std::string ellipsis = "\xE2\x80\xA6";

struct Row {
    std::set<std::string> keys;
    std::vector<std::string> tests;
    std::string text;
};

// The texts between the marks, in order: "…" for keys, `…` for tests.
std::vector<std::string> between(const std::string& text, char mark)
{
    std::vector<std::string> found;
    for (std::size_t at = text.find(mark); at != std::string::npos;) {
        const std::size_t end = text.find(mark, at + 1);
        if (end == std::string::npos) {
            break;
        }
        found.push_back(text.substr(at + 1, end - at - 1));
        at = text.find(mark, end + 1);
    }
    return found;
}

std::vector<Row> settingsTable()
{
    std::ifstream readme(VEXTO_SOURCE_DIR "/README.md");
    std::vector<Row> rows;
    bool inSection = false;
    for (std::string line; std::getline(readme, line);) {
        if (line.rfind("### ", 0) == 0) {
            inSection = line == "### What the daemon does with each setting";
            continue;
        }
        if (!inSection || line.rfind("| ", 0) != 0 || line.rfind("| Key ", 0) == 0) {
            continue;
        }
        std::vector<std::string> cells;
        std::stringstream split(line);
        for (std::string cell; std::getline(split, cell, '|');) {
            cells.push_back(cell);
        }
        if (cells.size() < 4) {
            ADD_FAILURE() << "a row without three columns: " << line;
            continue;
        }
        const auto keys = between(cells[1], '"');
        rows.push_back({{keys.begin(), keys.end()}, between(cells[3], '`'), line});
    }
    return rows;
}

std::vector<std::string> registeredTests()
{
    const std::string command =
        "'" VEXTO_CTEST "' -N --test-dir '" VEXTO_BINARY_DIR "' 2>/dev/null";
    std::vector<std::string> names;
    FILE* listing = ::popen(command.c_str(), "r");
    if (listing == nullptr) {
        return names;
    }
    const std::regex testLine(R"(^\s*Test\s+#\d+: (\S+))");
    char buffer[4096];
    while (std::fgets(buffer, sizeof buffer, listing) != nullptr) {
        std::smatch match;
        const std::string line(buffer);
        if (std::regex_search(line, match, testLine)) {
            names.push_back(match[1]);
        }
    }
    ::pclose(listing);
    return names;
}

// A reference names a test as `Suite.Name`, shortened with … anywhere, or a whole `Suite`.
// Parameterised suites carry their instantiation's name before a slash.
bool names(const std::string& reference, const std::string& test)
{
    std::string pattern = "^([^/.]+/)?";
    std::size_t at = 0;
    for (std::size_t cut; (cut = reference.find(ellipsis, at)) != std::string::npos;
         at = cut + ellipsis.size()) {
        pattern += std::regex_replace(reference.substr(at, cut - at),
                                      std::regex(R"([.^$|()\[\]{}*+?\\])"), R"(\$&)") +
                   ".*";
    }
    pattern +=
        std::regex_replace(reference.substr(at), std::regex(R"([.^$|()\[\]{}*+?\\])"), R"(\$&)");
    if (reference.find('.') == std::string::npos && reference.find(ellipsis) == std::string::npos) {
        pattern += "\\.";
    } else if (!reference.ends_with(ellipsis)) {
        pattern += "(/\\S*)?$";
    }
    return std::regex_search(test, std::regex(pattern));
}

TEST(SettingEffectsTest, EverySettingHasARowThatNamesTestsThatExist)
{
    const std::vector<Row> rows = settingsTable();
    ASSERT_GT(rows.size(), 10u) << "the README's table was not found";
    const std::vector<std::string> tests = registeredTests();
    ASSERT_GT(tests.size(), 100u) << "the build's tests could not be listed";

    std::set<std::string> declared;
    for (const SettingDeclaration& declaration : settingdeclarations::all()) {
        declared.insert(std::string(declaration.key));
    }
    std::map<std::string, const Row*> rowOfKey;
    for (const Row& row : rows) {
        for (const std::string& key : row.keys) {
            EXPECT_TRUE(declared.contains(key))
                << "the table names a setting there is not: " << key;
            EXPECT_FALSE(rowOfKey.contains(key)) << key << " has two rows";
            rowOfKey[key] = &row;
        }
        EXPECT_FALSE(row.tests.empty()) << "a row that names no test: " << row.text;
        for (const std::string& reference : row.tests) {
            const bool exists = std::any_of(tests.begin(), tests.end(), [&](const std::string& t) {
                return names(reference, t);
            });
            EXPECT_TRUE(exists) << "no test is named " << reference;
        }
    }
    for (const std::string& key : declared) {
        EXPECT_TRUE(rowOfKey.contains(key)) << "no row shows what the daemon does with " << key;
    }
}

TEST(SettingEffectsTest, ReferencesNameTestsByPrefixEllipsisOrSuite)
{
    EXPECT_TRUE(names("WindowCycleTest.TheFirst…", "WindowCycleTest.TheFirstPressSelects"));
    EXPECT_FALSE(names("WindowCycleTest.TheFirst…", "OtherTest.TheFirstPressSelects"));
    EXPECT_TRUE(names("…WrapAround…", "WindowCycleTest.StepsWrapAroundOnly"));
    EXPECT_TRUE(names("X11CyclingTest.…LockKeys…", "X11CyclingTest.FrontmostLockKeysMatter"));
    EXPECT_TRUE(names("SamplePanelLookTest", "Presets/SamplePanelLookTest.Drawing/Defaults"));
    EXPECT_FALSE(names("SamplePanelLookTest", "SamplePanelLookTestMore.Drawing"));
    EXPECT_FALSE(names("WindowCycleTest.Exact", "WindowCycleTest.Exactly")) << "whole names";
}

} // namespace
} // namespace vexto
