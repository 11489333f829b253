#pragma once

#include "hotkeys/HotKeyRecorderDelegate.hpp"

namespace vexto {

class KRVXPreferencePane;

// The pane as the owner of its hot-key fields: the records are its settings, a change is saved at
// once, and the matching rules are its three settings for them.
class PaneHotKeyRecords final : public HotKeyRecorderDelegate {
public:
    explicit PaneHotKeyRecords(KRVXPreferencePane& pane) : pane_(pane) {}

    PlistDictionary& hotKeyRecords() override;
    void hotKeyRecordsDidChange() override;
    Matching hotKeyMatching() override;
    RunLoop& hotKeyRunLoop() override;
    const KeyboardLayout* hotKeyKeyboardLayout() override;
    HotKeyRegistrar* hotKeyRegistrar() override;
    ShortcutOwners* hotKeyOwners() override;
    std::string localizedHotKeyText(std::string_view key) override;
    int runHotKeyAlert(const AlertRequest& alert, Window* window) override;

private:
    KRVXPreferencePane& pane_;
};

} // namespace vexto
