// Rebuilding the font menu with every installed font, as the pane does each time it opens, and
// the memory that takes; reading the installed fonts next to fontconfig's bare listing of them.
// bench/font-menu.sh runs it, and whole processes beside fc-list.
//   vexto_font_menu_bench [benchmark options]
#include "foundation/HomeDirectory.hpp"
#include "pane/KRVXPreferencePane.hpp"
#include "platform/fake/FakeDesktop.hpp"
#include "platform/fake/FakeDistributedNotificationCenter.hpp"
#include "platform/fake/FakeRunLoop.hpp"
#include "platform/linux/FontconfigCatalog.hpp"
#include "toolkit/PopUpButton.hpp"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <fontconfig/fontconfig.h>
#include <malloc.h>
#include <new>

namespace {

// Bytes in use through operator new, and the most in use since the last reset.
long inUse = 0;
long highWater = 0;

} // namespace

// The heap is watched through every allocation; its memory comes from malloc, so GCC's check
// that operator new's memory is not freed with free() does not apply.
#pragma GCC diagnostic ignored "-Wmismatched-new-delete"

void* operator new(std::size_t size)
{
    void* memory = std::malloc(size == 0 ? 1 : size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    inUse += static_cast<long>(::malloc_usable_size(memory));
    highWater = std::max(highWater, inUse);
    return memory;
}

void operator delete(void* memory) noexcept
{
    if (memory != nullptr) {
        inUse -= static_cast<long>(::malloc_usable_size(memory));
        std::free(memory);
    }
}

void operator delete(void* memory, std::size_t) noexcept
{
    operator delete(memory);
}

namespace {

using namespace vexto;

void rebuildTheFontMenu(benchmark::State& state)
{
    const std::string home = (std::filesystem::temp_directory_path() / "vexto-font-bench").string();
    std::filesystem::create_directories(home);
    HomeDirectory::setOverride(home);
    FakeRunLoop loop;
    FakeDistributedNotificationCenter center;
    FakeDesktop desktop;
    const FontconfigCatalog fonts;
    PaneEnvironment environment{loop, center, desktop, desktop, desktop, &fonts};
    KRVXPreferencePane pane(VEXTO_PANE_BUNDLE, environment);
    pane.loadMainView();
    PopUpButton& popUp = *pane.outlets().fontsPopUpButton;
    popUp.willOpenMenu(); // the menu a rebuild replaces

    long transient = 0;
    for (auto _ : state) {
        const long before = inUse;
        highWater = inUse;
        popUp.willOpenMenu();
        // Beyond what the old menu held and the new one holds: what building alone took.
        transient = std::max(transient, highWater - std::max(before, inUse));
    }
    std::size_t largestFamily = 0;
    for (const std::string& family : fonts.availableFontFamilies()) {
        largestFamily = std::max(largestFamily, fonts.availableMembersOfFontFamily(family).size());
    }
    state.counters["families"] = static_cast<double>(fonts.availableFontFamilies().size());
    state.counters["largest family"] = static_cast<double>(largestFamily);
    state.counters["menu KiB"] = static_cast<double>(inUse) / 1024;
    state.counters["peak added KiB"] = static_cast<double>(transient) / 1024;
    HomeDirectory::clearOverride();
    std::filesystem::remove_all(home);
}
BENCHMARK(rebuildTheFontMenu)->Unit(benchmark::kMillisecond);

// Reading the installed fonts, which the pane does once per process: the work fc-list does.
void readTheInstalledFonts(benchmark::State& state)
{
    for (auto _ : state) {
        const FontconfigCatalog fonts;
        benchmark::DoNotOptimize(fonts.availableFontFamilies());
    }
}
BENCHMARK(readTheInstalledFonts)->Unit(benchmark::kMillisecond);

// fontconfig's own listing of the same properties with nothing done to it: the floor of
// readTheInstalledFonts, and in-process what fc-list does.
void fontconfigListsTheFonts(benchmark::State& state)
{
    for (auto _ : state) {
        FcConfig* config = FcInitLoadConfigAndFonts();
        FcPattern* all = FcPatternCreate();
        FcObjectSet* objects =
            FcObjectSetBuild(FC_FAMILY, FC_STYLE, FC_POSTSCRIPT_NAME, FC_FULLNAME, FC_WEIGHT,
                             FC_SLANT, FC_WIDTH, static_cast<char*>(nullptr));
        FcFontSet* fonts = FcFontList(config, all, objects);
        benchmark::DoNotOptimize(fonts);
        FcFontSetDestroy(fonts);
        FcObjectSetDestroy(objects);
        FcPatternDestroy(all);
        FcConfigDestroy(config);
    }
}
BENCHMARK(fontconfigListsTheFonts)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
