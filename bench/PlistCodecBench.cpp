// Reading and writing a settings file of realistic size through the pane's codec, next to
// libplist used bare and to the plistutil command converting the same file.
#include "SettingsOfThreeHundredKeys.hpp"
#include "foundation/FileSystem.hpp"
#include "foundation/PropertyListCodec.hpp"

#include <benchmark/benchmark.h>
#include <plist/plist.h>

#include <cstdlib>
#include <filesystem>
#include <spawn.h>
#include <string>
#include <sys/wait.h>

using namespace vexto;

extern char** environ;

namespace {

class SettingsFile {
public:
    SettingsFile()
    {
        folder_ = (std::filesystem::temp_directory_path() / "vexto-bench").string();
        std::filesystem::create_directories(folder_);
        const std::string xml = *PropertyListCodec::xmlFrom(bench::settingsOfThreeHundredKeys());
        FileSystem::writeFileAtomically(input(), std::vector<std::uint8_t>(xml.begin(), xml.end()));
    }
    ~SettingsFile() { std::filesystem::remove_all(folder_); }
    std::string input() const { return folder_ + "/Settings.plist"; }
    std::string output() const { return folder_ + "/Out.plist"; }

private:
    std::string folder_;
};

const SettingsFile& settingsFile()
{
    static const SettingsFile file;
    return file;
}

void CodecReadAndWriteXml(benchmark::State& state)
{
    const auto& file = settingsFile();
    for (auto _ : state) {
        auto read = PropertyListCodec::readFile(file.input());
        const auto xml = PropertyListCodec::xmlFrom(*read.value);
        const bool written = FileSystem::writeFileAtomically(
            file.output(),
            std::span(reinterpret_cast<const std::uint8_t*>(xml->data()), xml->size()));
        benchmark::DoNotOptimize(written);
    }
    state.SetLabel(std::to_string(FileSystem::fileSize(file.input())) + " bytes");
}
BENCHMARK(CodecReadAndWriteXml)->Unit(benchmark::kMicrosecond);

// The same without the atomic write's fsyncs: what the codec itself costs.
void CodecParseAndSerialiseInMemory(benchmark::State& state)
{
    const auto bytes = *FileSystem::readFile(settingsFile().input(), 1 << 24);
    for (auto _ : state) {
        auto read = PropertyListCodec::read(bytes);
        benchmark::DoNotOptimize(PropertyListCodec::xmlFrom(*read.value));
    }
}
BENCHMARK(CodecParseAndSerialiseInMemory)->Unit(benchmark::kMicrosecond);

// libplist alone, parsing and writing the same bytes: the floor under the codec.
void LibplistParseAndSerialiseInMemory(benchmark::State& state)
{
    const auto bytes = *FileSystem::readFile(settingsFile().input(), 1 << 24);
    for (auto _ : state) {
        plist_t root = nullptr;
        plist_from_memory(reinterpret_cast<const char*>(bytes.data()),
                          static_cast<uint32_t>(bytes.size()), &root);
        char* xml = nullptr;
        uint32_t length = 0;
        plist_to_xml(root, &xml, &length);
        benchmark::DoNotOptimize(xml);
        plist_to_xml_free(xml);
        plist_free(root);
    }
}
BENCHMARK(LibplistParseAndSerialiseInMemory)->Unit(benchmark::kMicrosecond);

// The platform-style utility converting the same file to XML, as a user would run it.
void PlistutilConvertsTheSameFile(benchmark::State& state)
{
    const auto& file = settingsFile();
    const std::string input = file.input();
    const std::string output = file.output();
    for (auto _ : state) {
        char* argv[] = {const_cast<char*>("plistutil"),    const_cast<char*>("-i"),
                        const_cast<char*>(input.c_str()),  const_cast<char*>("-o"),
                        const_cast<char*>(output.c_str()), const_cast<char*>("-f"),
                        const_cast<char*>("xml"),          nullptr};
        pid_t pid = 0;
        if (::posix_spawnp(&pid, "plistutil", nullptr, nullptr, argv, environ) != 0) {
            state.SkipWithError("plistutil is not installed (package libplist-utils)");
            break;
        }
        int status = 0;
        ::waitpid(pid, &status, 0);
    }
}
BENCHMARK(PlistutilConvertsTheSameFile)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
