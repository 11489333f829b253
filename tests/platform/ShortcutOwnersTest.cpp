#include "../support/ChildProcess.hpp"
#include "../support/DBusSession.hpp"
#include "XvfbServer.hpp"
#include "platform/linux/ConfiguredShortcutOwners.hpp"
#include "platform/linux/DesktopShortcutOwners.hpp"
#include "platform/linux/GnomeShortcutOwners.hpp"
#include "platform/linux/GtkAccelerator.hpp"
#include "platform/linux/I3KeyBindings.hpp"
#include "platform/linux/KdeGlobalAccelOwners.hpp"
#include "platform/linux/KdeKeyBindings.hpp"
#include "platform/linux/OpenboxKeyBindings.hpp"
#include "platform/linux/X11AccessibilityStatus.hpp"
#include "platform/linux/XfceKeyBindings.hpp"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <sys/stat.h>
#include <systemd/sd-bus.h>
#include <thread>
#include <unistd.h>

namespace vexto {
namespace {

namespace fs = std::filesystem;
using Key = ShortcutBinding;
using M = ShortcutOwners::Modifier;

constexpr std::uint16_t virtualTab = 0x30;
constexpr std::uint16_t virtualLeft = 0x7B;
constexpr std::uint16_t virtualD = 0x02;

std::string config(const std::string& keyboard)
{
    return "<?xml version=\"1.0\"?>\n<openbox_config xmlns=\"http://openbox.org/3.4/rc\">\n"
           "<keyboard>\n" +
           keyboard + "</keyboard>\n</openbox_config>\n";
}

const std::string openboxDefaults = config(R"(
  <chainQuitKey>C-g</chainQuitKey>
  <keybind key="C-A-Left"><action name="GoToDesktop"><to>left</to></action></keybind>
  <keybind key="W-d"><action name="ToggleShowDesktop"/></keybind>
  <keybind key="A-Tab">
    <action name="NextWindow"><finalactions><action name="Focus"/></finalactions></action>
  </keybind>
  <keybind key="S-A-Tab"><action name="PreviousWindow"/></keybind>
  <keybind key="C-a b"><action name="Iconify"/></keybind>
  <keybind key="W-x"><keybind key="y"><action name="Close"/></keybind></keybind>
)");

TEST(OpenboxKeyBindingsTest, KeysAreReadAsOpenboxWritesThem)
{
    const std::pair<const char*, std::optional<Key>> keys[] = {
        {"A-Tab", Key{"Tab", M::alt}},
        {"S-A-Tab", Key{"Tab", M::shift | M::alt}},
        {"C-A-Left", Key{"Left", M::control | M::alt}},
        {"W-d", Key{"d", M::super}},
        {"Mod4-x", Key{"x", M::super}},
        {"M-F4", Key{"F4", M::alt}},
        {"Mod1-C-S-W-space", Key{"space", M::alt | M::control | M::shift | M::super}},
        {"C-a b", Key{"a", M::control}},
        {"Print", Key{"Print", 0}},
        {"H-x", std::nullopt},
        {"Mod3-x", std::nullopt},
        {"", std::nullopt},
    };
    for (const auto& [text, key] : keys) {
        EXPECT_EQ(OpenboxKeyBindings::parseKey(text), key) << text;
    }

    const auto bindings = OpenboxKeyBindings::parse(openboxDefaults);
    ASSERT_TRUE(bindings);
    ASSERT_EQ(bindings->size(), 6u) << "the chain quit key is no binding";
    EXPECT_EQ((*bindings)[2], (ShortcutBinding{"Tab", M::alt, "NextWindow"}));
    EXPECT_EQ((*bindings)[4], (ShortcutBinding{"a", M::control, "Iconify"}));
    EXPECT_EQ((*bindings)[5], (ShortcutBinding{"x", M::super, "Close"}))
        << "a chain is named by what it starts";
}

TEST(OpenboxKeyBindingsTest, TextsThatAreNoUsableConfigurationGiveNone)
{
    EXPECT_FALSE(OpenboxKeyBindings::parse("not xml at all"));
    EXPECT_FALSE(OpenboxKeyBindings::parse("<keyboard><keybind key=\"A-Tab\"/></keyboard>"))
        << "another document";
    EXPECT_FALSE(OpenboxKeyBindings::parse(config("<keybind key=\"A-Tab\">")));
    EXPECT_FALSE(
        OpenboxKeyBindings::parse(std::string(ConfiguredShortcutOwners::largestFile + 1, ' ')));
    // Nesting far past any configuration's is refused, not followed.
    std::string deep;
    for (int i = 0; i < 100000; ++i) {
        deep += "<a>";
    }
    EXPECT_FALSE(OpenboxKeyBindings::parse(config(deep)));
    // A document that declares entities is refused: a few hundred bytes never become gigabytes.
    const std::string laughs =
        "<?xml version=\"1.0\"?><!DOCTYPE openbox_config [<!ENTITY a \"aaaaaaaaaa\">"
        "<!ENTITY b \"&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;\"><!ENTITY c "
        "\"&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;\">"
        "<!ENTITY d \"&c;&c;&c;&c;&c;&c;&c;&c;&c;&c;\"><!ENTITY e "
        "\"&d;&d;&d;&d;&d;&d;&d;&d;&d;&d;\">"
        "<!ENTITY f \"&e;&e;&e;&e;&e;&e;&e;&e;&e;&e;\"><!ENTITY g "
        "\"&f;&f;&f;&f;&f;&f;&f;&f;&f;&f;\">"
        "<!ENTITY h \"&g;&g;&g;&g;&g;&g;&g;&g;&g;&g;\">]>"
        "<openbox_config><keyboard><keybind key=\"A-&h;\"><action name=\"Exit\"/></keybind>"
        "</keyboard></openbox_config>";
    EXPECT_FALSE(OpenboxKeyBindings::parse(laughs));
}

TEST(I3KeyBindingsTest, BindsymLinesOutsideModesAreReadWithTheirVariables)
{
    const auto bindings = I3KeyBindings::parse(R"(# i3 config
set $mod Mod4
set $mod2 Mod1
bindsym $mod+Return exec i3-sensible-terminal
bindsym $mod2+Tab focus right
bindsym --release $mod+Shift+q kill
bindsym Control+Mod3+x nop
bindcode 133 nop
mode "resize" {
        bindsym Left resize shrink width 10 px
}
bindsym $mod+r     mode "resize"
   # bindsym $mod+z commented out
)");
    ASSERT_TRUE(bindings);
    const std::vector<ShortcutBinding> expected = {
        {"Return", M::super, "exec i3-sensible-terminal"},
        {"Tab", M::alt, "focus right"},
        {"q", M::super | M::shift, "kill"},
        {"r", M::super, "mode \"resize\""},
    };
    EXPECT_EQ(*bindings, expected);
    EXPECT_EQ(I3KeyBindings::parseCombination("Ctrl+Shift+plus"),
              (ShortcutBinding{"plus", M::control | M::shift}));
    EXPECT_EQ(I3KeyBindings::parseCombination("Mod1++"), (ShortcutBinding{"+", M::alt}));
    EXPECT_FALSE(I3KeyBindings::parseCombination("Mod5+x"));
    EXPECT_FALSE(I3KeyBindings::parse(std::string("bindsym a\0b", 11))) << "not text";
    // Variables that grow with every use stay within the bound.
    std::string growing = "set $a xxxxxxxxxxxxxxxx\n";
    for (int i = 0; i < 20; ++i) {
        growing += "set $a $a$a\n";
    }
    growing += "bindsym Mod4+$a nop\n";
    EXPECT_TRUE(I3KeyBindings::parse(growing));
}

TEST(XfceKeyBindingsTest, TheCustomSetReplacesTheDefaultOneOfEachSection)
{
    const auto bindings = XfceKeyBindings::parse(R"(<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-keyboard-shortcuts" version="1.0">
  <property name="commands" type="empty">
    <property name="default" type="empty">
      <property name="&lt;Alt&gt;F2" type="string" value="xfce4-appfinder --collapsed"/>
    </property>
    <property name="custom" type="empty">
      <property name="&lt;Primary&gt;&lt;Alt&gt;t" type="string" value="exo-open --launch TerminalEmulator"/>
      <property name="override" type="bool" value="true"/>
    </property>
  </property>
  <property name="xfwm4" type="empty">
    <property name="default" type="empty">
      <property name="&lt;Alt&gt;Tab" type="string" value="cycle_windows_key"/>
      <property name="&lt;Hyper&gt;x" type="string" value="unreadable"/>
    </property>
    <property name="custom" type="empty"/>
  </property>
</channel>
)");
    ASSERT_TRUE(bindings);
    const std::vector<ShortcutBinding> expected = {
        {"Tab", M::alt, "cycle_windows_key"},
        {"t", M::control | M::alt, "exo-open --launch TerminalEmulator"},
    };
    EXPECT_EQ(*bindings, expected);
    EXPECT_FALSE(XfceKeyBindings::parse("<openbox_config/>"));
    EXPECT_FALSE(XfceKeyBindings::parse("<channel"));
}

TEST(KdeKeyBindingsTest, EachActiveShortcutOfEachActionIsReadWithItsFriendlyName)
{
    const auto bindings = KdeKeyBindings::parse(R"([kwin]
_k_friendly_name=KWin
Walk Through Windows=Alt+Tab\tMeta+Tab,Alt+Tab,Walk Through Windows
Window Close=Alt+F4,Alt+F4,Close Window
Expose=Ctrl+F9,Ctrl+F9,
Unused=none,,Nothing
[org.kde.konsole.desktop]
_launch=Ctrl+Alt+T,none,Konsole
Odd=Keypad+5,,Keypad five
)");
    ASSERT_TRUE(bindings);
    const std::vector<ShortcutBinding> expected = {
        {"Tab", M::alt, "Walk Through Windows"},
        {"Tab", M::super, "Walk Through Windows"},
        {"F4", M::alt, "Close Window"},
        {"F9", M::control, "Expose"},
    };
    EXPECT_EQ(*bindings, expected) << "_launch is a key of the group, not an action";
    EXPECT_EQ(KdeKeyBindings::parseShortcut("Meta+Shift+PgDown"),
              (ShortcutBinding{"Next", M::super | M::shift}));
    EXPECT_EQ(KdeKeyBindings::parseShortcut("Ctrl++"), (ShortcutBinding{"+", M::control}));
    EXPECT_FALSE(KdeKeyBindings::parse(std::string("a=b\0", 4)));
    EXPECT_FALSE(KdeKeyBindings::parse("[kwin]\nx=Alt+\xdd\xdd\n")) << "not UTF-8";
    EXPECT_FALSE(I3KeyBindings::parse("bindsym Mod4+\xdd nop\n")) << "not UTF-8";
}

// Key codes as a US keymap has them.
std::optional<unsigned> usKey(const std::string& keysym)
{
    static const std::map<std::string, unsigned> codes = {
        {"Tab", 23}, {"Left", 113}, {"d", 40}, {"a", 38}, {"x", 53}};
    const auto found = codes.find(keysym);
    return found != codes.end() ? std::optional(found->second) : std::nullopt;
}

class TemporaryFolder {
public:
    TemporaryFolder()
    {
        char pattern[] = "/tmp/vexto-openbox-XXXXXX";
        path_ = ::mkdtemp(pattern);
    }
    ~TemporaryFolder() { fs::remove_all(path_); }
    const fs::path& path() const { return path_; }
    void write(const fs::path& relative, const std::string& text) const
    {
        fs::create_directories((path_ / relative).parent_path());
        std::ofstream(path_ / relative) << text;
    }

private:
    fs::path path_;
};

TEST(ConfiguredShortcutOwnersTest, TheFirstFileThereNamesTheOwnerAndIsReadAgainWhenItChanges)
{
    TemporaryFolder folder;
    const fs::path user = folder.path() / "home/openbox/rc.xml";
    const fs::path system = folder.path() / "etc/openbox/rc.xml";
    folder.write("etc/openbox/rc.xml", openboxDefaults);
    ConfiguredShortcutOwners owners("Openbox", {user, system}, &OpenboxKeyBindings::parse, usKey);

    const ShortcutOwner altTab = owners.ownerOf(virtualTab, M::alt);
    EXPECT_EQ(altTab, (ShortcutOwner{ShortcutOwner::Answer::Taken, "Openbox", "NextWindow",
                                     system.string()}));
    EXPECT_EQ(owners.ownerOf(virtualTab, M::alt | M::shift).action, "PreviousWindow");
    EXPECT_EQ(owners.ownerOf(virtualLeft, M::control | M::alt).action, "GoToDesktop");
    EXPECT_EQ(owners.ownerOf(virtualD, M::super).action, "ToggleShowDesktop");
    EXPECT_EQ(owners.ownerOf(virtualTab, M::super).answer, ShortcutOwner::Answer::Free);
    EXPECT_EQ(owners.ownerOf(virtualTab, M::alt | M::control).answer, ShortcutOwner::Answer::Free)
        << "modifiers must be the same, not only include the binding's";

    // The user's own file takes over as soon as it exists, and its changes are seen.
    folder.write("home/openbox/rc.xml", config("<keybind key=\"W-Tab\"><action name=\"Mine\"/>"
                                               "</keybind>"));
    EXPECT_EQ(owners.ownerOf(virtualTab, M::alt).answer, ShortcutOwner::Answer::Free);
    EXPECT_EQ(owners.ownerOf(virtualTab, M::super).action, "Mine");
    std::this_thread::sleep_for(std::chrono::milliseconds(20)); // a later modification time
    folder.write("home/openbox/rc.xml", config("<keybind key=\"W-Tab\"><action name=\"Other\"/>"
                                               "</keybind>"));
    EXPECT_EQ(owners.ownerOf(virtualTab, M::super).action, "Other");

    // What cannot be read or understood gives Unknown, never a guess.
    folder.write("home/openbox/rc.xml", "<openbox_config><keyboard>");
    EXPECT_EQ(owners.ownerOf(virtualTab, M::super).answer, ShortcutOwner::Answer::Unknown);
    fs::remove(user);
    ASSERT_EQ(::mkfifo(user.c_str(), 0600), 0);
    EXPECT_EQ(owners.ownerOf(virtualTab, M::super).answer, ShortcutOwner::Answer::Unknown)
        << "a FIFO is refused without waiting";
    fs::remove(user);
    fs::remove(system);
    EXPECT_EQ(owners.ownerOf(virtualTab, M::alt).answer, ShortcutOwner::Answer::Unknown);
}

TEST(GtkAcceleratorTest, AcceleratorsAreReadAsGtkReadsThem)
{
    using A = std::optional<GtkAccelerator>;
    const std::pair<const char*, A> accelerators[] = {
        {"<Super>Tab", GtkAccelerator{"Tab", M::super}},
        {"<Shift><Alt>Tab", GtkAccelerator{"Tab", M::shift | M::alt}},
        {"<Primary><Alt>Delete", GtkAccelerator{"Delete", M::control | M::alt}},
        {"<Control><Ctrl><Ctl>a", GtkAccelerator{"a", M::control}},
        {"<ALT>F4", GtkAccelerator{"F4", M::alt}},
        {"<Mod1><Mod4>x", GtkAccelerator{"x", M::alt | M::super}},
        {"<Meta>space", GtkAccelerator{"space", M::alt}},
        {"<Release><Super>d", GtkAccelerator{"d", M::super}},
        {" <Super>Tab ", GtkAccelerator{"Tab", M::super}},
        {"Print", GtkAccelerator{"Print", 0}},
        {"<Hyper>x", std::nullopt},
        {"<Super", std::nullopt},
        {"<Super>", std::nullopt},
        {"", std::nullopt},
    };
    for (const auto& [text, accelerator] : accelerators) {
        EXPECT_EQ(GtkAccelerator::parse(text), accelerator) << text;
    }
}

// GNOME's own schemas, compiled into a folder of the test's own, over a key file of settings.
TEST(GnomeShortcutOwnersTest, TheDesktopsKeybindingsAndCustomShortcutsAreNamedBySummary)
{
    TemporaryFolder folder;
    const fs::path schemas = folder.path() / "schemas";
    fs::create_directories(schemas);
    for (const char* schema : {"org.gnome.desktop.wm.keybindings.gschema.xml",
                               "org.gnome.settings-daemon.plugins.media-keys.gschema.xml",
                               "org.gnome.desktop.enums.xml"}) {
        const fs::path installed = fs::path("/usr/share/glib-2.0/schemas") / schema;
        ASSERT_TRUE(fs::exists(installed)) << installed << " (gsettings-desktop-schemas, "
                                           << "gnome-settings-daemon-common)";
        fs::copy_file(installed, schemas / schema);
    }
    const std::string compile = "glib-compile-schemas '" + schemas.string() + "'";
    ASSERT_EQ(std::system(compile.c_str()), 0);
    folder.write("config/glib-2.0/settings/keyfile",
                 "[org/gnome/desktop/wm/keybindings]\n"
                 "switch-windows=['<Super>F9']\n"
                 "[org/gnome/settings-daemon/plugins/media-keys]\n"
                 "custom-keybindings=['/custom/terminal/', 'not a path', '/custom/none/']\n"
                 "[custom/terminal]\n"
                 "binding='<Primary><Alt>t'\n"
                 "name='Terminal'\n");
    ::setenv("GSETTINGS_SCHEMA_DIR", schemas.c_str(), 1);
    ::setenv("XDG_DATA_DIRS", (folder.path() / "nothing").c_str(), 1);
    ::setenv("GSETTINGS_BACKEND", "keyfile", 1);
    ::setenv("XDG_CONFIG_HOME", (folder.path() / "config").c_str(), 1);

    GnomeShortcutOwners owners([](const std::string& keysym) -> std::optional<unsigned> {
        if (keysym == "F9") {
            return 75;
        }
        if (keysym == "t") {
            return 28;
        }
        return usKey(keysym);
    });
    const ShortcutOwner altTab = owners.ownerOf(virtualTab, M::alt);
    EXPECT_EQ(altTab.answer, ShortcutOwner::Answer::Taken);
    EXPECT_EQ(altTab.program, "GNOME");
    EXPECT_EQ(altTab.action, "Switch applications") << "the schema's own default";
    EXPECT_EQ(owners.ownerOf(0x65 /* F9 */, M::super).action, "Switch windows")
        << "the user's own setting";
    const ShortcutOwner terminal = owners.ownerOf(0x11 /* T */, M::control | M::alt);
    EXPECT_EQ(terminal.action, "Terminal");
    EXPECT_NE(terminal.configuredIn.find("/custom/terminal/"), std::string::npos);
    EXPECT_EQ(owners.ownerOf(virtualD, M::super | M::shift).answer, ShortcutOwner::Answer::Free);
    for (const char* name :
         {"GSETTINGS_SCHEMA_DIR", "XDG_DATA_DIRS", "GSETTINGS_BACKEND", "XDG_CONFIG_HOME"}) {
        ::unsetenv(name);
    }
}

// org.kde.kglobalaccel as KWin answers `action(int)`: the holder's component and action ids
// and friendly names, or nothing for a free key.
class FakeGlobalAccel {
public:
    explicit FakeGlobalAccel(std::map<int, std::vector<std::string>> held) : held_(std::move(held))
    {
        if (sd_bus_open_user(&bus_) < 0 ||
            sd_bus_add_object_vtable(bus_, nullptr, "/kglobalaccel", "org.kde.KGlobalAccel", table,
                                     this) < 0 ||
            sd_bus_request_name(bus_, "org.kde.kglobalaccel", 0) < 0) {
            return;
        }
        serving_ = true;
        thread_ = std::thread([this] {
            while (serving_) {
                while (sd_bus_process(bus_, nullptr) > 0) {
                }
                sd_bus_wait(bus_, 20 * 1000);
            }
        });
    }
    ~FakeGlobalAccel()
    {
        serving_ = false;
        if (thread_.joinable()) {
            thread_.join();
        }
        sd_bus_flush_close_unref(bus_);
    }
    bool serves() const { return serving_; }
    std::vector<int> asked;

private:
    static int action(sd_bus_message* call, void* self, sd_bus_error*)
    {
        auto& fake = *static_cast<FakeGlobalAccel*>(self);
        int key = 0;
        sd_bus_message_read(call, "i", &key);
        fake.asked.push_back(key);
        std::vector<char*> strings;
        if (const auto found = fake.held_.find(key); found != fake.held_.end()) {
            for (std::string& text : found->second) {
                strings.push_back(text.data());
            }
        }
        strings.push_back(nullptr);
        sd_bus_message* reply = nullptr;
        sd_bus_message_new_method_return(call, &reply);
        sd_bus_message_append_strv(reply, strings.data());
        const int sent = sd_bus_send(nullptr, reply, nullptr);
        sd_bus_message_unref(reply);
        return sent;
    }
    static constexpr sd_bus_vtable table[] = {
        SD_BUS_VTABLE_START(0),
        SD_BUS_METHOD("action", "i", "as", action, SD_BUS_VTABLE_UNPRIVILEGED),
        SD_BUS_VTABLE_END,
    };

