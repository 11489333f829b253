// Any bytes as a window manager's or desktop's shortcut configuration (Openbox's rc.xml, i3's
// config, Xfce's channel file, KDE's kglobalshortcutsrc), as a damaged or hostile file may hold
// them: every reader ends, stays within its bounds, and every binding it keeps has a key.
#include "platform/linux/I3KeyBindings.hpp"
#include "platform/linux/KdeKeyBindings.hpp"
#include "platform/linux/OpenboxKeyBindings.hpp"
#include "platform/linux/XfceKeyBindings.hpp"

#include <cstdio>
#include <cstdlib>
#include <string_view>

using namespace vexto;

namespace {

void check(const std::optional<std::vector<ShortcutBinding>>& bindings, std::size_t most,
           std::size_t size)
{
    if (!bindings) {
        return;
    }
    if (bindings->size() > most) {
        std::fprintf(stderr, "more bindings than the bound\n");
        std::abort();
    }
    for (const ShortcutBinding& binding : *bindings) {
        if (binding.keysym.empty() || binding.keysym.size() > size) {
            std::fprintf(stderr, "a binding without a key, or with more than the text held\n");
            std::abort();
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    check(OpenboxKeyBindings::parse(text), OpenboxKeyBindings::mostBindings, size);
    check(I3KeyBindings::parse(text), I3KeyBindings::mostBindings, size);
    check(XfceKeyBindings::parse(text), XfceKeyBindings::mostBindings, size);
    check(KdeKeyBindings::parse(text), KdeKeyBindings::mostBindings, size);
    return 0;
}
