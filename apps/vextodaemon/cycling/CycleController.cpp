#include "cycling/CycleController.hpp"

#include "cycling/CyclePanel.hpp"
#include "cycling/WindowActions.hpp"
#include "cycling/WindowSystem.hpp"
#include "foundation/Log.hpp"
#include "ports/KeyboardLayout.hpp"
#include "ports/RunLoop.hpp"
#include "toolkit/Event.hpp"

#include <algorithm>

namespace vexto {

namespace {

constexpr std::uint64_t shownModifiers =
    Event::shiftKeyMask | Event::controlKeyMask | Event::optionKeyMask | Event::commandKeyMask;

constexpr const char* showPanelSelector = "showPanel";
constexpr const char* showPreviewSelector = "showPreview";
// The largest side of a preview's picture, in pixels: larger than a panel shows it on the
// screens in use, small enough to be taken in a few milliseconds.
constexpr int previewSide = 800;

// The keys a cycle answers besides its hot keys, as virtual key codes.
enum CycleKey : std::uint16_t {
    returnKey = 0x24,
    backspaceKey = 0x33,
    deleteKey = 0x75,
    spaceKey = 0x31,
    escapeKey = 0x35,
    enterKey = 0x4C,
    homeKey = 0x73,
    endKey = 0x77,
    leftKey = 0x7B,
    rightKey = 0x7C,
    downKey = 0x7D,
    upKey = 0x7E,
};

} // namespace

CycleController::CycleController(RunLoop& loop, WindowSystem& windows, CyclePanel* panel)
    : loop_(loop), windows_(windows), panel_(panel)
{
    if (panel_ != nullptr) {
        panel_->setItemClickedHandler([this](std::size_t index) { itemClicked(index, 0); });
    }
}

CycleController::~CycleController()
{
    loop_.cancelPreviousPerformRequests(this);
    if (panel_ != nullptr) {
        panel_->setItemClickedHandler(nullptr);
    }
}

void CycleController::hotKeyPressed(const HotKeyBinding& binding, std::uint32_t time)
{
    if (!startsCycle(binding.action)) {
        return;
    }
    if (cycle_) {
        keyPressed(binding.keyCode, binding.modifiers, time);
        return;
    }
    WindowCycle::Options options = settings_.options;
    const std::optional<std::uint32_t> currentDesktop = windows_.currentDesktop();
    if (!settings_.switchAcrossSpaces) {
        options.desktop = currentDesktop;
    }
    auto cycle =
        std::make_unique<WindowCycle>(windows_.windowsInRecentOrder(), windows_.activeWindow(),
                                      binding.action, binding.direction, options);
    cycle->setCurrentDesktop(currentDesktop);
    if (cycle->isEmpty()) {
        return; // nothing to offer: the key does nothing, as an empty switcher would
    }
    cycle_ = std::move(cycle);
    started_ = binding;
    if (!windows_.grabKeyboard(time)) {
        // Without the keyboard the release cannot be seen: the press alone switches.
        Log::line("could not take the keyboard for a cycle: switching at once");
        activateSelection(time);
        return;
    }
    if (settings_.panelDelaySeconds <= 0) {
        showPanel();
    } else {
        loop_.performAfterDelay(this, showPanelSelector, {}, settings_.panelDelaySeconds,
                                {RunLoopMode::Default}, [this] { showPanel(); });
    }
}

void CycleController::keyPressed(std::uint16_t keyCode, std::uint64_t modifiers, std::uint32_t time)
{
    if (!cycle_) {
        return;
    }
    switch (keyCode) {
    case escapeKey:
        cancel(time);
        return;
    case returnKey:
    case enterKey:
    case spaceKey:
        activateSelection(time);
        return;
    case leftKey:
    case upKey:
        cycle_->step(StepDirection::Backward);
        break;
    case rightKey:
    case downKey:
        cycle_->step(StepDirection::Forward);
        break;
    case homeKey:
        cycle_->selectFirst();
        break;
    case endKey:
        cycle_->selectLast();
        break;
    default:
        if (const auto step = stepOfKey(keyCode, modifiers)) {
            cycle_->step(*step);
        } else if (const auto action = selectionActionOfKey(keyCode)) {
            actOnSelection(*action, time);
            if (!cycle_) {
                return;
            }
        } else if (const auto badge = badgeOfKey(keyCode)) {
            cycle_->select(*badge);
            activateSelection(time);
            return;
        } else {
            return;
        }
    }
    redraw();
}

void CycleController::keyReleased(std::uint16_t keyCode, std::uint64_t modifiers,
                                  std::uint32_t time)
{
    if (cycle_ && holdingModifiers() == 0 && settings_.activateOnNoModifiers &&
        keyCode == started_.keyCode && (modifiers & shownModifiers) == 0) {
        activateSelection(time);
    }
}

void CycleController::modifiersReleased(std::uint64_t stillHeld, std::uint32_t time)
{
    const std::uint64_t holding = holdingModifiers();
    if (!cycle_ || holding == 0) {
        return;
    }
    const std::uint64_t mustBeUp = settings_.activateOnNoModifiers ? shownModifiers : holding;
    if ((stillHeld & mustBeUp) == 0) {
        activateSelection(time);
    }
}

void CycleController::itemClicked(std::size_t index, std::uint32_t time)
{
    if (!cycle_ || index >= cycle_->items().size()) {
        return;
    }
    switch (cycle_->items()[index].kind) {
    case CycleItemKind::ActivationItem:
        break;
    case CycleItemKind::CancellationItem:
        cancel(time);
        return;
    case CycleItemKind::Window:
        cycle_->select(index);
        break;
    }
    activateSelection(time);
}

void CycleController::windowClosed(std::uint64_t id)
{
    if (!cycle_) {
        return;
    }
    cycle_->remove(id);
    std::erase_if(putOff_, [&](const PutOff& action) { return action.window.id == id; });
    if (cycle_->isEmpty()) {
        end(0);
    } else {
        redraw();
    }
}

void CycleController::cancel(std::uint32_t time)
{
    if (cycle_) {
        end(time);
    }
}

void CycleController::activateSelection(std::uint32_t time)
{
    if (cycle_ && cycle_->cancellationItemSelected()) {
        cancel(time);
        return;
    }
    const CycleWindow* chosen = cycle_ ? cycle_->selected() : nullptr;
    const std::optional<CycleWindow> target =
        chosen != nullptr ? std::optional(*chosen) : std::nullopt;
    const std::vector<PutOff> putOff = std::move(putOff_);
    end(time);
    for (const PutOff& action : putOff) {
        WindowActions::actOn(windows_, action.action, action.window, time);
    }
    if (target) {
        windows_.activate(*target, time);
    }
}

void CycleController::actOnSelection(DaemonAction action, std::uint32_t time)
{
    const CycleWindow* selected = cycle_->selected();
    if (selected == nullptr) {
        return;
    }
    const CycleWindow window = *selected;
    hidePreview(); // its picture is out of date
    if (settings_.processWindowsWhenDone) {
        putOff(action, window);
    } else {
        WindowActions::actOn(windows_, action, window, time);
    }
    switch (action) {
    case DaemonAction::ZoomFrontmostWindow:
        cycle_->selectionActedOn(settings_.afterZoom, false);
        break;
    case DaemonAction::MinimizeFrontmostWindow:
        cycle_->markMinimized(window.id);
        cycle_->selectionActedOn(settings_.afterMinimize, false);
        break;
    default:
        cycle_->selectionActedOn(settings_.afterClose, true);
        break;
    }
    if (cycle_->isEmpty()) {
        // The last window closed: nothing is left to switch to, but what was put off is done.
        activateSelection(time);
    }
}

void CycleController::putOff(DaemonAction action, const CycleWindow& window)
{
    const auto same = [&](const PutOff& earlier) {
        return earlier.window.id == window.id && earlier.action == action;
    };
    if (action == DaemonAction::ZoomFrontmostWindow && std::erase_if(putOff_, same) != 0) {
        return; // zoomed twice: back to its size, as if never zoomed
    }
    if (action == DaemonAction::CloseFrontmostWindow) {
        // Closing makes the earlier changes to the window moot.
        std::erase_if(putOff_,
                      [&](const PutOff& earlier) { return earlier.window.id == window.id; });
    }
    if (std::none_of(putOff_.begin(), putOff_.end(), same)) {
        putOff_.push_back({action, window});
    }
}

void CycleController::end(std::uint32_t time)
{
    putOff_.clear();
    hidePreview();
    loop_.cancelPreviousPerformRequests(this, showPanelSelector, {});
    if (panelShown_ && panel_ != nullptr) {
        panel_->hideCycle();
    }
    panelShown_ = false;
    cycle_.reset();
    windows_.ungrabKeyboard(time);
}

void CycleController::showPanel()
{
    if (cycle_ && panel_ != nullptr) {
        panelShown_ = panel_->showCycle(*cycle_);
        schedulePreview();
    }
}

void CycleController::redraw()
{
    if (panelShown_) {
        panel_->showCycle(*cycle_);
        schedulePreview();
    }
}

void CycleController::schedulePreview()
{
    const CycleWindow* selected = cycle_ ? cycle_->selected() : nullptr;
    if (selected != nullptr && selected->id == previewOf_) {
        return; // already shown, or on its way
    }
    hidePreview();
    if (selected == nullptr || !settings_.showPreviews || !panelShown_) {
        return;
    }
    previewOf_ = selected->id;
    loop_.performAfterDelay(this, showPreviewSelector, {}, settings_.previewDelaySeconds,
                            {RunLoopMode::Default}, [this] { showPreview(); });
}

void CycleController::showPreview()
{
    const CycleWindow* selected = cycle_ ? cycle_->selected() : nullptr;
    if (selected == nullptr || selected->id != previewOf_ || !panelShown_) {
        return;
    }
    if (const auto picture = windows_.pictureOf(*selected, previewSide)) {
        panel_->showPreview(*picture);
        previewShown_ = true;
    }
}

void CycleController::hidePreview()
{
    loop_.cancelPreviousPerformRequests(this, showPreviewSelector, {});
    previewOf_ = 0;
    if (previewShown_) {
        panel_->hidePreview();
        previewShown_ = false;
    }
}

std::optional<StepDirection> CycleController::stepOfKey(std::uint16_t keyCode,
                                                        std::uint64_t modifiers) const
{
    const HotKeyBinding* forward = nullptr;
    for (const HotKeyBinding& binding : bindings_) {
        if (binding.action != started_.action || binding.keyCode != keyCode) {
            continue;
        }
        if ((binding.modifiers & shownModifiers) == (modifiers & shownModifiers)) {
            return binding.direction;
        }
        if (binding.direction == StepDirection::Forward) {
            forward = &binding;
        }
    }
    if (forward == nullptr && started_.keyCode == keyCode) {
        forward = &started_;
    }
    if (forward == nullptr) {
        return std::nullopt;
    }
    // The forward key with Shift added goes back, as everywhere else.
    return (modifiers & Event::shiftKeyMask) != 0 && (forward->modifiers & Event::shiftKeyMask) == 0
               ? StepDirection::Backward
               : StepDirection::Forward;
}

std::optional<DaemonAction> CycleController::selectionActionOfKey(std::uint16_t keyCode) const
{
    // The frontmost-window keys act on the selection; the cycle's own modifiers are held with
    // them, so their key alone is enough.
    for (const HotKeyBinding& binding : bindings_) {
        if (WindowActions::actsOnOneWindow(binding.action) && binding.keyCode == keyCode) {
            return binding.action;
        }
    }
    if (keyCode == deleteKey || keyCode == backspaceKey) {
        return DaemonAction::CloseFrontmostWindow;
    }
    const auto typed = layout_ != nullptr ? layout_->characterForKeyCode(keyCode) : std::nullopt;
    if (typed == u'+' || typed == u'=') {
        return DaemonAction::ZoomFrontmostWindow;
    }
    if (typed == u'-') {
        return DaemonAction::MinimizeFrontmostWindow;
    }
    return std::nullopt;
}

std::optional<std::size_t> CycleController::badgeOfKey(std::uint16_t keyCode) const
{
    if (!settings_.shortcutBadges || layout_ == nullptr) {
        return std::nullopt;
    }
    const auto typed = layout_->characterForKeyCode(keyCode);
    if (!typed) {
        return std::nullopt;
    }
    std::size_t badge = 0;
    if (*typed >= u'1' && *typed <= u'9') {
        badge = std::size_t(*typed - u'1');
    } else if (*typed >= u'a' && *typed <= u'z') {
        badge = 9 + std::size_t(*typed - u'a');
    } else {
        return std::nullopt;
    }
    const auto firsts = cycle_->firstWindowOfEachApplication();
    return badge < firsts.size() ? std::optional(firsts[badge]) : std::nullopt;
}

std::uint64_t CycleController::holdingModifiers() const
{
    const std::uint64_t held = started_.modifiers & shownModifiers;
    // Shift is let go and taken again to change direction; the other modifiers hold the cycle.
    const std::uint64_t withoutShift = held & ~Event::shiftKeyMask;
    return withoutShift != 0 ? withoutShift : held;
}

} // namespace vexto
