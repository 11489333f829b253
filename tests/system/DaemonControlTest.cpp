#include "system/DaemonControl.hpp"

#include "platform/fake/FakeDistributedNotificationCenter.hpp"

#include <gtest/gtest.h>

namespace vexto {
namespace {

using Posted = FakeDistributedNotificationCenter::Posted;

TEST(DaemonControlTest, ASamplePanelIsAskedForOnceAfterALookChange)
{
    FakeDistributedNotificationCenter center;
    DaemonControl daemon(center);
    daemon.updateDaemon();
    daemon.setUpdateDaemonWithDummyDisplay(true);
    daemon.updateDaemon();
    daemon.updateDaemon();
    const std::string name = "app.vexto.preferences: Update Daemon";
    EXPECT_EQ(center.posted(),
              (std::vector<Posted>{{name, std::nullopt}, {name, "Dummy"}, {name, std::nullopt}}));
    EXPECT_FALSE(daemon.updateDaemonWithDummyDisplay());
}

} // namespace
} // namespace vexto
