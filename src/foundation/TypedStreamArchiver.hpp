#pragma once

#include "foundation/ArchivedObject.hpp"

#include <cstdint>
#include <vector>

namespace vexto {

// Writes objects in the platform's non-keyed archive format (a little-endian "streamtyped"
// typedstream), byte for byte as the platform's archiver writes them, so that the daemon reads
// the colours the pane stores.
class TypedStreamArchiver {
public:
    static std::vector<std::uint8_t> archivedDataWithRootObject(const ArchivedObject& root);
};

} // namespace vexto
