#include "PaneHost.hpp"
#include "ScriptRunner.hpp"
#include "ScriptedAlerts.hpp"
#include "platform/fake/FakeDesktop.hpp"
#include "platform/fake/FakeDistributedNotificationCenter.hpp"
#include "platform/fake/FakeRunLoop.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
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

// A script against a host with no pane loaded: what needs no pane still runs.
class ScriptRunnerTest : public ::testing::Test {
protected:
    // The status, with what was said on standard error.
    int run(const std::string& script)
    {
        std::FILE* in = ::fmemopen(const_cast<char*>(script.data()), script.size(), "r");
        std::FILE* out = std::tmpfile();
        std::FILE* err = std::tmpfile();
        const int status = ScriptRunner(host, loop, alerts, out, err).run(in);
        std::rewind(err);
        char line[512] = {};
        errors = std::fgets(line, sizeof line, err) != nullptr ? line : "";
        std::fclose(in);
        std::fclose(out);
        std::fclose(err);
        return status;
    }

    FakeRunLoop loop;
    FakeDistributedNotificationCenter center;
    FakeDesktop desktop;
    PaneHost host{PaneEnvironment{loop, center, desktop, desktop, desktop}};
    ScriptedAlerts alerts;
    std::string errors;
};

TEST_F(ScriptRunnerTest, EachAnswerGoesToItsOwnButton)
{
    ASSERT_EQ(run("answer other\nanswer alternate\nanswer default\n"), 0) << errors;
    const AlertRequest alert{"Title", "Message", "OK", "Cancel", "More"};
    EXPECT_EQ(alerts.runModal(alert), Alerts::otherReturn);
    EXPECT_EQ(alerts.runModal(alert), Alerts::alternateReturn);
    EXPECT_EQ(alerts.runModal(alert), Alerts::defaultReturn);
}

TEST_F(ScriptRunnerTest, AWordTooManyOrTooFewStopsTheScriptWithTheUsage)
{
    EXPECT_EQ(run("wait 0\nquit now\n"), 2);
    EXPECT_EQ(errors, "script line 2: quit takes nothing after it\n");
    EXPECT_EQ(run("answer-file\n"), 2);
    EXPECT_EQ(errors, "script line 1: answer-file takes PATH|cancel\n");
    EXPECT_EQ(run("set-state a 1 2\n"), 2);
    EXPECT_EQ(errors, "script line 1: set-state takes OUTLET N\n");
}

} // namespace
} // namespace vexto
