#include "ports/SystemVersion.hpp"

#include "system/SystemVersionChecks.hpp"

#include <gtest/gtest.h>

namespace vexto {
namespace {

TEST(SystemVersionTest, EachSystemStartsAboveTheFloorOfThePreviousOnesVersion)
{
    struct Case {
        double version;
        bool leopard, snowLeopard, lion, mountainLion;
    };
    const Case cases[] = {
        {824.99, false, false, false, false}, // the floor counts, not the fraction
        {825.0, true, false, false, false},   {949.5, true, false, false, false},
        {1038.36, true, true, false, false},  {1138.0, true, true, true, false},
        {1138.9, true, true, true, false},    {1187.0, true, true, true, true},
    };
    for (const Case& c : cases) {
        SystemVersion::setAppKitVersionNumber(c.version);
        EXPECT_EQ(KRVXSystemIsLeopardOrNewer(), c.leopard) << c.version;
        EXPECT_EQ(KRVXSystemIsSnowLeopardOrNewer(), c.snowLeopard) << c.version;
        EXPECT_EQ(KRVXSystemIsLionOrNewer(), c.lion) << c.version;
        EXPECT_EQ(KRVXSystemIsMountainLionOrNewer(), c.mountainLion) << c.version;
        EXPECT_EQ(KRVXDumbDownSpacesSupport(), c.mountainLion) << c.version;
    }
    SystemVersion::reset();
    EXPECT_TRUE(KRVXSystemIsMountainLionOrNewer()) << "the newest behaviour by default";
}

} // namespace
} // namespace vexto
