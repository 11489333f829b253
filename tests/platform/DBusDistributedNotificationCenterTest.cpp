#include "platform/linux/DBusDistributedNotificationCenter.hpp"

#include "../support/DBusSession.hpp"
#include "foundation/Log.hpp"
#include "platform/linux/PollRunLoop.hpp"
#include "platform/linux/SessionBusNotificationCenter.hpp"

#include <gtest/gtest.h>

#include <unistd.h>

namespace vexto {
namespace {

using Received = std::vector<std::pair<std::string, std::optional<std::string>>>;

class DBusDistributedNotificationCenterTest : public ::testing::Test {
protected:
    DBusDistributedNotificationCenterTest()
    {
        Log::setSink([this](const std::string& line) { logged.push_back(line); });
    }
    ~DBusDistributedNotificationCenterTest() override { Log::clearSink(); }

    void listen(DistributedNotificationCenter& center, const std::string& name, Received& into)
    {
        center.addObserver(
            &into, name,
            [&into](const std::string& posted, const std::optional<std::string>& object) {
                into.emplace_back(posted, object);
            },
            true);
    }
    // Runs the loop until `received` holds `count` notifications, for at most two seconds.
    void runUntil(const Received& received, std::size_t count)
    {
        for (int round = 0; round < 200 && received.size() < count; ++round) {
            loop.runFor(0.01);
        }
    }

    test::DBusSession session;
    PollRunLoop loop;
    std::vector<std::string> logged;
};

TEST_F(DBusDistributedNotificationCenterTest, NotificationsReachOtherConnectionsOnceWithTheirObject)
{
    ASSERT_TRUE(session.isRunning());
    DBusDistributedNotificationCenter pane(loop);
    DBusDistributedNotificationCenter daemon(loop);
    ASSERT_TRUE(pane.isConnected());
    const std::string name = "app.vexto.preferences: Update Daemon";
    Received atDaemon;
    Received atPane;
    Received unrelated;
    listen(daemon, name, atDaemon);
    listen(pane, name, atPane);
    listen(daemon, "app.vexto.preferences: Quit Daemon", unrelated);

    pane.post(name, "Dummy");
    pane.post(name, std::nullopt);
    pane.post(name, "");
    pane.post(name, "it's \"quoted\" > and 'odd'");
    runUntil(atDaemon, 4);
    runUntil(atPane, 4);
    const Received expected{
        {name, "Dummy"}, {name, std::nullopt}, {name, ""}, {name, "it's \"quoted\" > and 'odd'"}};
    EXPECT_EQ(atDaemon, expected);
    EXPECT_EQ(atPane, expected) << "the poster hears its own post once";
    EXPECT_TRUE(unrelated.empty());
    EXPECT_TRUE(logged.empty());

    // Text that is not UTF-8 never reaches the bus, and the connection stays.
    pane.post(std::string("app.vexto.preferences: Update Daemon\xff"), std::nullopt);
    EXPECT_TRUE(pane.isConnected());
}

TEST_F(DBusDistributedNotificationCenterTest, WithoutABusNotificationsStayWithinTheProcess)
{
    session.stop();
    ::setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/vexto-bus", 1);
    DBusDistributedNotificationCenter center(loop);
    EXPECT_FALSE(center.isConnected());
    ASSERT_EQ(logged.size(), 1u);
    EXPECT_EQ(logged[0].rfind("[Vexto] no session bus (", 0), 0u) << logged[0];
    Received received;
    listen(center, "n", received);
    center.post("n", "o");
    EXPECT_EQ(received, (Received{{"n", "o"}}));
}

TEST_F(DBusDistributedNotificationCenterTest, ALostBusFallsBackToTheProcessOnce)
{
    DBusDistributedNotificationCenter center(loop);
    ASSERT_TRUE(center.isConnected());
    Received received;
    listen(center, "n", received);
    session.stop();
    // The first post finds the bus gone, the second knows it already: both are delivered here.
    center.post("n", std::nullopt);
    center.post("n", "again");
    runUntil(received, 2);
    EXPECT_FALSE(center.isConnected());
    EXPECT_EQ(received, (Received{{"n", std::nullopt}, {"n", "again"}}));
    EXPECT_EQ(logged.size(), 1u);
}

TEST_F(DBusDistributedNotificationCenterTest, ThePanesCentreMeetsTheDaemonsThroughTheBusModule)
{
    ASSERT_TRUE(session.isRunning());
    SessionBusNotificationCenter pane(loop);
    DBusDistributedNotificationCenter daemon(loop);
    Received atDaemon;
    Received atPane;
    listen(daemon, "app.vexto.preferences: Quit Daemon", atDaemon);
    listen(pane, "app.vexto.preferences: Update Pane", atPane);
    pane.post("app.vexto.preferences: Quit Daemon", std::nullopt);
    daemon.post("app.vexto.preferences: Update Pane", "Dummy");
    runUntil(atDaemon, 1);
    runUntil(atPane, 1);
    EXPECT_EQ(atDaemon, (Received{{"app.vexto.preferences: Quit Daemon", std::nullopt}}));
    EXPECT_EQ(atPane, (Received{{"app.vexto.preferences: Update Pane", "Dummy"}}));
    EXPECT_TRUE(logged.empty());
}

TEST_F(DBusDistributedNotificationCenterTest, WhereNoBusCanExistTheBusModuleIsNotLoaded)
{
    session.stop();
    ::unsetenv("DBUS_SESSION_BUS_ADDRESS");
    const char* runtime = std::getenv("XDG_RUNTIME_DIR");
    const std::shared_ptr<void> restoreRuntime(
        nullptr, [saved = std::string(runtime != nullptr ? runtime : "")](void*) {
            if (!saved.empty()) {
                ::setenv("XDG_RUNTIME_DIR", saved.c_str(), 1);
            }
        });
    ::unsetenv("XDG_RUNTIME_DIR");
    if (SessionBusNotificationCenter::mayExist()) {
        GTEST_SKIP() << "this machine has a session bus socket for the user";
    }
    SessionBusNotificationCenter center(loop);
    EXPECT_EQ(logged, (std::vector<std::string>{"[Vexto] no session bus (No medium found): "
                                                "notifications stay within this process"}));
    Received received;
    listen(center, "n", received);
    center.post("n", "o");
    EXPECT_EQ(received, (Received{{"n", "o"}}));
}

} // namespace
} // namespace vexto
