#include "DaemonLog.hpp"

#include "../foundation/TestSupport.hpp"

#include <gtest/gtest.h>

#include <filesystem>

namespace vexto {
namespace {

// However many lines come, the log and its one old file stay within their size; a line said again
// and again is written once and counted; a link planted in the log's place is never written
// through.
TEST(DaemonLogTest, BoundedCountedAndNeverThroughALink)
{
    test::TemporaryFolder folder;
    const std::string path = folder.file("vextodaemon.log");
    {
        DaemonLog log(path, 1000);
        log.write("started");
        for (int i = 0; i < 5000; ++i) {
            log.write("asked to update");
        }
        log.write("quits");
        for (int i = 0; i < 200; ++i) {
            log.write("line " + std::to_string(i));
        }
    }
    EXPECT_LE(std::filesystem::file_size(path), 1000u);
    EXPECT_LE(std::filesystem::file_size(path + ".old"), 1000u);
    const std::string all = test::readText(path + ".old") + test::readText(path);
    EXPECT_EQ(all.find("asked to update\nasked to update"), std::string::npos);
    EXPECT_NE(test::readText(path).find("line 199\n"), std::string::npos);

    test::TemporaryFolder other;
    const std::string target = other.file("dotfile");
    test::writeText(target, "precious\n");
    std::filesystem::create_symlink(target, folder.file("linked.log"));
    {
        DaemonLog log(folder.file("linked.log"));
        log.write("written through a link?");
        log.write("written through a link?");
    }
    EXPECT_EQ(test::readText(target), "precious\n");

    const std::string counted = folder.file("counted.log");
    {
        DaemonLog log(counted);
        log.write("a");
        log.write("a");
        log.write("a");
    }
    EXPECT_EQ(test::readText(counted), "a\nlast line repeated 2 times\n");
}

} // namespace
} // namespace vexto
