#pragma once

#include "foundation/PlistValue.hpp"

#include <vector>

namespace vexto {

// The order in which the platform writes a dictionary's keys: by UTF-16 code units.
class DictionaryKeyOrder {
public:
    static std::vector<const PlistDictionary::value_type*>
    entries(const PlistDictionary& dictionary);
};

} // namespace vexto
