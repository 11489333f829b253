#pragma once

#include "cycling/CycleSettings.hpp"
#include "cycling/HotKeyBinding.hpp"
#include "cycling/WindowCycle.hpp"

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace vexto {

class CyclePanel;
class KeyboardLayout;
class RunLoop;
class WindowSystem;

// Turns the keys of a cycle into a switch of windows: a cycle hot key starts a cycle and grabs
// the keyboard, further presses move the selection, the release of the hot key's modifiers
// activates the selected window and Escape cancels. The panel shows only when a cycle is held
// for the panel delay, so that a quick press and release switches without it. While it is up,
// the selected window can be zoomed (+ or =), minimised (-) and closed (Delete or Backspace),
// and by the keys of the frontmost-window actions. Keys are the platform's virtual key codes
// and modifier words, as the settings keep them.
class CycleController {
public:
    CycleController(RunLoop& loop, WindowSystem& windows, CyclePanel* panel);
    ~CycleController();
    CycleController(const CycleController&) = delete;
    CycleController& operator=(const CycleController&) = delete;

    void setSettings(const CycleSettings& settings) { settings_ = settings; }
    // The hot keys, so that a press of one during a cycle steps it.
    void setBindings(std::vector<HotKeyBinding> bindings) { bindings_ = std::move(bindings); }
    // What a key types, for the badges; without one no badge can be typed.
    void setKeyboardLayout(const KeyboardLayout* layout) { layout_ = layout; }

    bool isCycling() const { return cycle_ != nullptr; }
    const WindowCycle* cycle() const { return cycle_.get(); }

    // A cycle hot key, pressed while no cycle is up.
    void hotKeyPressed(const HotKeyBinding& binding, std::uint32_t time);
    // Keys while a cycle holds the keyboard. `modifiers` are those held with the key.
    void keyPressed(std::uint16_t keyCode, std::uint64_t modifiers, std::uint32_t time);
    void keyReleased(std::uint16_t keyCode, std::uint64_t modifiers, std::uint32_t time);
    // The modifiers still held after a modifier key went up.
    void modifiersReleased(std::uint64_t stillHeld, std::uint32_t time);
    void itemClicked(std::size_t index, std::uint32_t time);
    // The window went away; a cycle left with nothing ends.
    void windowClosed(std::uint64_t id);
    // Ends a cycle without switching, as Escape does (the window system went away, say).
    void cancel(std::uint32_t time);

private:
    // Switches to the selected window, after the zooming, minimising and closing put off
    // until now; the cancellation item selected cancels instead.
    void activateSelection(std::uint32_t time);
    void actOnSelection(DaemonAction action, std::uint32_t time);
    void putOff(DaemonAction action, const CycleWindow& window);
    // The zoom, minimise or close action a key asks for on the selected window.
    std::optional<DaemonAction> selectionActionOfKey(std::uint16_t keyCode) const;
    void end(std::uint32_t time);
    void showPanel();
    void redraw();
    // The preview waits for the selection to rest on a window; a moved selection takes the
    // preview away at once, so that it never shows another window than the selected one.
    void schedulePreview();
    void showPreview();
    void hidePreview();
    std::optional<StepDirection> stepOfKey(std::uint16_t keyCode, std::uint64_t modifiers) const;
    // The cycle index of the application whose badge the key types.
    std::optional<std::size_t> badgeOfKey(std::uint16_t keyCode) const;
    // The modifiers whose release ends the cycle.
    std::uint64_t holdingModifiers() const;

    RunLoop& loop_;
    WindowSystem& windows_;
    CyclePanel* panel_;
    CycleSettings settings_;
    std::vector<HotKeyBinding> bindings_;
    const KeyboardLayout* layout_ = nullptr;
    std::unique_ptr<WindowCycle> cycle_;
    HotKeyBinding started_;
    bool panelShown_ = false;
    // The window the preview shown or awaited is of; 0: none.
    std::uint64_t previewOf_ = 0;
    bool previewShown_ = false;
    struct PutOff {
        DaemonAction action;
        CycleWindow window;
    };
    std::vector<PutOff> putOff_;
};

} // namespace vexto
