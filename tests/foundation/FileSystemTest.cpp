#include "foundation/FileSystem.hpp"

#include "TestSupport.hpp"
#include "foundation/FileSystemCalls.hpp"

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vexto {
namespace {

std::size_t entriesIn(const std::string& folder)
{
    std::size_t count = 0;
    for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(folder)) {
        ++count;
    }
    return count;
}

TEST(FileSystemTest, AtomicWriteReplacesTheFileAndLeavesNothingBehind)
{
    test::TemporaryFolder folder;
    const std::string path = folder.file("Settings.plist");
    ASSERT_TRUE(FileSystem::writeFileAtomically(path, test::bytesOf("first")));
    ASSERT_TRUE(FileSystem::writeFileAtomically(path, test::bytesOf("second")));
    EXPECT_EQ(test::readText(path), "second");
    EXPECT_EQ(entriesIn(folder.path()), 1u);
    struct stat info {};
    ASSERT_EQ(::stat(path.c_str(), &info), 0);
    EXPECT_TRUE(info.st_mode & S_IRGRP) << "the file keeps the usual mode, not the temporary one";
}

TEST(FileSystemTest, AFailedWriteLeavesTheOldFileUntouched)
{
    test::TemporaryFolder folder;
    const std::string path = folder.file("Settings.plist");
    ASSERT_TRUE(FileSystem::writeFileAtomically(path, test::bytesOf("old settings")));

    // The disk fills up mid-write: the file-size limit makes write() fail with EFBIG.
    const auto previous = std::signal(SIGXFSZ, SIG_IGN);
    rlimit saved{};
    ::getrlimit(RLIMIT_FSIZE, &saved);
    rlimit small = saved;
    small.rlim_cur = 4;
    ::setrlimit(RLIMIT_FSIZE, &small);
    const bool written = FileSystem::writeFileAtomically(path, test::bytesOf("new settings"));
    ::setrlimit(RLIMIT_FSIZE, &saved);
    std::signal(SIGXFSZ, previous);

    EXPECT_FALSE(written);
    EXPECT_EQ(test::readText(path), "old settings");
    EXPECT_EQ(entriesIn(folder.path()), 1u);

    // The target cannot be replaced (it is a folder): the temporary file is removed again.
    const std::string folderTarget = folder.file("Layouts");
    std::filesystem::create_directory(folderTarget);
    test::writeText(folderTarget + "/keep", "x");
    EXPECT_FALSE(FileSystem::writeFileAtomically(folderTarget, test::bytesOf("x")));
    EXPECT_EQ(entriesIn(folder.path()), 2u);
}

TEST(FileSystemTest, AReadOnlyFolderRefusesTheWriteAndKeepsTheOldFile)
{
    test::TemporaryFolder folder;
    const std::string path = folder.file("Settings.plist");
    ASSERT_TRUE(FileSystem::writeFileAtomically(path, test::bytesOf("old settings")));
    ASSERT_EQ(::chmod(folder.path().c_str(), 0555), 0);
    // Root ignores folder permissions, so the write is tried as an unprivileged user.
    const pid_t child = ::fork();
    if (child == 0) {
        if (::geteuid() == 0 && ::setuid(65534) != 0) {
            ::_exit(3);
        }
        ::_exit(FileSystem::writeFileAtomically(path, test::bytesOf("new")) ? 1 : 0);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    ::chmod(folder.path().c_str(), 0755);
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0) << "the write should have failed";
    EXPECT_EQ(test::readText(path), "old settings");
}

TEST(FileSystemTest, EveryFailingStepOfAnAtomicWriteLeavesTheOldFileAndNothingElse)
{
    for (auto step :
         {test::FailingStep::Create, test::FailingStep::Write, test::FailingStep::SyncFile,
          test::FailingStep::Rename, test::FailingStep::SyncFolder}) {
        for (int error : {ENOSPC, EIO, EACCES}) {
            test::TemporaryFolder folder;
            const std::string path = folder.file("Settings.plist");
            ASSERT_TRUE(FileSystem::writeFileAtomically(path, test::bytesOf("old settings")));
            {
                test::FailingFileSystemCalls failing(step, error);
                EXPECT_FALSE(FileSystem::writeFileAtomically(path, test::bytesOf("new")));
                EXPECT_EQ(failing.failures(), 1) << int(step);
            }
            EXPECT_EQ(test::readText(path), "old settings") << int(step) << " " << error;
            EXPECT_EQ(entriesIn(folder.path()), 1u) << int(step) << " " << error;
        }
    }
    // With no file before, a save whose folder cannot be flushed leaves no file either.
    test::TemporaryFolder folder;
    test::FailingFileSystemCalls failing(test::FailingStep::SyncFolder, EIO);
    EXPECT_FALSE(FileSystem::writeFileAtomically(folder.file("new.plist"), test::bytesOf("x")));
    EXPECT_EQ(entriesIn(folder.path()), 0u);
}

TEST(FileSystemTest, AWriteThroughLinksReplacesTheFileTheyEndAtAndKeepsTheLinks)
{
    test::TemporaryFolder home;
    test::TemporaryFolder dotfiles;
    const std::string real = dotfiles.file("vexto.plist");
    test::writeText(real, "old");
    // Settings.plist -> relative link in the same folder -> absolute link into the dotfiles.
    std::filesystem::create_symlink(real, home.file("middle"));
    std::filesystem::create_symlink("middle", home.file("Settings.plist"));

    ASSERT_TRUE(FileSystem::writeFileAtomically(home.file("Settings.plist"), test::bytesOf("new")));
    EXPECT_EQ(test::readText(real), "new");
    EXPECT_TRUE(std::filesystem::is_symlink(home.file("Settings.plist")));
    EXPECT_TRUE(std::filesystem::is_symlink(home.file("middle")));
    EXPECT_EQ(entriesIn(home.path()), 2u);
    EXPECT_EQ(entriesIn(dotfiles.path()), 1u) << "the temporary file went beside the real one";

    // A link to a file not there yet creates it where the link points.
    std::filesystem::remove(real);
    ASSERT_TRUE(FileSystem::writeFileAtomically(home.file("Settings.plist"), test::bytesOf("x")));
    EXPECT_EQ(test::readText(real), "x");

    // Loops, of one link or of two, refuse the write and stay as they were.
    std::filesystem::create_symlink("self", home.file("self"));
    std::filesystem::create_symlink("b", home.file("a"));
    std::filesystem::create_symlink("a", home.file("b"));
    for (const char* name : {"self", "a"}) {
        EXPECT_FALSE(FileSystem::writeFileAtomically(home.file(name), test::bytesOf("x")));
        EXPECT_EQ(FileSystem::endOfLinks(home.file(name)), std::nullopt);
    }
    EXPECT_EQ(entriesIn(home.path()), 5u);
    EXPECT_EQ(std::filesystem::read_symlink(home.file("a")), "b");
}

TEST(FileSystemTest, ReadsWithinTheBoundOnly)
{
    test::TemporaryFolder folder;
    test::writeText(folder.file("small"), "12345");
    EXPECT_EQ(FileSystem::readFile(folder.file("small"), 5), test::bytesOf("12345"));
    EXPECT_FALSE(FileSystem::readFile(folder.file("small"), 4));
    EXPECT_FALSE(FileSystem::readFile(folder.path(), 100));
    EXPECT_FALSE(FileSystem::readFile(folder.file("missing"), 100));
}

TEST(FileSystemTest, PathsJoinAndSplitOnSingleSlashes)
{
    EXPECT_EQ(FileSystem::join("/a/", "/b"), "/a/b");
    EXPECT_EQ(FileSystem::join("/", "b"), "/b");
    EXPECT_EQ(FileSystem::folderOf("/a/b/"), "/a");
    EXPECT_EQ(FileSystem::folderOf("/a"), "/");
    EXPECT_EQ(FileSystem::folderOf("file"), ".");
}

} // namespace
} // namespace vexto
