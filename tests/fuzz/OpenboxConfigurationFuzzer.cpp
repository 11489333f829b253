// Any bytes as an Openbox configuration, as a damaged or hostile rc.xml may hold them: the
// reading ends, stays within its bounds, and every binding it keeps has a key.
#include "platform/linux/OpenboxKeyBindings.hpp"

#include <cstdio>
#include <cstdlib>
#include <string_view>

using namespace vexto;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto bindings = OpenboxKeyBindings::parse(text);
    if (!bindings) {
        return 0;
    }
    if (bindings->size() > OpenboxKeyBindings::mostBindings) {
        std::fprintf(stderr, "more bindings than the bound\n");
        std::abort();
    }
    for (const auto& binding : *bindings) {
        if (binding.keysym.empty() || binding.keysym.size() > size) {
            std::fprintf(stderr, "a binding without a key, or with more than the text held\n");
            std::abort();
        }
    }
    return 0;
}
