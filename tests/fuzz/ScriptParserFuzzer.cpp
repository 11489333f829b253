// Any bytes as a host script: every line split into words, every word read as a key press.
#include "KeyCombination.hpp"
#include "ScriptRunner.hpp"

#include <string_view>

using namespace vexto;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::string_view script(reinterpret_cast<const char*>(data), size);
    while (!script.empty()) {
        const auto end = script.find('\n');
        const std::string_view line = script.substr(0, end);
        script.remove_prefix(end == std::string_view::npos ? script.size() : end + 1);
        std::string error;
        if (const auto words = ScriptRunner::words(line, error)) {
            for (const std::string& word : *words) {
                KeyCombination::parse(word);
            }
        }
    }
    return 0;
}
