#pragma once

#include "foundation/PlistValue.hpp"

#include <string>
#include <string_view>

namespace vexto {

class HotKeyRegistrar;
class KeyboardLayout;
class RunLoop;
class ShortcutOwners;
class Window;
struct AlertRequest;

// What a hot-key field needs from its owner. The field stores nothing of its own: the owner keeps
// the records (in its settings, one table per hot-key identifier), says how combinations are
// compared, and lends its clock, keyboard layout, registrar, texts and alerts.
class HotKeyRecorderDelegate {
public:
    // How two combinations are compared when looking for one already held (the owner's
    // settings say, and its declarations give their defaults).
    struct Matching {
        bool exact;
        bool ignoreCapsLock;
        bool ignoreFunctionKey;
    };

    virtual ~HotKeyRecorderDelegate() = default;

    // The dictionary the hot-key tables live in, and what follows a change of it.
    virtual PlistDictionary& hotKeyRecords() = 0;
    virtual void hotKeyRecordsDidChange() = 0;
    virtual Matching hotKeyMatching() = 0;

    virtual RunLoop& hotKeyRunLoop() = 0;
    // None: keys without a name of their own have no label.
    virtual const KeyboardLayout* hotKeyKeyboardLayout() = 0;
    // None: every combination no field holds is free.
    virtual HotKeyRegistrar* hotKeyRegistrar() = 0;
    // None: nobody but the registrar is asked who holds a combination.
    virtual ShortcutOwners* hotKeyOwners() { return nullptr; }
    virtual std::string localizedHotKeyText(std::string_view key) = 0;
    // Runs the alert over the window and answers as Alerts do.
    virtual int runHotKeyAlert(const AlertRequest& alert, Window* window) = 0;
};

} // namespace vexto
