// Any bytes as archived colour data: a colour read must archive again and read back as the same
// archive (bytes are compared, so that a NaN component counts as itself).
#include "foundation/TypedStreamArchiver.hpp"
#include "foundation/TypedStreamUnarchiver.hpp"

#include <cstdio>
#include <cstdlib>

using namespace vexto;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto object = TypedStreamUnarchiver::unarchiveObjectWithData(std::span(data, size));
    if (!object) {
        return 0;
    }
    const auto archived = TypedStreamArchiver::archivedDataWithRootObject(*object);
    const auto again = TypedStreamUnarchiver::unarchiveObjectWithData(archived);
    if (!again || TypedStreamArchiver::archivedDataWithRootObject(*again) != archived) {
        std::fputs("an archived object did not read back alike\n", stderr);
        std::abort();
    }
    return 0;
}
