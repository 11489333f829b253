#include "platform/linux/LinuxDesktop.hpp"

#include "../foundation/TestSupport.hpp"
#include "foundation/Log.hpp"
#include "platform/linux/PollRunLoop.hpp"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

namespace vexto {
namespace {

// A bundle whose executable is the given shell script, and an xdg-open on the PATH that writes
// down every call, so that a test sees whether the desktop's opener was asked.
class LinuxDesktopTest : public ::testing::Test {
protected:
    LinuxDesktopTest()
    {
        const std::string stubs = folder.file("bin");
        std::filesystem::create_directories(stubs);
        writeScript(stubs + "/xdg-open", "echo \"$@\" >> " + folder.file("opener-calls"));
        savedPath_ = std::getenv("PATH") != nullptr ? std::getenv("PATH") : "";
        ::setenv("PATH", (stubs + ":" + savedPath_).c_str(), 1);
        Log::setSink([this](const std::string& line) { logged.push_back(line); });
        desktop.setApplicationEndedHandler(
            [this](const ApplicationEnd& end) { ends.push_back(end); });
    }
    ~LinuxDesktopTest() override
    {
        ::setenv("PATH", savedPath_.c_str(), 1);
        Log::clearSink();
    }

    static void writeScript(const std::string& path, const std::string& body)
    {
        test::writeText(path, "#!/bin/sh\n" + body + "\n");
        std::filesystem::permissions(path, std::filesystem::perms::owner_all);
    }

    std::string bundle(const std::string& name, const std::string& info, const std::string& script)
    {
        const std::string path = folder.file(name + ".app");
        std::filesystem::create_directories(path + "/Contents/Linux");
        test::writeText(path + "/Contents/Info.plist", info);
        if (!script.empty()) {
            writeScript(path + "/Contents/Linux/" + name, script);
        }
        return path;
    }
    static std::string infoNaming(const std::string& executable)
    {
        return "<plist><dict><key>CFBundleExecutable</key><string>" + executable +
               "</string></dict></plist>";
    }

    bool runUntilEnds(std::size_t count)
    {
        for (int turn = 0; turn < 250 && ends.size() < count; ++turn) {
            loop.runFor(0.02);
        }
        return ends.size() == count;
    }

    test::TemporaryFolder folder;
    PollRunLoop loop;
    LinuxDesktop desktop{&loop};
    std::vector<std::string> logged;
    std::vector<ApplicationEnd> ends;

private:
    std::string savedPath_;
};

TEST_F(LinuxDesktopTest, ABundleThatCannotRunIsAFailedLaunchAndNeverGoesToTheOpener)
{
    const std::string broken[] = {
        bundle("noname", "<plist><dict/></plist>", "exit 0"),
        bundle("damaged", "<plist><dict><key>", "exit 0"),
        bundle("slashed", infoNaming("../../x"), "exit 0"),
        bundle("missing", infoNaming("missing"), ""),
    };
    for (const std::string& path : broken) {
        SCOPED_TRACE(path);
        EXPECT_FALSE(desktop.openFile(path, std::nullopt, false));
    }
    EXPECT_FALSE(std::filesystem::exists(folder.file("opener-calls")));
    ASSERT_EQ(logged.size(), 5u);
    EXPECT_EQ(logged[0],
              "[Vexto] could not start " + broken[0] + ": its Info.plist names no executable");
    EXPECT_EQ(logged[1], "[Vexto] could not use " + broken[1] +
                             "/Contents/Info.plist (not a property list): the bundle's name, "
                             "version and executable are unknown");
    EXPECT_EQ(logged[4], "[Vexto] could not start " + broken[3] +
                             "/Contents/Linux/missing: No such file or directory");

    // A plain file still opens with the desktop's opener.
    test::writeText(folder.file("notes.txt"), "x");
    EXPECT_TRUE(desktop.openFile(folder.file("notes.txt"), std::nullopt, false));
    for (int turn = 0; turn < 250 && !std::filesystem::exists(folder.file("opener-calls"));
         ++turn) {
        loop.runFor(0.02);
    }
    EXPECT_EQ(test::readText(folder.file("opener-calls")), "file://" + folder.file("notes.txt\n"));
}

TEST_F(LinuxDesktopTest, TheEndOfAStartedProgramIsReportedWithItsCause)
{
    const std::string crashes = bundle("crashes", infoNaming("crashes"), "kill -SEGV $$");
    const std::string fails = bundle("fails", infoNaming("fails"), "exit 3");
    ASSERT_TRUE(desktop.openFile(crashes, std::nullopt, false));
    ASSERT_TRUE(runUntilEnds(1));
    ASSERT_TRUE(desktop.openFile(fails, std::nullopt, false));
    ASSERT_TRUE(runUntilEnds(2));
    EXPECT_EQ(ends[0].path, crashes);
    EXPECT_EQ(ends[0].cause, "SIGSEGV");
    EXPECT_EQ(ends[1].path, fails);
    EXPECT_EQ(ends[1].cause, "exit status 3");
    EXPECT_FALSE(ends[0].succeeded || ends[1].succeeded);
    EXPECT_GT(ends[1].pid, 0);
    EXPECT_NE(ends[0].pid, ends[1].pid);
}

} // namespace
} // namespace vexto
