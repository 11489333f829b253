#include "BusReconnection.hpp"

#include "platform/fake/FakeRunLoop.hpp"

#include <gtest/gtest.h>

#include <vector>

namespace vexto {
namespace {

class BusReconnectionTest : public ::testing::Test {
protected:
    FakeRunLoop loop;
    int failuresBeforeSuccess = 1000;
    std::vector<double> tries;
    std::vector<double> successes;
    std::vector<double> givenUp;
    BusReconnection reconnection{loop,
                                 [this] {
                                     tries.push_back(loop.now());
                                     return static_cast<int>(tries.size()) > failuresBeforeSuccess;
                                 },
                                 [this] { successes.push_back(loop.now()); },
                                 [this] {
                                     givenUp.push_back(loop.now());
                                 }};
};

TEST_F(BusReconnectionTest, TriesLessOftenEachTimeThenGivesUpOnce)
{
    reconnection.connectionLost();
    reconnection.connectionLost(); // a second loss while trying changes nothing
    loop.advance(60);
    EXPECT_EQ(tries, (std::vector<double>{0.25, 0.75, 1.75, 3.75, 7.75}));
    EXPECT_EQ(givenUp, std::vector<double>{7.75});
    EXPECT_TRUE(successes.empty());
}

TEST_F(BusReconnectionTest, ABusThatComesBackEndsTheTriesAndALaterLossStartsAfresh)
{
    failuresBeforeSuccess = 2;
    reconnection.connectionLost();
    loop.advance(60);
    EXPECT_EQ(successes, std::vector<double>{1.75});
    EXPECT_EQ(tries.size(), 3u);

    tries.clear();
    failuresBeforeSuccess = 0;
    reconnection.connectionLost();
    loop.advance(60);
    EXPECT_EQ(tries, std::vector<double>{60.25}) << "the first wait is the short one again";
    EXPECT_EQ(successes.size(), 2u);
    EXPECT_TRUE(givenUp.empty());
}

} // namespace
} // namespace vexto
