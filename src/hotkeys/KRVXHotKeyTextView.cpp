#include "hotkeys/KRVXHotKeyTextView.hpp"

#include "foundation/DictionaryExtensions.hpp"
#include "foundation/FormatString.hpp"
#include "foundation/HotKeyRecordFormat.hpp"
#include "foundation/Log.hpp"
#include "hotkeys/HotKeyRecorderDelegate.hpp"
#include "hotkeys/KRVXHotKeyClearButton.hpp"
#include "hotkeys/KeyLabels.hpp"
#include "ports/Alerts.hpp"
#include "ports/RunLoop.hpp"
#include "ports/ShortcutOwners.hpp"
#include "toolkit/Application.hpp"
#include "toolkit/Event.hpp"
#include "toolkit/Window.hpp"

namespace vexto {

namespace {

constexpr const char* timeOutSelector = "timeOutFirstResponder";
constexpr const char* clearNoticeSelector = "clearNotice";
constexpr char escape = 27;

const RunLoopModes timeOutModes{RunLoopMode::Default};

const ParagraphStyle& hotKeyParagraphStyle()
{
    static const ParagraphStyle style{TextAlignment::Center,
                                      ParagraphStyle::LineBreak::TruncateTail};
    return style;
}

const Color& noShortcutColor()
{
    static const Color grey = Color::calibratedWhite(0.6f, 1);
    return grey;
}

const Color& selectedTextBackgroundColor()
{
    static const Color blue = Color::calibratedRGB(0.71f, 0.84f, 1, 1);
    return blue;
}

const Color& secondarySelectedControlColor()
{
    static const Color grey = Color::calibratedWhite(0.83f, 1);
    return grey;
}

} // namespace

KRVXHotKeyTextView::KRVXHotKeyTextView(Rect frame) : TextView(frame)
{
    setEditable(false);
    setParagraphStyle(hotKeyParagraphStyle());
}

KRVXHotKeyTextView::~KRVXHotKeyTextView()
{
    setRecorderDelegate(nullptr);
}

void KRVXHotKeyTextView::setRecorderDelegate(HotKeyRecorderDelegate* delegate)
{
    if (delegate_ != nullptr) {
        delegate_->hotKeyRunLoop().cancelPreviousPerformRequests(this);
    }
    delegate_ = delegate;
}

std::string KRVXHotKeyTextView::localized(std::string_view key) const
{
    return delegate_ != nullptr ? delegate_->localizedHotKeyText(key) : std::string(key);
}

// An empty field reads "No Shortcut", but shows nothing while it records.
std::string KRVXHotKeyTextView::emptyText(bool recording) const
{
    return recording ? " " : localized("No Shortcut");
}

void KRVXHotKeyTextView::setHotKeyIdentifier(std::string identifier, std::string direction)
{
    identifier_ = std::move(identifier);
    direction_ = std::move(direction);
    if (deleteButton_ != nullptr) {
        deleteButton_->setToolTip(localized("Clear Shortcut"));
    }
    showSlot();
}

std::string KRVXHotKeyTextView::hotKeyIdentifier() const
{
    return identifier_.empty() ? std::string(unsetIdentifier) : identifier_;
}

std::string KRVXHotKeyTextView::direction() const
{
    return direction_.empty() ? std::string(anyDirection) : direction_;
}

const PlistDictionary* KRVXHotKeyTextView::storedRecord() const
{
    const PlistValue* table = objectForKey(delegate_->hotKeyRecords(), hotKeyIdentifier());
    const PlistValue* stored = table != nullptr && table->isDictionary()
                                   ? objectForKey(*table->asDictionary(), direction())
                                   : nullptr;
    return stored != nullptr ? stored->asDictionary() : nullptr;
}

void KRVXHotKeyTextView::showDesktopOwner()
{
    const PlistDictionary* record = delegate_ != nullptr ? storedRecord() : nullptr;
    if (record == nullptr || objectForKey(*record, hotkeyrecord::keyCode) == nullptr) {
        return;
    }
    const auto keyCode = static_cast<std::uint16_t>(integerForKey(*record, hotkeyrecord::keyCode));
    const auto flags = static_cast<std::uint64_t>(integerForKey(*record, hotkeyrecord::modifiers));
    const ShortcutOwner owner = ownerOf(keyCode, flags);
    if (owner.answer == ShortcutOwner::Answer::Taken) {
        showSlot(); // the combination named as the field shows it
        // Left standing until the user records another: nothing is changed for them.
        showRefusal(HotKeyRefusal{}, string(), owner);
    }
}

// The stored record, relabelled for the keyboard layout and exact-matching setting of now.
void KRVXHotKeyTextView::showSlot()
{
    if (delegate_ == nullptr) {
        return;
    }
    const PlistDictionary* record = storedRecord();
    std::optional<std::string> text;
    std::uint64_t modifiers = 0;
    if (record != nullptr) {
        modifiers = static_cast<std::uint64_t>(integerForKey(*record, hotkeyrecord::modifiers));
        const PlistValue* visual = objectForKey(*record, hotkeyrecord::visualRepresentation);
        if (visual != nullptr && visual->isString()) {
            std::optional<std::string> key;
            if (objectForKey(*record, hotkeyrecord::keyCode) != nullptr) {
                key = KRVXStringForKeyCode(
                    static_cast<std::uint16_t>(integerForKey(*record, hotkeyrecord::keyCode)),
                    false, delegate_->hotKeyKeyboardLayout());
            }
            if (!key) {
                key = stringByTrimmingModifierPrefix(*visual->asString());
            }
            const bool exact = delegate_->hotKeyMatching().exact;
            text = key->empty() ? *visual->asString()
                                : readableKeyStringPrefixWithModifierFlags(modifiers, exact) + *key;
        }
    }
    setOccupiedWithVisualHotKeyRepresentation(text, modifiers);
}

void KRVXHotKeyTextView::setOccupiedWithVisualHotKeyRepresentation(
    const std::optional<std::string>& text, std::uint64_t)
{
    setParagraphStyle(hotKeyParagraphStyle());
    occupied_ = text.has_value();
    const bool focused = isRecording();
    if (occupied_) {
        setTextColor(Color::calibratedWhite(0, 1));
        setString(*text);
    } else {
        setTextColor(noShortcutColor());
        setString(emptyText(focused));
    }
    if (focused) {
        selectAll();
    }
    if (deleteButton_ != nullptr) {
        deleteButton_->setEnabled(occupied_);
    }
}

bool KRVXHotKeyTextView::isRecording() const
{
    return window() != nullptr && window()->firstResponder() == this;
}

bool KRVXHotKeyTextView::becomeFirstResponder()
{
    if (!TextView::becomeFirstResponder()) {
        return false;
    }
    if (delegate_ != nullptr) {
        RunLoop& loop = delegate_->hotKeyRunLoop();
        loop.cancelPreviousPerformRequests(this, timeOutSelector, PerformArgument{});
        loop.performAfterDelay(this, timeOutSelector, {}, recordingTimeout, timeOutModes,
                               [this] { timeOutFirstResponder(); });
    }
    updateDisplayForFirstResponder(true);
    return true;
}

void KRVXHotKeyTextView::timeOutFirstResponder()
{
    if (isRecording()) {
        activelyResignFirstResponder();
    }
}

bool KRVXHotKeyTextView::resignFirstResponder()
{
    if (delegate_ != nullptr) {
        delegate_->hotKeyRunLoop().cancelPreviousPerformRequests(this, timeOutSelector,
                                                                 PerformArgument{});
    }
    // A key that would move the focus (Tab, Shift-Tab) is recorded instead.
    const Event* current = Application::shared().currentEvent();
    if (!activelyResigning_ && current != nullptr && current->type() == Event::Type::KeyDown) {
        keyDown(*current);
        return false;
    }
    updateDisplayForFirstResponder(false);
    if (!TextView::resignFirstResponder()) {
        updateDisplayForFirstResponder(true);
        return false;
    }
    return true;
}

void KRVXHotKeyTextView::activelyResignFirstResponder()
{
    activelyResigning_ = true;
    if (window() != nullptr) {
        window()->makeFirstResponder(nullptr);
    }
    activelyResigning_ = false;
    if (!occupied_) {
        setOccupiedWithVisualHotKeyRepresentation(std::nullopt, 0);
    }
}

void KRVXHotKeyTextView::updateDisplayForFirstResponder(bool focused)
{
    if (!occupied_) {
        setString(emptyText(focused));
    }
    if (focused) {
        const bool main = window() != nullptr && window()->isMainWindow();
        setBackgroundColor(main ? selectedTextBackgroundColor() : secondarySelectedControlColor());
        selectAll();
    } else {
        setBackgroundColor(Color::whiteColor());
        setSelectedRange(TextRange{});
    }
}

bool KRVXHotKeyTextView::performKeyEquivalent(const Event& event)
{
    if (!isRecording() || event.type() != Event::Type::KeyDown) {
        return false;
    }
    keyDown(event);
    return true;
}

void KRVXHotKeyTextView::keyDown(const Event& event)
{
    const std::uint64_t flags = event.modifierFlags();
    if ((flags & Event::shiftControlOptionCommandMask) == 0 &&
        event.type() == Event::Type::KeyDown && event.characters().starts_with(escape)) {
        activelyResignFirstResponder();
        return;
    }
    record(event);
}

// A beep alone is missed (and on a desktop without sound, never heard): the reason stays shown
// beside the field for a few seconds.
void KRVXHotKeyTextView::showRefusal(const HotKeyRefusal& refusal, const std::string& combination,
                                     const ShortcutOwner& owner)
{
    if (refusal.identifier.empty() && owner.answer == ShortcutOwner::Answer::Taken) {
        // "Alt+Tab is used by Openbox: NextWindow", in the desktop's own words for the action.
        setNotice(
            owner.action.empty()
                ? FormatString::fill(localized("%@ is used by %@"), {combination, owner.program})
                : FormatString::fill(localized("%@ is used by %@: %@"),
                                     {combination, owner.program, owner.action}),
            combination);
    } else if (refusal.identifier.empty()) {
        setNotice(FormatString::fill(localized("%@ is held by another program"), {combination}),
                  combination);
    } else if (refusal.direction.empty() || refusal.direction == anyDirection) {
        setNotice(FormatString::fill(localized("%@ is already used by %@"),
                                     {combination, titleOfSlot(refusal)}),
                  combination);
    } else {
        setNotice(
            FormatString::fill(localized("%@ is already used by %@ (%@)"),
                               {combination, titleOfSlot(refusal), localized(refusal.direction)}),
            combination);
    }
}

void KRVXHotKeyTextView::clearNoticeLater()
{
    if (delegate_ == nullptr) {
        return;
    }
    RunLoop& loop = delegate_->hotKeyRunLoop();
    loop.cancelPreviousPerformRequests(this, clearNoticeSelector, PerformArgument{});
    loop.performAfterDelay(this, clearNoticeSelector, {}, refusalNoticeTime,
                           RunLoopModes{RunLoopMode::Default}, [this] { setNotice({}); });
}

// The label of the field bound to the slot, found among this field's neighbours; the slot's own
// identifier where no field shows it.
std::string KRVXHotKeyTextView::titleOfSlot(const HotKeyRefusal& refusal) const
{
    const View* page = superview();
    if (page == nullptr) {
        return refusal.identifier;
    }
    for (const auto& view : page->subviews()) {
        const auto* field = dynamic_cast<const KRVXHotKeyTextView*>(view.get());
        if (field != nullptr && !field->title().empty() &&
            field->hotKeyIdentifier() == refusal.identifier &&
            (refusal.direction.empty() || field->direction() == refusal.direction)) {
            std::string title = localized(field->title());
            if (title.ends_with(':')) {
                title.pop_back();
            }
            return title;
        }
    }
    return refusal.identifier;
}

ShortcutOwner KRVXHotKeyTextView::ownerOf(std::uint16_t keyCode, std::uint64_t flags) const
{
    ShortcutOwners* owners = delegate_ != nullptr ? delegate_->hotKeyOwners() : nullptr;
    if (owners == nullptr) {
        return {};
    }
    using M = ShortcutOwners::Modifier;
    unsigned modifiers = 0;
    modifiers |= (flags & Event::shiftKeyMask) != 0 ? unsigned(M::shift) : 0u;
    modifiers |= (flags & Event::controlKeyMask) != 0 ? unsigned(M::control) : 0u;
    modifiers |= (flags & Event::optionKeyMask) != 0 ? unsigned(M::alt) : 0u;
    modifiers |= (flags & Event::commandKeyMask) != 0 ? unsigned(M::super) : 0u;
    return owners->ownerOf(keyCode, modifiers);
}

void KRVXHotKeyTextView::record(const Event& event)
{
    if (delegate_ == nullptr) {
        return;
    }
    const std::uint64_t flags = event.modifierFlags();
    const HotKeyRecorderDelegate::Matching matching = delegate_->hotKeyMatching();
    const std::string readable =
        readableKeyString(event, matching.exact, delegate_->hotKeyKeyboardLayout());
    const auto refusal = KRVXRefusalOfHotKey(
        event.keyCode(), flags, matching.exact, matching.ignoreCapsLock, matching.ignoreFunctionKey,
        delegate_->hotKeyRecords(), delegate_->hotKeyRegistrar());
    if (refusal) {
        // Held by another program: the desktop may say which.
        const ShortcutOwner owner =
            refusal->identifier.empty() ? ownerOf(event.keyCode(), flags) : ShortcutOwner{};
        Application::shared().beep();
        showRefusal(*refusal, readable, owner);
        clearNoticeLater();
        return;
    }
    setNotice({});
    if (KRVXNeedsReservationWarning(flags)) {
        const int answer = delegate_->runHotKeyAlert(
            AlertRequest{localized("Vexto - Warning"),
                         FormatString::fill(
                             localized("Some applications might not respond properly to your input "
                                       "with the key combination \"%@\" being reserved by Vexto."),
                             {readable}),
                         FormatString::fill(localized("Use \"%@\""), {readable}),
                         localized("Cancel"),
                         {}},
            window());
        if (answer != 1) {
            return; // still recording, the old contents kept
        }
    }
    // What the display's probe cannot see (a compositor's keys, a binding of a key that is
    // free this moment) the desktop's settings may name.
    const ShortcutOwner owner = ownerOf(event.keyCode(), flags);
    if (owner.answer == ShortcutOwner::Answer::Taken) {
        Application::shared().beep();
        showRefusal(HotKeyRefusal{}, readable, owner);
        clearNoticeLater();
        return;
    }
    if (owner.answer == ShortcutOwner::Answer::Unknown) {
        setNotice(FormatString::fill(localized("%@ is set; the desktop could not be asked "
                                               "whether it uses it too"),
                                     {readable}),
                  readable);
        clearNoticeLater();
    }
    PlistDictionary& settings = delegate_->hotKeyRecords();
    PlistValue& table = settings[hotKeyIdentifier()];
    if (!table.isDictionary()) {
        table = PlistDictionary{};
    }
    table.asDictionary()->insert_or_assign(
        direction(),
        PlistDictionary{
            {std::string(hotkeyrecord::keyCode), std::to_string(event.keyCode())},
            {std::string(hotkeyrecord::modifiers), std::to_string(flags)},
            {std::string(hotkeyrecord::visualRepresentation), readable},
            {std::string(hotkeyrecord::character), event.charactersIgnoringModifiers()}});
    delegate_->hotKeyRecordsDidChange();
    setOccupiedWithVisualHotKeyRepresentation(readable, flags);
    activelyResignFirstResponder();
}

void KRVXHotKeyTextView::deleteHotKey()
{
    if (delegate_ == nullptr) {
        return;
    }
    PlistDictionary& settings = delegate_->hotKeyRecords();
    const auto table = settings.find(hotKeyIdentifier());
    PlistDictionary* records = table != settings.end() ? table->second.asDictionary() : nullptr;
    const auto found =
        records != nullptr ? records->find(direction()) : PlistDictionary::iterator{};
    if (records == nullptr || found == records->end()) {
        Log::line("superfluous deletion");
        return;
    }
    records->erase(found); // the table itself stays, possibly empty
    setOccupiedWithVisualHotKeyRepresentation(std::nullopt, 0);
    delegate_->hotKeyRecordsDidChange();
}

TextRange KRVXHotKeyTextView::selectionRangeForProposedRange(TextRange) const
{
    return TextRange{0, length()};
}

void KRVXHotKeyTextView::setString(std::string text)
{
    TextView::setString(std::move(text));
    setFont(Font::systemFontOfSize(13));
}

bool KRVXHotKeyTextView::deleteBackward()
{
    if (isRecording() || deleteButton_ == nullptr || !deleteButton_->isEnabled()) {
        return false;
    }
    deleteButton_->performClick();
    return true;
}

bool KRVXHotKeyTextView::respondsToSelector(std::string_view selector) const
{
    return selector == "delete:";
}

void KRVXHotKeyTextView::performAction(std::string_view selector, const ActionSender&)
{
    if (selector == "delete:") {
        deleteHotKey();
    }
}

} // namespace vexto
