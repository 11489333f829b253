// Any bytes as a localised strings table: parsed or refused, never more.
#include "foundation/StringsTable.hpp"

using namespace vexto;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (const auto table = StringsTable::parse(std::span(data, size))) {
        table->find("Vexto - Warning");
    }
    return 0;
}
