#include "xserver/NetWmIcon.hpp"

#include <gtest/gtest.h>

#include <vector>

namespace vexto {
namespace {

// A square picture of one colour.
void add(std::vector<std::uint32_t>& values, std::uint32_t side, std::uint32_t argb)
{
    values.push_back(side);
    values.push_back(side);
    values.insert(values.end(), std::size_t(side) * side, argb);
}

TEST(NetWmIconTest, TheSizeNearestTheItemIsTakenWithItsAlphaKeptStraight)
{
    std::vector<std::uint32_t> values;
    add(values, 16, 0xFF0000FF);
    add(values, 64, 0x80FF8000);
    add(values, 32, 0xFF00FF00);
    const auto at = [&](int preferred) {
        return NetWmIcon::nearest(values, preferred)->width;
    };
    EXPECT_EQ(at(32), 32);
    EXPECT_EQ(at(20), 32) << "the smallest that is big enough";
    EXPECT_EQ(at(10), 16);
    EXPECT_EQ(at(200), 64) << "else the biggest";
    const auto half = NetWmIcon::nearest(values, 64);
    ASSERT_TRUE(half);
    EXPECT_EQ(half->rgba.size(), 64u * 64 * 4);
    EXPECT_EQ((std::vector<std::uint8_t>(half->rgba.begin(), half->rgba.begin() + 4)),
              (std::vector<std::uint8_t>{0xFF, 0x80, 0x00, 0x80}));
}

TEST(NetWmIconTest, ValuesThatHoldNoWholePictureGiveNoneAndStopTheReading)
{
    EXPECT_FALSE(NetWmIcon::nearest({}, 32));
    const std::vector<std::uint32_t> lone = {4};
    EXPECT_FALSE(NetWmIcon::nearest(lone, 32));
    std::vector<std::uint32_t> cut = {4, 4, 1, 2, 3};
    EXPECT_FALSE(NetWmIcon::nearest(cut, 32));
    // A picture that claims more than it holds, or an absurd size, ends the run: what came before
    // it still counts.
    std::vector<std::uint32_t> values;
    add(values, 2, 0xFFFFFFFF);
    values.insert(values.end(), {0xFFFFFFFF, 0xFFFFFFFF, 1, 2});
    EXPECT_EQ(NetWmIcon::nearest(values, 32)->width, 2);
    std::vector<std::uint32_t> empty = {0, 7};
    add(empty, 2, 0xFFFFFFFF);
    EXPECT_FALSE(NetWmIcon::nearest(empty, 32));
}

} // namespace
} // namespace vexto
