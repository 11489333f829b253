#include "foundation/PlistValue.hpp"

#include <gtest/gtest.h>

#include <limits>

namespace vexto {
namespace {

TEST(PlistValueTest, StringsAnswerIntegerValueWithTheirLeadingNumber)
{
    EXPECT_EQ(PlistValue("  -42 apples").integerValue(), -42);
    EXPECT_EQ(PlistValue("+7").integerValue(), 7);
    EXPECT_EQ(PlistValue("\n\t48").integerValue(), 48);
    EXPECT_EQ(PlistValue("apples").integerValue(), 0);
    EXPECT_EQ(PlistValue("").integerValue(), 0);
    EXPECT_EQ(PlistValue("- 3").integerValue(), 0);
    EXPECT_EQ(PlistValue("99999999999999999999").integerValue(),
              std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(PlistValue("-99999999999999999999").integerValue(),
              std::numeric_limits<std::int64_t>::min());
}

TEST(PlistValueTest, StringsAnswerBoolValueByTheirFirstSignificantCharacter)
{
    for (const char* yes : {"YES", "yes", "true", "T", "1", "  9", "-0001", "+5x"}) {
        EXPECT_EQ(PlistValue(yes).boolValue(), true) << yes;
    }
    for (const char* no : {"NO", "false", "0", "00", "", "  ", "-", "x1", "0.5"}) {
        EXPECT_EQ(PlistValue(no).boolValue(), false) << no;
    }
}

TEST(PlistValueTest, NumbersAndBooleansConvertLikeThePlatformsNumbers)
{
    EXPECT_EQ(PlistValue(2.9).integerValue(), 2);
    EXPECT_EQ(PlistValue(-2.9).integerValue(), -2);
    EXPECT_EQ(PlistValue(1e300).integerValue(), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(PlistValue(true).integerValue(), 1);
    EXPECT_EQ(PlistValue(0.1).boolValue(), true);
    EXPECT_EQ(PlistValue(0).boolValue(), false);
    EXPECT_EQ(PlistValue(0.2f).floatValue(), 0.2f);
    EXPECT_DOUBLE_EQ(*PlistValue(" 2.5e1 seconds").doubleValue(), 25.0);
    EXPECT_DOUBLE_EQ(*PlistValue("-.5").doubleValue(), -0.5);
    EXPECT_DOUBLE_EQ(*PlistValue("inf").doubleValue(), 0.0);
}

TEST(PlistValueTest, ContainersDataAndDatesDoNotAnswerSoCallersUseTheirDefault)
{
    const PlistValue silent[] = {PlistValue(PlistData{1, 2}), PlistValue(PlistArray{1}),
                                 PlistValue(PlistDictionary{{"a", 1}}), PlistValue(PlistDate{5})};
    for (const PlistValue& value : silent) {
        EXPECT_FALSE(value.integerValue());
        EXPECT_FALSE(value.boolValue());
        EXPECT_FALSE(value.doubleValue());
    }
}

TEST(PlistValueTest, CopiesAreDeep)
{
    PlistDictionary original{{"Exceptions", PlistArray{"Finder"}}};
    PlistDictionary copy = original;
    copy["Exceptions"].asArray()->push_back("Safari");
    EXPECT_EQ(original.at("Exceptions").asArray()->size(), 1u);
    EXPECT_EQ(copy.at("Exceptions").asArray()->size(), 2u);
    EXPECT_NE(PlistValue(original), PlistValue(copy));
}

TEST(PlistValueTest, IntegersAndRealsAreDistinctValues)
{
    EXPECT_NE(PlistValue(1), PlistValue(1.0));
    EXPECT_NE(PlistValue(1), PlistValue(true));
    EXPECT_NE(PlistValue("1"), PlistValue(1));
}

} // namespace
} // namespace vexto
