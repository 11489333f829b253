#pragma once

#include "foundation/HotKeyRecordFormat.hpp"
#include "hotkeys/KeyLabels.hpp"
#include "toolkit/ActionTarget.hpp"
#include "toolkit/TextView.hpp"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vexto {

struct ShortcutOwner;

class HotKeyRecorderDelegate;
class KRVXHotKeyClearButton;

// A one-line field that records one hot key: the slot it edits is a hot-key identifier (the
// setting key of a hot-key table) and a direction inside that table. Clicked, it records the next
// key combination pressed (Tab and Shift-Tab included), checks it, stores it and gives up the
// focus; plain Escape, 30 seconds without a key or a click elsewhere end recording. It is never a
// text editor. Its clear button sends it delete:. Its owner, the delegate, keeps the records;
// without one the field shows and records nothing.
class KRVXHotKeyTextView : public TextView, public ActionTarget {
public:
    static constexpr std::string_view unsetIdentifier = "Dummy";
    static constexpr std::string_view anyDirection = hotkeyrecord::any;
    static constexpr double recordingTimeout = 30.0;
    // How long the reason for a refused combination stays shown beside the field.
    static constexpr double refusalNoticeTime = 4.0;

    explicit KRVXHotKeyTextView(Rect frame = {});
    ~KRVXHotKeyTextView() override;
    KRVXHotKeyTextView(const KRVXHotKeyTextView&) = delete;
    KRVXHotKeyTextView& operator=(const KRVXHotKeyTextView&) = delete;
    const char* className() const override { return "HotKeyTextView"; }

    // Set before the slot; none lets go of the owner (and of what the field asked its clock for).
    void setRecorderDelegate(HotKeyRecorderDelegate* delegate);
    HotKeyRecorderDelegate* recorderDelegate() const { return delegate_; }

    // Binds the field to a slot (no direction means "Any") and shows what is stored there,
    // relabelled for the current keyboard layout.
    void setHotKeyIdentifier(std::string identifier, std::string direction = {});
    std::string hotKeyIdentifier() const;
    // Says beside the field when the desktop itself uses the combination stored in it (the
    // defaults, Alt+Tab, are most window managers' own), and leaves the record as it is.
    void showDesktopOwner();
    std::string direction() const;
    // The name of the slot, as the label beside the field gives it (unlocalized): a refusal
    // names the slot that already holds a combination by it.
    void setTitle(std::string title) { title_ = std::move(title); }
    const std::string& title() const { return title_; }

    KRVXHotKeyClearButton* deleteButton() const { return deleteButton_; }
    void setDeleteButton(KRVXHotKeyClearButton* button) { deleteButton_ = button; }

    // A stored hot key's text, or the empty look for none; the modifiers are not used.
    void setOccupiedWithVisualHotKeyRepresentation(const std::optional<std::string>& text,
                                                   std::uint64_t modifierFlags);
    bool isOccupied() const { return occupied_; }
    bool showsKeyCombination() const override { return occupied_; }
    bool isRecording() const;
    // A recording field records Escape, ⌃W and ⌃Q instead of letting them close the window.
    bool takesEveryKey() const override { return isRecording(); }

    bool becomeFirstResponder() override;
    bool resignFirstResponder() override;
    void keyDown(const Event& event) override;
    bool performKeyEquivalent(const Event& event) override;
    void activelyResignFirstResponder();
    void timeOutFirstResponder();
    void updateDisplayForFirstResponder(bool focused);
    // Clears the slot: the clear button's action.
    void deleteHotKey();
    // Delete on a field that has the focus but does not record clears it, as its button does.
    bool deleteBackward() override;

    // Never part of the text: the whole of it is selected or nothing.
    TextRange selectionRangeForProposedRange(TextRange proposed) const override;
    void setString(std::string text) override;

    bool respondsToSelector(std::string_view selector) const override;
    void performAction(std::string_view selector, const ActionSender& sender) override;

private:
    void record(const Event& event);
    void showSlot();
    // With the owner the desktop names, where the refusal is another program's hold. It stands
    // until cleared.
    void showRefusal(const HotKeyRefusal& refusal, const std::string& combination,
                     const ShortcutOwner& owner);
    // The notice goes after `refusalNoticeTime`.
    void clearNoticeLater();
    ShortcutOwner ownerOf(std::uint16_t keyCode, std::uint64_t flags) const;
    const PlistDictionary* storedRecord() const;
    std::string titleOfSlot(const HotKeyRefusal& refusal) const;
    std::string localized(std::string_view key) const;
    std::string emptyText(bool recording) const;

    std::string identifier_;
    std::string direction_;
    std::string title_;
    HotKeyRecorderDelegate* delegate_ = nullptr;
    KRVXHotKeyClearButton* deleteButton_ = nullptr;
    bool occupied_ = false;
    bool activelyResigning_ = false;
};

} // namespace vexto
