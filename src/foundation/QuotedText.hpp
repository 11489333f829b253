#pragma once

#include <string>
#include <string_view>

namespace vexto {

// Text between double quotes, safe to print on a terminal and to read as a JSON string: quotes
// and backslashes escaped, line breaks and tabs as \n, \r and \t, and every other character that
// a terminal would act on or that would change how the line reads (control characters, DEL, the
// C1 controls that start escape sequences, line separators, bidirectional overrides) as \uXXXX.
// Bytes that are not UTF-8 show as U+FFFD.
class QuotedText {
public:
    static std::string quoted(std::string_view utf8);
};

} // namespace vexto
