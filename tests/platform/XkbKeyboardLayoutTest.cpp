#include "platform/linux/XkbKeyboardLayout.hpp"

#include "../foundation/TestSupport.hpp"
#include "XvfbServer.hpp"
#include "hotkeys/KeyLabels.hpp"
#include "platform/linux/DeferredKeyboardLayout.hpp"
#include "platform/linux/EvdevKeyCodes.hpp"

#include <gtest/gtest.h>

namespace vexto {
namespace {

std::unique_ptr<XkbKeyboardLayout> layout(std::string name, std::string variant = {},
                                          std::string model = "pc104")
{
    auto keyboard =
        XkbKeyboardLayout::fromNames({std::move(model), std::move(name), std::move(variant), ""});
    EXPECT_TRUE(keyboard);
    return keyboard;
}

TEST(XkbKeyboardLayoutTest, KeysReadTheirUnshiftedCharacterFromTheLayout)
{
    const auto us = layout("us");
    const auto german = layout("de");
    EXPECT_EQ(us->characterForKeyCode(0x00), u'a');
    EXPECT_EQ(us->characterForKeyCode(0x29), u';') << "the key right of L";
    EXPECT_EQ(german->characterForKeyCode(0x29), u'\u00F6');
    EXPECT_EQ(german->characterForKeyCode(0x10), u'z') << "Y and Z change places";
    // The labels the pane shows for them.
    EXPECT_EQ(KRVXStringForKeyCode(0x00, false, us.get()), "A");
    EXPECT_EQ(KRVXStringForKeyCode(0x29, false, german.get()), "\u00D6");
}

TEST(XkbKeyboardLayoutTest, TheDeferredLayoutIsCompiledOnceOnTheFirstQuestion)
{
    int compiled = 0;
    const DeferredKeyboardLayout deferred([&] {
        ++compiled;
        return layout("de");
    });
    EXPECT_EQ(compiled, 0);
    EXPECT_EQ(deferred.characterForKeyCode(0x10), u'z');
    EXPECT_EQ(deferred.characterForKeyCode(0x00), u'a');
    EXPECT_EQ(compiled, 1);

    const DeferredKeyboardLayout none([] { return std::unique_ptr<XkbKeyboardLayout>(); });
    EXPECT_EQ(none.characterForKeyCode(0x00), std::nullopt) << "no layout: no characters";
}

TEST(XkbKeyboardLayoutTest, DeadKeysGiveNothingAndTheKeypadGivesDigits)
{
    const auto german = layout("de");
    EXPECT_FALSE(german->characterForKeyCode(0x18)) << "dead acute";
    EXPECT_EQ(layout("de", "nodeadkeys")->characterForKeyCode(0x18), u'\u00B4');
    EXPECT_FALSE(layout("fr")->characterForKeyCode(0x21)) << "dead circumflex";
    EXPECT_EQ(layout("us")->characterForKeyCode(0x53), u'1') << "keypad 1 with Num Lock";
    EXPECT_FALSE(layout("us")->characterForKeyCode(0x3F)) << "no evdev code under X11";
}

TEST(XkbKeyboardLayoutTest, IsoKeyboardsSwapTheTwoKeysBesideTheFirstRow)
{
    const auto iso = layout("de", "", "pc105");
    // 0x0A is the key left of 1 there (dead circumflex in German: nothing) and 0x32 the key
    // beside the left Shift ("<").
    EXPECT_EQ(iso->characterForKeyCode(0x32), u'<');
    EXPECT_FALSE(iso->characterForKeyCode(0x0A));
    const auto ansi = layout("de", "", "pc104");
    EXPECT_EQ(ansi->characterForKeyCode(0x0A), u'<');
}

TEST(XkbKeyboardLayoutTest, OneTableReadsBothWays)
{
    for (std::uint16_t evdev = 0; evdev < 256; ++evdev) {
        if (const auto key = EvdevKeyCodes::virtualKeyForEvdev(evdev)) {
            EXPECT_EQ(EvdevKeyCodes::evdevForVirtualKey(*key), evdev) << evdev;
        }
    }
    EXPECT_EQ(EvdevKeyCodes::evdevForVirtualKey(0x29), 39);
    EXPECT_EQ(EvdevKeyCodes::virtualKeyForEvdev(15), 0x30) << "Tab";
}

TEST(XkbKeyboardLayoutTest, TheEnvironmentNamesTheLayout)
{
    ::setenv("XKB_DEFAULT_LAYOUT", "de", 1);
    const auto fromEnvironment = XkbKeyboardLayout::fromEnvironment();
    ::unsetenv("XKB_DEFAULT_LAYOUT");
    ASSERT_TRUE(fromEnvironment);
    EXPECT_EQ(fromEnvironment->characterForKeyCode(0x29), u'\u00F6');
    EXPECT_FALSE(XkbKeyboardLayout::fromNames({"", "no-such-layout", "", ""}));
}

// Without the variables, the system's file names the layout, in the shell's quoting.
TEST(XkbKeyboardLayoutTest, TheSystemsKeyboardFileNamesTheLayoutOtherwise)
{
    test::TemporaryFolder folder;
    const std::string file = folder.file("keyboard");
    test::writeText(file, "# KEYBOARD CONFIGURATION FILE\nXKBMODEL=\"pc105\"\nXKBLAYOUT='de'\n"
                          "XKBVARIANT=\"\"\nXKBOPTIONS=\"\"\n\nBACKSPACE=\"guess\"\n");
    const char* variable = std::getenv("XKB_DEFAULT_LAYOUT");
    const std::string set = variable != nullptr ? variable : "";
    ::unsetenv("XKB_DEFAULT_LAYOUT");
    const auto german = XkbKeyboardLayout::fromEnvironment(file);
    const auto fallback = XkbKeyboardLayout::fromEnvironment(folder.file("missing"));
    if (variable != nullptr) {
        ::setenv("XKB_DEFAULT_LAYOUT", set.c_str(), 1);
    }
    ASSERT_TRUE(german);
    EXPECT_EQ(german->characterForKeyCode(0x10), u'z');
    EXPECT_EQ(german->characterForKeyCode(0x32), u'<') << "an ISO keyboard, by its model";

    ASSERT_TRUE(fallback);
    EXPECT_EQ(fallback->characterForKeyCode(0x10), u'y');
}

TEST(XkbKeyboardLayoutTest, TheXServersLayoutIsReadWhenThereIsOne)
{
    test::XvfbServer server;
    if (server.display().empty()) {
        GTEST_SKIP() << "no Xvfb to start (package xvfb)";
    }
    ASSERT_TRUE(server.waitUntilReady());
    const auto fromServer = XkbKeyboardLayout::fromXServer(server.display());
    ASSERT_TRUE(fromServer);
    EXPECT_EQ(fromServer->characterForKeyCode(0x00), u'a');
    EXPECT_EQ(fromServer->characterForKeyCode(0x29), u';');
    EXPECT_FALSE(XkbKeyboardLayout::fromXServer(":987"));
}

} // namespace
} // namespace vexto
