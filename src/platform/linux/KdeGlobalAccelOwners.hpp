#pragma once

#include "ports/ShortcutOwners.hpp"

#include <functional>
#include <memory>
#include <optional>
#include <string>

struct sd_bus;

namespace vexto {

// KDE Plasma's global shortcut service (org.kde.kglobalaccel on the session bus), asked which
// component and action hold a key, as KDE's own shortcut editors ask it. Where the service does
// not answer (not running, or slower than a key press may wait), `fallback` (its configuration
// file) is asked instead.
class KdeGlobalAccelOwners final : public ShortcutOwners {
public:
    // The X keysym name on a key code, as the keymap has it unshifted.
    using KeysymOfKey = std::function<std::optional<std::string>(unsigned xKeyCode)>;

    // The longest a question waits for the service.
    static constexpr std::uint64_t answerMicroseconds = 200 * 1000;

    KdeGlobalAccelOwners(KeysymOfKey keysymOf, std::unique_ptr<ShortcutOwners> fallback);
    ~KdeGlobalAccelOwners() override;
    KdeGlobalAccelOwners(const KdeGlobalAccelOwners&) = delete;
    KdeGlobalAccelOwners& operator=(const KdeGlobalAccelOwners&) = delete;

    ShortcutOwner ownerOf(std::uint16_t keyCode, unsigned modifiers) override;

    // The key as Qt's key codes name it with its modifiers, the service's own key; none for a
    // keysym Qt has no code for here.
    static std::optional<int> qtKey(const std::string& keysym, unsigned modifiers);

private:
    std::optional<ShortcutOwner> askService(int key);

    KeysymOfKey keysymOf_;
    std::unique_ptr<ShortcutOwners> fallback_;
    sd_bus* bus_ = nullptr;
};

} // namespace vexto
