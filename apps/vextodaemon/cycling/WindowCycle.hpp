#pragma once

#include "cycling/CycleWindow.hpp"
#include "cycling/HotKeyBinding.hpp"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vexto {

// One cycle through windows: which windows it offers, in the order they were last used, and
// which one is selected. It knows nothing of keys or of the screen.
class WindowCycle {
public:
    // How applications follow each other, as the pane's sort pop-up names them by tag.
    enum class ApplicationOrder { Name = 0, LaunchDate = 1, WindowCount = 2, RecentUse = 3 };
    // Where the activation and cancellation items go, by the index of the pane's pop-ups.
    enum class ItemPlace { Top = 0, Bottom = 1 };
    // What is selected after the selected window was zoomed, minimised or closed, by the index
    // of the pane's pop-ups.
    enum class FollowUp { Nothing = 0, SameApplication = 1, NextWindow = 2, PreviousWindow = 3 };

    struct Options {
        // The first press already selects the window after the active one, so that a quick
        // press and release goes back to the window used before.
        bool stepForwardInitially = true;
        bool wrapAround = true;
        // Only the windows of this desktop, and those shown on every desktop; none: all.
        std::optional<std::uint32_t> desktop = std::nullopt;
        // Left out: applications by name and windows by title, as the user typed them; compared
        // without case and without the blanks around them.
        std::vector<std::string> leftOutApplications = {};
        std::vector<std::string> leftOutTitles = {};
        // By recent use the windows follow their own order of use; by anything else each
        // application's windows are kept together, in the order they were used.
        ApplicationOrder applicationOrder = ApplicationOrder::RecentUse;
        bool invertApplicationOrder = false;
        // Listed before the first window or after the last; none: not listed.
        std::optional<ItemPlace> activationItem = std::nullopt;
        std::optional<ItemPlace> cancellationItem = std::nullopt;
    };

    // `recentFirst` holds every window, the most recently used first; `active` is the window
    // with the focus. The mode's filter picks the windows offered; a cycle of the frontmost
    // application offers only the windows of the active window's program.
    WindowCycle(const std::vector<CycleWindow>& recentFirst, std::optional<std::uint64_t> active,
                DaemonAction mode, StepDirection firstStep, Options options);

    // The windows offered, with the activation and cancellation items where asked for.
    const std::vector<CycleWindow>& items() const { return items_; }
    // The desktop shown when the cycle started; none where the window manager says none.
    std::optional<std::uint32_t> currentDesktop() const { return currentDesktop_; }
    void setCurrentDesktop(std::optional<std::uint32_t> desktop) { currentDesktop_ = desktop; }
    // No window to offer: a cycle never lists its own items alone.
    bool isEmpty() const { return items_.empty(); }
    std::optional<std::size_t> selectedIndex() const { return selected_; }
    // The selected window; none while the cancellation item or nothing is selected.
    const CycleWindow* selected() const;
    bool cancellationItemSelected() const;

    // The place of each application's first window, applications in the order their first
    // windows come: the order the panel shows them in and numbers their badges.
    std::vector<std::size_t> firstWindowOfEachApplication() const;

    // Steps pass over the activation item: it is there for the mouse.
    void step(StepDirection direction);
    void selectFirst();
    void selectLast();
    void select(std::size_t index);
    // A window that went away while the cycle was up; the selection stays on the same window,
    // or moves to the one that took the gone one's place.
    void remove(std::uint64_t id);
    // The selected window was acted on; `closed` takes it out of the cycle. The selection moves
    // as `followUp` says; with Nothing none is selected, and a step starts where the window was.
    void selectionActedOn(FollowUp followUp, bool closed);
    void markMinimized(std::uint64_t id);

    static bool offers(DaemonAction mode, const CycleWindow& window);

private:
    void orderApplications();
    void selectFirstStep(std::optional<std::uint64_t> active, StepDirection firstStep);
    void addOwnItems();
    // The nearest item from `from` (which may lie just outside the list) in `direction` that
    // `wanted` accepts, wrapping past the ends when `wrap` says so.
    template <typename Wanted>
    std::optional<std::size_t> nearest(std::ptrdiff_t from, StepDirection direction, bool wrap,
                                       Wanted wanted) const;
    std::optional<std::size_t> followUpOf(FollowUp followUp, std::size_t actedOn,
                                          bool closed) const;
    std::size_t windowCount() const;

    std::vector<CycleWindow> items_;
    std::optional<std::size_t> selected_;
    // With nothing selected: where the window acted on was, and whether it left the list.
    std::size_t emptyPlace_ = 0;
    bool emptyPlaceWasRemoved_ = false;
    std::optional<std::uint32_t> currentDesktop_;
    Options options_;
};

} // namespace vexto
