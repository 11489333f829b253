#include "ScriptRunner.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

namespace vexto {
namespace {

// The table drives dispatch, the errors and the README: a row named twice, or two rows sent to
// the same function, would make one command do another's work.
TEST(ScriptCommandsTest, EachCommandHasItsOwnNameFunctionAndArgumentCount)
{
    std::set<std::string_view> names;
    std::vector<ScriptCommand::Handler> handlers; // member pointers compare, but do not order
    for (const ScriptCommand& command : ScriptRunner::commands()) {
        SCOPED_TRACE(std::string(command.name));
        EXPECT_TRUE(names.insert(command.name).second);
        EXPECT_EQ(std::count(handlers.begin(), handlers.end(), command.handler), 0);
        handlers.push_back(command.handler);
        EXPECT_FALSE(command.effect.empty());
        // The usage names one word for each argument the command takes ("A|B" is one word; a
        // quoted title may hold spaces).
        std::size_t words = 0;
        bool quoted = false;
        bool inWord = false;
        for (const char c : command.arguments) {
            if (c == '"') {
                quoted = !quoted;
            }
            if (c == ' ' && !quoted) {
                inWord = false;
            } else if (!inWord) {
                inWord = true;
                ++words;
            }
        }
        EXPECT_EQ(words, command.argumentCount);
    }
    EXPECT_EQ(names.size(), 24u);
}

} // namespace
} // namespace vexto
