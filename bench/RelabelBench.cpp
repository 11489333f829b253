// Relabelling the pane's 19 hot-key fields for the keyboard layout when the pane loads, once the
// keymap is compiled; next to compiling the keymap itself, which happens once per load.
#include "hotkeys/KeyLabels.hpp"
#include "platform/linux/XkbKeyboardLayout.hpp"

#include <benchmark/benchmark.h>

#include <array>

using namespace vexto;

namespace {

struct Stored {
    std::uint16_t keyCode;
    std::uint64_t modifiers;
};

// What 19 occupied fields hold: letters, digits, F keys and Tab with mixed modifiers.
constexpr std::array<Stored, 19> fields{{
    {0x30, 0x80000}, {0x30, 0xA0000},  {0x00, 0x100000}, {0x0B, 0x140000}, {0x29, 0x80000},
    {0x60, 0x60000}, {0x61, 0x0},      {0x12, 0x100000}, {0x13, 0x180000}, {0x31, 0x40000},
    {0x7B, 0x80000}, {0x7C, 0x80000},  {0x2E, 0x160000}, {0x1F, 0x100000}, {0x23, 0x40000},
    {0x25, 0x80000}, {0x0A, 0x100000}, {0x32, 0x100000}, {0x53, 0x40000},
}};

void RelabelNineteenFields(benchmark::State& state)
{
    const auto layout = XkbKeyboardLayout::fromNames({"pc105", "de", "", ""});
    for (auto _ : state) {
        for (const Stored& field : fields) {
            const auto key = KRVXStringForKeyCode(field.keyCode, false, layout.get());
            benchmark::DoNotOptimize(
                readableKeyStringPrefixWithModifierFlags(field.modifiers, false) +
                key.value_or(std::string()));
        }
    }
}
BENCHMARK(RelabelNineteenFields)->Unit(benchmark::kMicrosecond);

void CompileTheKeymap(benchmark::State& state)
{
    for (auto _ : state) {
        benchmark::DoNotOptimize(XkbKeyboardLayout::fromNames({"pc105", "de", "", ""}));
    }
}
BENCHMARK(CompileTheKeymap)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
