#pragma once

#include <cstdint>

namespace vexto {

// The system's global hot keys: a combination that can be registered is free.
class HotKeyRegistrar {
public:
    virtual ~HotKeyRegistrar() = default;
    // `carbonModifiers` in the hot-key service's own bits; `identifier` tells registrations
    // apart. False when the combination cannot be registered (another client holds it).
    virtual bool registerHotKey(std::uint16_t keyCode, std::uint32_t carbonModifiers,
                                std::uint32_t identifier) = 0;
    virtual void unregisterHotKey(std::uint32_t identifier) = 0;
};

} // namespace vexto
