#include "settings/SettingDeclarations.hpp"

#include "../foundation/TestSupport.hpp"
#include "foundation/PropertyListCodec.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <set>

namespace vexto {
namespace {

bool holds(const PlistValue& value, SettingType type)
{
    switch (type) {
    case SettingType::Boolean:
        return value.isBoolean();
    case SettingType::Integer:
        return value.type() == PlistValue::Type::Integer;
    case SettingType::Real:
        return value.type() == PlistValue::Type::Real;
    case SettingType::String:
        return value.isString();
    case SettingType::Colour:
        return value.type() == PlistValue::Type::Data;
    case SettingType::List:
        return value.asArray() != nullptr;
    case SettingType::HotKeyTable:
        return value.isDictionary();
    }
    return false;
}

// The shipped defaults file and the declarations are written apart: a key, a type or a default
// changed in one and not the other fails here.
TEST(SettingDeclarationsTest, TheShippedDefaultsAgreeWithTheDeclarations)
{
    const auto shipped =
        PropertyListCodec::readFile(test::testData("../../resources/KRVXDefaultSettings.plist"));
    ASSERT_TRUE(shipped.value && shipped.value->isDictionary());
    for (const auto& [key, value] : *shipped.value->asDictionary()) {
        SCOPED_TRACE(key);
        const SettingDeclaration* declaration = settingdeclarations::forKey(key);
        ASSERT_NE(declaration, nullptr) << "a shipped setting nobody declares";
        EXPECT_TRUE(holds(value, declaration->type));
        if (declaration->codeDefault) {
            const auto shippedNumber = value.isBoolean()
                                           ? std::optional<double>(*value.boolValue() ? 1 : 0)
                                           : value.doubleValue();
            ASSERT_TRUE(shippedNumber);
            // Reals are stored in single precision.
            EXPECT_NEAR(*shippedNumber, *declaration->codeDefault, 1e-6);
        }
    }
}

TEST(SettingDeclarationsTest, EachKeyIsDeclaredOnceWithItsDefaultWithinItsRange)
{
    std::set<std::string_view> keys;
    for (const SettingDeclaration& declaration : settingdeclarations::all()) {
        SCOPED_TRACE(std::string(declaration.key));
        EXPECT_TRUE(keys.insert(declaration.key).second);
        if (declaration.codeDefault && declaration.type == SettingType::Boolean) {
            EXPECT_TRUE(*declaration.codeDefault == 0 || *declaration.codeDefault == 1);
        }
        if (declaration.codeDefault && declaration.minimum) {
            EXPECT_GE(*declaration.codeDefault, *declaration.minimum);
        }
        if (declaration.codeDefault && declaration.maximum) {
            EXPECT_LE(*declaration.codeDefault, *declaration.maximum);
        }
    }
    // What the pane's sliders and fields rely on, written down apart from the declarations.
    EXPECT_EQ(settingdeclarations::realDefault("Item Height"), 48);
    EXPECT_EQ(settingdeclarations::minimum("Item Height"), 12);
    EXPECT_EQ(settingdeclarations::maximum("Item Height"), 128);
    EXPECT_EQ(settingdeclarations::integerDefault("Selection Gradient"), -15);
    EXPECT_EQ(settingdeclarations::integerDefault("Font Smoothing"), 0);
    EXPECT_DOUBLE_EQ(settingdeclarations::realDefault("Accessibility API Timeout"), 0.2);
    EXPECT_TRUE(settingdeclarations::booleanDefault("Ignore Caps Lock"));
    EXPECT_TRUE(settingdeclarations::booleanDefault("Ignore Function Key"));
    EXPECT_FALSE(settingdeclarations::booleanDefault("Require Exact Modifier Key Matches"));
}

} // namespace
} // namespace vexto
