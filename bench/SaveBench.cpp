// One save of a settings file of about 30 KB as the pane makes it, next to the physical floor:
// the same bytes written to a temporary file, flushed, renamed over the target and the folder
// flushed, with nothing else done.
#include "SettingsOfThreeHundredKeys.hpp"
#include "foundation/FileSystem.hpp"
#include "foundation/HomeDirectory.hpp"
#include "foundation/PropertyListCodec.hpp"
#include "pane/SettingsStore.hpp"
#include "platform/fake/FakeRunLoop.hpp"

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <unistd.h>

using namespace vexto;

namespace {

class Home {
public:
    Home()
    {
        std::string pattern =
            (std::filesystem::temp_directory_path() / "vexto-save-XXXXXX").string();
        path_ = ::mkdtemp(pattern.data()) != nullptr ? pattern : std::string();
        HomeDirectory::setOverride(path_);
    }
    ~Home()
    {
        HomeDirectory::clearOverride();
        std::filesystem::remove_all(path_);
    }
    const std::string& path() const { return path_; }

private:
    std::string path_;
};

// The floor: what any durable replacement of the file costs on this disk.
bool replaceDurably(const std::string& folder, const std::string& target, const std::string& xml)
{
    std::string temporary = target + ".XXXXXX";
    const int fd = ::mkstemp(temporary.data());
    const bool written =
        ::write(fd, xml.data(), xml.size()) == ssize_t(xml.size()) && ::fsync(fd) == 0;
    ::close(fd);
    const bool renamed = written && ::rename(temporary.c_str(), target.c_str()) == 0;
    const int folderFd = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY);
    const bool flushed = renamed && ::fsync(folderFd) == 0;
    ::close(folderFd);
    return flushed;
}

// Both in one loop, one after the other, so that the disk's moods fall on both alike.
void SaveNextToThePhysicalFloor(benchmark::State& state)
{
    Home home;
    FakeRunLoop loop;
    SettingsStore store(loop, home.path() + "/no-defaults.plist", {});
    store.settings() = bench::settingsOfThreeHundredKeys();
    const std::string floorFolder = home.path() + "/floor";
    std::filesystem::create_directories(floorFolder);
    const std::string floorTarget = floorFolder + "/Settings.plist";
    const std::string xml = *PropertyListCodec::xmlFrom(store.settings());
    using Clock = std::chrono::steady_clock;
    Clock::duration saving{};
    Clock::duration floor{};
    bool flag = false;
    for (auto _ : state) {
        // A change each time, as a person's click makes one: an unchanged file is not rewritten.
        flag = !flag;
        store.setValue(PlistValue(flag), std::string_view("Setting 0"), false);
        const auto start = Clock::now();
        benchmark::DoNotOptimize(store.saveSettings());
        const auto middle = Clock::now();
        benchmark::DoNotOptimize(replaceDurably(floorFolder, floorTarget, xml));
        const auto end = Clock::now();
        saving += middle - start;
        floor += end - middle;
    }
    const auto micros = [&](Clock::duration total) {
        return std::chrono::duration<double, std::micro>(total).count() /
               static_cast<double>(state.iterations());
    };
    state.counters["save_us"] = micros(saving);
    state.counters["floor_us"] = micros(floor);
    state.counters["ratio"] = micros(saving) / micros(floor);
    state.SetLabel(std::to_string(xml.size()) + " bytes");
}
BENCHMARK(SaveNextToThePhysicalFloor)->Unit(benchmark::kMicrosecond)->MinTime(5);

} // namespace

BENCHMARK_MAIN();
