#include "foundation/DictionaryKeyOrder.hpp"

#include "foundation/TextEncoding.hpp"

#include <algorithm>
#include <string>
#include <utility>

namespace vexto {

// The map's order is the keys' byte order, which is their UTF-16 order unless a key holds a
// character beyond U+FFFF (a four-byte UTF-8 sequence, whose surrogates sort below
// U+E000..U+FFFF): only then is there sorting to do.
std::vector<const PlistDictionary::value_type*>
DictionaryKeyOrder::entries(const PlistDictionary& dictionary)
{
    std::vector<const PlistDictionary::value_type*> entries;
    entries.reserve(dictionary.size());
    bool beyondBasicPlane = false;
    for (const auto& entry : dictionary) {
        entries.push_back(&entry);
        beyondBasicPlane =
            beyondBasicPlane || std::any_of(entry.first.begin(), entry.first.end(), [](char c) {
                return static_cast<unsigned char>(c) >= 0xF0;
            });
    }
    if (beyondBasicPlane) {
        std::vector<std::pair<std::u16string, const PlistDictionary::value_type*>> keyed;
        keyed.reserve(entries.size());
        for (const auto* entry : entries) {
            keyed.emplace_back(TextEncoding::utf16FromUtf8(entry->first), entry);
        }
        std::stable_sort(keyed.begin(), keyed.end(),
                         [](const auto& a, const auto& b) { return a.first < b.first; });
        for (std::size_t i = 0; i < keyed.size(); ++i) {
            entries[i] = keyed[i].second;
        }
    }
    return entries;
}

} // namespace vexto
