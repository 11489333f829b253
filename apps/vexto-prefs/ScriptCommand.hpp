#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vexto {

class ScriptRunner;

// One command of the host's script language: how it is written, how many words follow it, what
// it does (the README's table is printed from these), and the runner's function that does it.
struct ScriptCommand {
    using Words = std::vector<std::string>;
    using Handler = bool (ScriptRunner::*)(const Words& words, std::string& error);

    std::string_view name;
    std::string_view arguments; // as the usage writes them, "OUTLET VALUE"
    std::size_t argumentCount;
    std::string_view effect;
    Handler handler;
};

} // namespace vexto
