// Asking who uses a combination, as the recorder does at every key press: Openbox's rc.xml
// (the distribution's own file) warm (a stat per question) and cold (read and parsed), GNOME's
// keybindings through GSettings over a key file, and beside them the floor the recorder already
// pays, the display's grab probe (with DISPLAY set). Goal: under 5 ms a question.
#include "platform/linux/ConfiguredShortcutOwners.hpp"
#include "platform/linux/GnomeShortcutOwners.hpp"
#include "platform/linux/OpenboxKeyBindings.hpp"
#include "platform/linux/X11HotKeyRegistrar.hpp"

#include <benchmark/benchmark.h>

#include <X11/Xlib.h>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <string>
#include <unistd.h>

namespace {

using namespace vexto;
namespace fs = std::filesystem;
using M = ShortcutOwners::Modifier;

constexpr std::uint16_t virtualTab = 0x30;
constexpr std::uint16_t virtualK = 0x28;

// The server's keymap where there is a display, else a US keyboard's key codes.
KeyOfKeysym keyOfKeysym()
{
    static Display* display = XOpenDisplay(nullptr);
    return [](const std::string& keysym) -> std::optional<unsigned> {
        if (display != nullptr) {
            const KeySym symbol = XStringToKeysym(keysym.c_str());
            const KeyCode code = symbol != NoSymbol ? XKeysymToKeycode(display, symbol) : 0;
            return code != 0 ? std::optional<unsigned>(code) : std::nullopt;
        }
        static const std::map<std::string, unsigned> us = {
            {"Tab", 23}, {"Left", 113}, {"Right", 114}, {"F4", 70}};
        const auto found = us.find(keysym);
        return found != us.end() ? std::optional(found->second) : std::nullopt;
    };
}

const std::vector<std::string> distributionFile = {"/etc/xdg/openbox/rc.xml"};

void openboxWarm(benchmark::State& state)
{
    ConfiguredShortcutOwners owners("Openbox", distributionFile, &OpenboxKeyBindings::parse,
                                    keyOfKeysym());
    owners.ownerOf(virtualTab, M::alt);
    for (auto _ : state) {
        // A free combination walks every binding.
        benchmark::DoNotOptimize(owners.ownerOf(virtualK, M::control | M::super));
    }
}
BENCHMARK(openboxWarm)->Unit(benchmark::kMicrosecond);

void openboxCold(benchmark::State& state)
{
    for (auto _ : state) {
        ConfiguredShortcutOwners owners("Openbox", distributionFile, &OpenboxKeyBindings::parse,
                                        keyOfKeysym());
        benchmark::DoNotOptimize(owners.ownerOf(virtualK, M::control | M::super));
    }
}
BENCHMARK(openboxCold)->Unit(benchmark::kMicrosecond);

void gnomeWarm(benchmark::State& state)
{
    char pattern[] = "/tmp/vexto-bench-gnome-XXXXXX";
    const fs::path home = ::mkdtemp(pattern);
    ::setenv("GSETTINGS_BACKEND", "keyfile", 1);
    ::setenv("XDG_CONFIG_HOME", home.c_str(), 1);
    {
        GnomeShortcutOwners owners(keyOfKeysym());
        owners.ownerOf(virtualTab, M::alt);
        for (auto _ : state) {
            benchmark::DoNotOptimize(owners.ownerOf(virtualK, M::control | M::super));
        }
    }
    fs::remove_all(home);
}
BENCHMARK(gnomeWarm)->Unit(benchmark::kMicrosecond);

// The floor: the grab probe each recorded key already goes through.
void grabProbe(benchmark::State& state)
{
    X11HotKeyRegistrar registrar;
    if (!registrar.hasDisplay()) {
        state.SkipWithError("no display: run with DISPLAY set");
        return;
    }
    std::uint32_t identifier = 1;
    for (auto _ : state) {
        benchmark::DoNotOptimize(registrar.registerHotKey(virtualK, 0x1100, identifier));
        registrar.unregisterHotKey(identifier++);
    }
}
BENCHMARK(grabProbe)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
