#include "platform/linux/ProcessRegister.hpp"

#include "../foundation/TestSupport.hpp"
#include "platform/linux/ProcProcessList.hpp"
#include "system/ProcessPlatform.hpp"
#include "system/QLVXProcess.hpp"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vexto {
namespace {

// A name of this test process's own (at most 15 bytes, as the kernel keeps them): the walks see
// every process of the user, other tests running beside this one included.
const std::string registeredName = "vxr-" + std::to_string(::getpid());
const char* const registered = registeredName.c_str();

// A process of the test that enters itself under a name and waits; `enters` false makes one
// that only bears the name.
class Entrant {
public:
    Entrant(const char* name, bool enters, const char* entry = registered)
    {
        int ready[2];
        if (::pipe(ready) != 0) {
            return;
        }
        pid_ = ::fork();
        if (pid_ == 0) {
            ::prctl(PR_SET_NAME, name);
            const int fd = enters ? ProcessRegister::enter(entry) : 0;
            const char answer = fd >= 0 ? 'y' : 'n';
            (void)!::write(ready[1], &answer, 1);
            for (;;) {
                ::pause();
            }
        }
        ::close(ready[1]);
        char answer = 0;
        entered_ = ::read(ready[0], &answer, 1) == 1 && answer == 'y';
        ::close(ready[0]);
    }
    ~Entrant() { end(); }
    Entrant(const Entrant&) = delete;
    Entrant& operator=(const Entrant&) = delete;

    void end()
    {
        if (pid_ > 0) {
            ::kill(pid_, SIGKILL);
            ::waitpid(pid_, nullptr, 0);
            pid_ = -1;
        }
    }
    int pid() const { return pid_; }
    bool entered() const { return entered_; }

private:
    int pid_ = -1;
    bool entered_ = false;
};

class ProcessRegisterTest : public ::testing::Test {
protected:
    ProcessRegisterTest()
    {
        ::chmod(runtime.path().c_str(), 0700);
        const char* old = std::getenv("XDG_RUNTIME_DIR");
        saved = old != nullptr ? std::optional<std::string>(old) : std::nullopt;
        ::setenv("XDG_RUNTIME_DIR", runtime.path().c_str(), 1);
        list.setRegisteredNames({registered});
        ProcessPlatform::install(&list, &list, nullptr);
    }
    ~ProcessRegisterTest() override
    {
        ProcessPlatform::uninstall();
        if (saved) {
            ::setenv("XDG_RUNTIME_DIR", saved->c_str(), 1);
        } else {
            ::unsetenv("XDG_RUNTIME_DIR");
        }
    }
    std::string folder() const { return runtime.file("vexto"); }
    std::vector<int> found(const char* name = registered)
    {
        std::vector<int> pids;
        for (QLVXProcess& process : QLVXProcess::everyProcessNamed(name)) {
            pids.push_back(process.PID());
        }
        return pids;
    }

    test::TemporaryFolder runtime;
    std::optional<std::string> saved;
    ProcProcessList list;
};

TEST_F(ProcessRegisterTest, WithoutARegisterTheListIsWalkedOnceAndTheRegisterMade)
{
    Entrant bearer(registered, false);
    EXPECT_EQ(ProcessRegister::folder(false), std::nullopt);
    EXPECT_EQ(found(), std::vector<int>{bearer.pid()}) << "found by the walk";
    ASSERT_TRUE(std::filesystem::is_directory(folder()));
    EXPECT_EQ(std::filesystem::status(folder()).permissions(), std::filesystem::perms::owner_all);
    EXPECT_TRUE(found().empty()) << "from now on the register answers: nobody entered";
}

TEST_F(ProcessRegisterTest, EntrantsAreFoundUntilTheyEndAndTheirEntriesGoWithThem)
{
    Entrant first(registered, true);
    Entrant second(registered, true);
    Entrant bearer(registered, false);
    ASSERT_TRUE(first.entered() && second.entered());
    const std::vector<int> both{std::min(first.pid(), second.pid()),
                                std::max(first.pid(), second.pid())};
    EXPECT_EQ(found(), both);
    EXPECT_EQ(QLVXProcess::firstProcessNamed(registered)->PID(), both[0]);
    EXPECT_TRUE(found("vexto-other-name").empty());

    // Entered, but named otherwise now: the name still decides.
    Entrant renamed("vexto-renamed", true);
    EXPECT_EQ(found(), both);

    first.end();
    EXPECT_EQ(found(), std::vector<int>{second.pid()});
    EXPECT_FALSE(
        std::filesystem::exists(folder() + "/" + registered + "." + std::to_string(first.pid())))
        << "what an ended process left is removed";
}

TEST_F(ProcessRegisterTest, OnlyAPrivateFolderIsTrustedAndStrayFilesAreIgnored)
{
    Entrant entrant(registered, true);
    ASSERT_TRUE(entrant.entered());
    for (const std::string& stray : {registeredName + ".12a", "." + registeredName + ".1",
                                     registeredName + ".", std::string("x")}) {
        std::ofstream(folder() + "/" + stray) << "1";
    }
    std::filesystem::create_symlink("/dev/null", folder() + "/" + registeredName + ".1");
    EXPECT_EQ(found(), std::vector<int>{entrant.pid()});

    // A folder others may enter could hold anyone's entries: the list is walked instead.
    ::chmod(folder().c_str(), 0777);
    EXPECT_EQ(ProcessRegister::processesNamed(registered), std::nullopt);
    Entrant bearer(registered, false);
    EXPECT_EQ(found().size(), 2u) << "the walk finds the entrant and the bearer";
    ::chmod(folder().c_str(), 0700);
}

} // namespace
} // namespace vexto
