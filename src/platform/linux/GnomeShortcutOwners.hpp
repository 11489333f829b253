#pragma once

#include "platform/linux/ShortcutBinding.hpp"
#include "ports/ShortcutOwners.hpp"

#include <functional>
#include <optional>
#include <string>
#include <vector>

struct _GSettings;
struct _GSettingsSchema;

namespace vexto {

// GNOME's own shortcuts, read through GSettings (dconf on a desktop): the window manager's,
// the shell's, mutter's and the settings daemon's keybinding lists, and the user's custom
// shortcuts. Each accelerator is compared by the key its keysym is on, so layouts do not
// matter; a taken one is named by its setting's summary ("Switch applications").
class GnomeShortcutOwners final : public ShortcutOwners {
public:
    // The schemas asked, those installed; the others are passed over.
    static const std::vector<std::string>& keybindingSchemas();

    explicit GnomeShortcutOwners(KeyOfKeysym keyOf);
    ~GnomeShortcutOwners() override;
    GnomeShortcutOwners(const GnomeShortcutOwners&) = delete;
    GnomeShortcutOwners& operator=(const GnomeShortcutOwners&) = delete;

    // Unknown where no schema of GNOME's keybindings is installed.
    ShortcutOwner ownerOf(std::uint16_t keyCode, unsigned modifiers) override;

private:
    struct Source {
        _GSettingsSchema* schema;
        _GSettings* settings;
        std::string id;
    };
    bool holds(const std::string& accelerator, unsigned xKeyCode, unsigned modifiers) const;
    std::optional<ShortcutOwner> ownerIn(const Source& source, unsigned xKeyCode,
                                         unsigned modifiers) const;
    std::optional<ShortcutOwner> customOwner(unsigned xKeyCode, unsigned modifiers) const;

    KeyOfKeysym keyOf_;
    std::vector<Source> sources_;
};

} // namespace vexto
