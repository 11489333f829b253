#pragma once

#include "foundation/Bitmap.hpp"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace vexto {

// Besides its windows a cycle may list two items of its own: one that switches to the selected
// window when clicked, and one that ends the cycle without switching.
enum class CycleItemKind { Window, ActivationItem, CancellationItem };

// A window as a cycle lists it.
struct CycleWindow {
    std::uint64_t id = 0;
    // Windows with the same key belong to one running program and are grouped under it.
    std::string applicationKey;
    std::string applicationName;
    std::string title;
    bool minimized = false;
    // None: shown on every desktop.
    std::optional<std::uint32_t> desktop;
    // The window's own icon, where it has one.
    std::shared_ptr<const Bitmap> icon = nullptr;
    // When the window manager took the window on, as a place in its order of mapping: the
    // oldest first.
    std::uint32_t mappedOrder = 0;
    // What the desktop is called (its number from 1 where the window manager names none).
    std::string desktopName = {};
    CycleItemKind kind = CycleItemKind::Window;

    bool isWindow() const { return kind == CycleItemKind::Window; }
    bool operator==(const CycleWindow&) const = default;
};

} // namespace vexto
