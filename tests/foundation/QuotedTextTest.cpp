#include "foundation/QuotedText.hpp"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace vexto {
namespace {

// What a printed value may hold: a hostile file must not reach the terminal's escape sequences,
// nor reorder the line, and the printed text must stay a JSON string.
TEST(QuotedTextTest, EscapesWhatATerminalWouldActOnAndKeepsTheRest)
{
    const std::pair<std::string, std::string> cases[] = {
        {"", "\"\""},
        {"Alt+Tab", "\"Alt+Tab\""},
        {"say \"hi\" \\ ok", "\"say \\\"hi\\\" \\\\ ok\""},
        {"a\nb\tc\rd", "\"a\\nb\\tc\\rd\""},
        {"\x1b[31mred", "\"\\u001b[31mred\""},
        {std::string("nul\0x", 5), "\"nul\\u0000x\""},
        {"bell\x07 del\x7f", "\"bell\\u0007 del\\u007f\""},
        {"\xc2\x9b"
         "2J",
         "\"\\u009b2J\""},
        {"abc\xe2\x80\xae"
         "fdp.exe",
         "\"abc\\u202efdp.exe\""},
        {"\xe2\x81\xa6isolate\xe2\x81\xa9", "\"\\u2066isolate\\u2069\""},
        {"line\xe2\x80\xa8sep", "\"line\\u2028sep\""},
        {"caf\xc3\xa9 \xe2\x8c\x98 \xf0\x9f\x98\x80",
         "\"caf\xc3\xa9 \xe2\x8c\x98 \xf0\x9f\x98\x80\""},
        {"bad\xff\xfe", "\"bad\xef\xbf\xbd\xef\xbf\xbd\""},
        {"cut\xe2\x8c", "\"cut\xef\xbf\xbd\xef\xbf\xbd\""},
    };
    for (const auto& [text, expected] : cases) {
        EXPECT_EQ(QuotedText::quoted(text), expected) << text;
    }
}

} // namespace
} // namespace vexto
