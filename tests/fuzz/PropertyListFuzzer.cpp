// Any bytes as a property-list file, through everything vexto-plist does with them: a value read
// must print, and must convert to XML and to binary and read back alike.
#include "PlistConverter.hpp"
#include "PlistPrinter.hpp"
#include "foundation/PropertyListCodec.hpp"

#include <cstdio>
#include <cstdlib>
#include <vector>

using namespace vexto;

namespace {

// Values in the tree, counted up to `limit`.
std::size_t valuesIn(const PlistValue& root, std::size_t limit)
{
    std::size_t count = 0;
    std::vector<const PlistValue*> pending{&root};
    while (!pending.empty() && count < limit) {
        const PlistValue* value = pending.back();
        pending.pop_back();
        ++count;
        if (const auto* array = value->asArray()) {
            for (const auto& item : *array) {
                pending.push_back(&item);
            }
        } else if (const auto* dictionary = value->asDictionary()) {
            for (const auto& [key, item] : *dictionary) {
                pending.push_back(&item);
            }
        }
    }
    return count;
}

// Reading is what meets hostile bytes; a big tree read is converted only now and then, so that
// the fuzzer keeps its pace.
constexpr std::size_t convertedValues = 2000;

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto result = PropertyListCodec::read(std::span(data, size));
    if (!result.value) {
        if (result.error.empty()) {
            std::fputs("refused without a reason\n", stderr);
            std::abort();
        }
        return 0;
    }
    if (valuesIn(*result.value, convertedValues) >= convertedValues) {
        return 0;
    }
    PlistPrinter::print(*result.value);
    for (auto format : {PropertyListCodec::Format::Xml, PropertyListCodec::Format::Binary}) {
        if (!PlistConverter::convert(*result.value, format)) {
            std::fprintf(stderr, "a readable value did not convert to %s\n",
                         format == PropertyListCodec::Format::Xml ? "XML" : "binary");
            std::abort();
        }
    }
    return 0;
}
