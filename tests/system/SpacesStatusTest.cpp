#include "platform/fake/FakeForeignPreferences.hpp"
#include "ports/SystemVersion.hpp"
#include "system/UserDefaultsExtensions.hpp"

#include <gtest/gtest.h>

namespace vexto {
namespace {

class SpacesStatusTest : public ::testing::Test {
protected:
    ~SpacesStatusTest() override { SystemVersion::reset(); }

    std::optional<PlistDictionary> bindings()
    {
        std::optional<PlistDictionary> result;
        EXPECT_TRUE(areSpacesEnabledWithApplicationBindings(preferences, &result));
        return result;
    }

    FakeForeignPreferences preferences;
};

TEST_F(SpacesStatusTest, ApplicationsAreBoundToEverySpaceOrToTheirPlaceInTheList)
{
    preferences.domains["com.apple.spaces"] = {
        {"spaces", PlistArray{"space-a", "space-b", "space-c"}},
        {"spaces-app-bindings", PlistDictionary{{"com.Example.Mail", "space-a"},
                                                {"com.example.editor", "space-c"},
                                                {"com.example.everywhere", ""},
                                                {"com.example.gone", "space-z"}}}};
    EXPECT_EQ(bindings(), (PlistDictionary{{"com.example.mail", 2},
                                           {"com.example.editor", 4},
                                           {"com.example.everywhere", 1}}));
    EXPECT_TRUE(areSpacesEnabled(preferences));
}

TEST_F(SpacesStatusTest, MissingOrMistypedPreferencesGiveNoBindings)
{
    EXPECT_TRUE(areSpacesEnabled(preferences)) << "always on from 10.7";
    EXPECT_EQ(bindings(), std::nullopt);
    preferences.domains["com.apple.spaces"] = {{"spaces", PlistArray{}},
                                               {"spaces-app-bindings", PlistDictionary{{"a", ""}}}};
    EXPECT_EQ(bindings(), std::nullopt) << "no spaces listed";
    preferences.domains["com.apple.spaces"] = {{"spaces", PlistArray{"s"}},
                                               {"spaces-app-bindings", "s"}};
    EXPECT_EQ(bindings(), std::nullopt);
    preferences.domains["com.apple.spaces"] = {
        {"spaces", PlistArray{"s"}}, {"spaces-app-bindings", PlistDictionary{{"a", "t"}}}};
    EXPECT_EQ(bindings(), std::nullopt) << "nothing stored";
}

TEST_F(SpacesStatusTest, OlderSystemsAskTheDock)
{
    SystemVersion::setAppKitVersionNumber(1038);
    EXPECT_FALSE(areSpacesEnabled(preferences));
    preferences.domains["com.apple.dock"] = {
        {"workspaces", "YES"}, {"workspaces-app-bindings", PlistDictionary{{"Mail", 3}}}};
    std::optional<PlistDictionary> result;
    EXPECT_TRUE(areSpacesEnabledWithApplicationBindings(preferences, &result));
    EXPECT_EQ(result, (PlistDictionary{{"Mail", 3}}));
    preferences.domains["com.apple.dock"]["workspaces"] = false;
    EXPECT_FALSE(areSpacesEnabledWithApplicationBindings(preferences, &result));
    EXPECT_EQ(result, std::nullopt);
}

} // namespace
} // namespace vexto
