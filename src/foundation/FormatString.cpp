#include "foundation/FormatString.hpp"

namespace vexto {

std::string FormatString::fill(std::string_view pattern,
                               std::initializer_list<std::string_view> values)
{
    std::string out;
    auto next = values.begin();
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        const std::string_view rest = pattern.substr(i);
        const std::size_t placeholder = rest.starts_with("%lu")                            ? 3
                                        : rest.starts_with("%@") || rest.starts_with("%d") ? 2
                                                                                           : 0;
        if (placeholder == 0) {
            out += pattern[i];
            continue;
        }
        if (next != values.end()) {
            out += *next++;
        }
        i += placeholder - 1;
    }
    return out;
}

} // namespace vexto