    std::map<int, std::vector<std::string>> held_;
    sd_bus* bus_ = nullptr;
    std::atomic<bool> serving_ = false;
    std::thread thread_;
};

TEST(KdeGlobalAccelOwnersTest, TheServiceNamesTheHolderAndItsFileSpeaksWhenItIsGone)
{
    EXPECT_EQ(KdeGlobalAccelOwners::qtKey("Tab", M::alt), 0x08000000 | 0x01000001);
    EXPECT_EQ(KdeGlobalAccelOwners::qtKey("q", M::super | M::shift), 0x10000000 | 0x02000000 | 'Q');
    EXPECT_EQ(KdeGlobalAccelOwners::qtKey("F12", M::control), 0x04000000 | 0x0100003B);
    EXPECT_EQ(KdeGlobalAccelOwners::qtKey("Next", 0), 0x01000017);
    EXPECT_FALSE(KdeGlobalAccelOwners::qtKey("XF86AudioPlay", 0));

    test::DBusSession session;
    ASSERT_TRUE(session.isRunning());
    TemporaryFolder folder;
    folder.write("kglobalshortcutsrc", "[kwin]\nOverview=Meta+Tab,Meta+Tab,Toggle Overview\n");
    const auto withFile = [&] {
        return std::make_unique<KdeGlobalAccelOwners>(
            [](unsigned key) -> std::optional<std::string> {
                return key == 23 ? std::optional<std::string>("Tab") : std::nullopt;
            },
            std::make_unique<ConfiguredShortcutOwners>(
                "KDE", std::vector<std::string>{(folder.path() / "kglobalshortcutsrc").string()},
                &KdeKeyBindings::parse, usKey));
    };
    {
        FakeGlobalAccel service(
            {{0x08000000 | 0x01000001,
              {"kwin", "Walk Through Windows", "KWin", "Walk Through Windows"}}});
        ASSERT_TRUE(service.serves());
        auto owners = withFile();
        const ShortcutOwner altTab = owners->ownerOf(virtualTab, M::alt);
        EXPECT_EQ(altTab, (ShortcutOwner{ShortcutOwner::Answer::Taken, "KDE",
                                         "Walk Through Windows", "kglobalaccel kwin"}));
        EXPECT_EQ(owners->ownerOf(virtualTab, M::super).answer, ShortcutOwner::Answer::Free)
            << "the running service knows better than the file";
        EXPECT_EQ(service.asked.size(), 2u);
    }
    // Without the service the file answers, as it would with KWin not running.
    auto owners = withFile();
    EXPECT_EQ(owners->ownerOf(virtualTab, M::super).action, "Toggle Overview");
    EXPECT_EQ(owners->ownerOf(virtualTab, M::alt).answer, ShortcutOwner::Answer::Free);
}

// Openbox itself on a display of the test's own, with the configuration the test gives it.
TEST(DesktopShortcutOwnersTest, UnderOpenboxItsOwnConfigurationNamesTheKeysItHolds)
{
    test::XvfbServer server;
    ASSERT_TRUE(server.waitUntilReady());
    TemporaryFolder folder;
    folder.write("config/openbox/rc.xml", openboxDefaults);
    const std::string configHome = (folder.path() / "config").string();
    test::ChildProcess openbox({"openbox", "--sm-disable"},
                               {{"DISPLAY", server.display()}, {"XDG_CONFIG_HOME", configHome}});
    ::setenv("XDG_CONFIG_HOME", configHome.c_str(), 1);
    ::setenv("DISPLAY", server.display().c_str(), 1);
    ::unsetenv("WAYLAND_DISPLAY");
    ::unsetenv("XDG_SESSION_TYPE");
    EwmhProcessWindows windows(server.display());
    DesktopShortcutOwners owners(windows, server.display());
    for (int tries = 0; tries < 300 && windows.windowManagerName().empty(); ++tries) {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    EXPECT_EQ(windows.windowManagerName(), "Openbox");
    EXPECT_EQ(owners.ownerOf(virtualTab, M::alt).action, "NextWindow");
    EXPECT_EQ(owners.ownerOf(virtualTab, M::alt).configuredIn, configHome + "/openbox/rc.xml");
    EXPECT_EQ(owners.ownerOf(virtualTab, M::super).answer, ShortcutOwner::Answer::Free);

    // A Wayland compositor's keys cannot be asked for, and no setting gives the daemon the
    // keyboard there, Xwayland's display or not.
    X11AccessibilityStatus access;
    EXPECT_TRUE(access.isAssistiveAccessEnabled());
    ::setenv("WAYLAND_DISPLAY", "wayland-test", 1);
    EXPECT_EQ(owners.ownerOf(virtualTab, M::alt).answer, ShortcutOwner::Answer::Unknown);
    EXPECT_FALSE(access.isAssistiveAccessEnabled());
    EXPECT_TRUE(access.needsAnotherSession());
    ::unsetenv("WAYLAND_DISPLAY");
    ::unsetenv("XDG_CONFIG_HOME");

    // Another window manager, or none: the display's own probe speaks alone.
    openbox.stop();
    for (int tries = 0; tries < 300 && !windows.windowManagerName().empty(); ++tries) {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    EXPECT_EQ(owners.ownerOf(virtualTab, M::alt).answer, ShortcutOwner::Answer::Free);
}

} // namespace
} // namespace vexto
