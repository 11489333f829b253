#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace vexto {

// Fills a localised pattern's placeholders ("%@", "%d", "%lu") in order with texts already made;
// a placeholder without a value reads as empty, and any other "%" stands for itself.
class FormatString {
public:
    static std::string fill(std::string_view pattern,
                            std::initializer_list<std::string_view> values);
};

} // namespace vexto
