#include "cycling/WindowCycle.hpp"

#include "foundation/StringExtensions.hpp"

#include <algorithm>
#include <climits>
#include <cstdint>
#include <set>
#include <string_view>
#include <tuple>

namespace vexto {

namespace {

bool ofFrontmostApplication(DaemonAction mode)
{
    return mode == DaemonAction::CycleAllWindowsOfFrontmostApplication ||
           mode == DaemonAction::CycleNonMinimizedWindowsOfFrontmostApplication ||
           mode == DaemonAction::CycleMinimizedWindowsOfFrontmostApplication;
}

// Without case (ASCII letters) and without the blanks around it, as "Firefox, Terminal" is typed.
std::string comparable(std::string_view text)
{
    return asciiLowercased(trimmedString(text));
}

// The names as they are compared, made once a cycle rather than once a window.
std::set<std::string> comparableNames(const std::vector<std::string>& names)
{
    std::set<std::string> made;
    for (const std::string& name : names) {
        if (std::string compared = comparable(name); !compared.empty()) {
            made.insert(std::move(compared));
        }
    }
    return made;
}

} // namespace

bool WindowCycle::offers(DaemonAction mode, const CycleWindow& window)
{
    switch (mode) {
    case DaemonAction::CycleNonMinimizedWindows:
    case DaemonAction::CycleNonMinimizedWindowsOfFrontmostApplication:
        return !window.minimized;
    case DaemonAction::CycleMinimizedWindows:
    case DaemonAction::CycleMinimizedWindowsOfFrontmostApplication:
        return window.minimized;
    default:
        return true;
    }
}

WindowCycle::WindowCycle(const std::vector<CycleWindow>& recentFirst,
                         std::optional<std::uint64_t> active, DaemonAction mode,
                         StepDirection firstStep, Options options)
    : options_(options)
{
    const auto activeWindow = std::find_if(recentFirst.begin(), recentFirst.end(),
                                           [&](const CycleWindow& w) { return w.id == active; });
    const bool onlyFrontmost = ofFrontmostApplication(mode);
    if (onlyFrontmost && activeWindow == recentFirst.end()) {
        return; // no frontmost program, nothing of it to offer
    }
    const std::set<std::string> leftOutApplications = comparableNames(options_.leftOutApplications);
    const std::set<std::string> leftOutTitles = comparableNames(options_.leftOutTitles);
    const auto leftOut = [&](const CycleWindow& window) {
        return (options_.desktop && window.desktop && *window.desktop != *options_.desktop) ||
               leftOutApplications.contains(comparable(window.applicationName)) ||
               leftOutTitles.contains(comparable(window.title));
    };
    for (const CycleWindow& window : recentFirst) {
        if (offers(mode, window) && !leftOut(window) &&
            (!onlyFrontmost || window.applicationKey == activeWindow->applicationKey)) {
            items_.push_back(window);
        }
    }
    if (items_.empty()) {
        return;
    }
    orderApplications();
    addOwnItems();
    selectFirstStep(active, firstStep);
}

void WindowCycle::addOwnItems()
{
    std::size_t atTop = 0;
    const auto add = [&](std::optional<ItemPlace> place, CycleItemKind kind) {
        if (!place) {
            return;
        }
        CycleWindow item;
        item.kind = kind;
        if (*place == ItemPlace::Top) {
            items_.insert(items_.begin() + static_cast<std::ptrdiff_t>(atTop++), item);
        } else {
            items_.push_back(item);
        }
    };
    add(options_.activationItem, CycleItemKind::ActivationItem);
    add(options_.cancellationItem, CycleItemKind::CancellationItem);
}

template <typename Wanted>
std::optional<std::size_t> WindowCycle::nearest(std::ptrdiff_t from, StepDirection direction,
                                                bool wrap, Wanted wanted) const
{
    const auto count = static_cast<std::ptrdiff_t>(items_.size());
    const std::ptrdiff_t delta = direction == StepDirection::Forward ? 1 : -1;
    std::ptrdiff_t at = from;
    for (std::ptrdiff_t tried = 0; tried < count; ++tried) {
        at += delta;
        if (at < 0 || at >= count) {
            if (!wrap) {
                return std::nullopt;
            }
            at = (at + count) % count;
        }
        if (wanted(items_[static_cast<std::size_t>(at)])) {
            return static_cast<std::size_t>(at);
        }
    }
    return std::nullopt;
}

std::size_t WindowCycle::windowCount() const
{
    return static_cast<std::size_t>(std::count_if(
        items_.begin(), items_.end(), [](const CycleWindow& item) { return item.isWindow(); }));
}

void WindowCycle::orderApplications()
{
    using Order = ApplicationOrder;
    if (options_.applicationOrder == Order::RecentUse && !options_.invertApplicationOrder) {
        return;
    }
    struct Application {
        std::string key;
        std::size_t firstUse;   // the place of its most recently used window
        std::string name;       // without case
        std::uint32_t launched; // the earliest mapping of its windows
        std::size_t windows;
    };
    std::vector<Application> applications;
    for (std::size_t index = 0; index < items_.size(); ++index) {
        const CycleWindow& window = items_[index];
        auto known =
            std::find_if(applications.begin(), applications.end(),
                         [&](const Application& a) { return a.key == window.applicationKey; });
        if (known == applications.end()) {
            applications.push_back({window.applicationKey, index,
                                    comparable(window.applicationName), window.mappedOrder, 0});
            known = applications.end() - 1;
        }
        known->launched = std::min(known->launched, window.mappedOrder);
        ++known->windows;
    }
    const auto key = [&](const Application& a) {
        switch (options_.applicationOrder) {
        case Order::Name:
            return std::tuple(std::size_t(0), a.name, a.firstUse);
        case Order::LaunchDate:
            return std::tuple(std::size_t(a.launched), std::string(), a.firstUse);
        case Order::WindowCount:
            return std::tuple(SIZE_MAX - a.windows, std::string(), a.firstUse);
        case Order::RecentUse:
            break;
        }
        return std::tuple(a.firstUse, std::string(), a.firstUse);
    };
    std::stable_sort(applications.begin(), applications.end(),
                     [&](const Application& a, const Application& b) { return key(a) < key(b); });
    if (options_.invertApplicationOrder) {
        std::reverse(applications.begin(), applications.end());
    }
    std::vector<CycleWindow> ordered;
    ordered.reserve(items_.size());
    for (const Application& application : applications) {
        for (const CycleWindow& window : items_) {
            if (window.applicationKey == application.key) {
                ordered.push_back(window);
            }
        }
    }
    items_ = std::move(ordered);
}

void WindowCycle::selectFirstStep(std::optional<std::uint64_t> active, StepDirection firstStep)
{
    const auto isWindow = [](const CycleWindow& item) {
        return item.isWindow();
    };
    const auto at = std::find_if(items_.begin(), items_.end(), [&](const CycleWindow& w) {
        return w.isWindow() && w.id == active;
    });
    if (at == items_.end()) {
        // The focused window is not offered: the first window offered is already the one after
        // it, and the last the one before.
        selected_ =
            firstStep == StepDirection::Forward
                ? nearest(-1, StepDirection::Forward, false, isWindow)
                : nearest(std::ptrdiff_t(items_.size()), StepDirection::Backward, false, isWindow);
        return;
    }
    selected_ = static_cast<std::size_t>(at - items_.begin());
    if (options_.stepForwardInitially) {
        // The first step goes past either end whatever the wrapping, and only to a window: a
        // quick press and release must switch.
        selected_ = nearest(std::ptrdiff_t(*selected_), firstStep, true, isWindow);
    }
}

const CycleWindow* WindowCycle::selected() const
{
    return selected_ && items_[*selected_].isWindow() ? &items_[*selected_] : nullptr;
}

bool WindowCycle::cancellationItemSelected() const
{
    return selected_ && items_[*selected_].kind == CycleItemKind::CancellationItem;
}

std::vector<std::size_t> WindowCycle::firstWindowOfEachApplication() const
{
    std::vector<std::size_t> firsts;
    for (std::size_t index = 0; index < items_.size(); ++index) {
        const bool seen = std::any_of(firsts.begin(), firsts.end(), [&](std::size_t first) {
            return items_[first].applicationKey == items_[index].applicationKey;
        });
        if (items_[index].isWindow() && !seen) {
            firsts.push_back(index);
        }
    }
    return firsts;
}

namespace {

bool isStop(const CycleWindow& item)
{
    return item.kind != CycleItemKind::ActivationItem;
}

StepDirection opposite(StepDirection direction)
{
    return direction == StepDirection::Forward ? StepDirection::Backward : StepDirection::Forward;
}

} // namespace

void WindowCycle::step(StepDirection direction)
{
    if (items_.empty()) {
        return;
    }
    std::ptrdiff_t from = std::ptrdiff_t(selected_.value_or(emptyPlace_));
    if (!selected_ && emptyPlaceWasRemoved_ && direction == StepDirection::Forward) {
        from -= 1; // the item after the gone one took its place
    }
    if (const auto next = nearest(from, direction, options_.wrapAround, isStop)) {
        selected_ = next;
    }
}

void WindowCycle::selectFirst()
{
    if (const auto first = nearest(-1, StepDirection::Forward, false, isStop)) {
        selected_ = first;
    }
}

void WindowCycle::selectLast()
{
    if (const auto last =
            nearest(std::ptrdiff_t(items_.size()), StepDirection::Backward, false, isStop)) {
        selected_ = last;
    }
}

void WindowCycle::select(std::size_t index)
{
    if (index < items_.size()) {
        selected_ = index;
    }
}

void WindowCycle::remove(std::uint64_t id)
{
    const auto gone = std::find_if(items_.begin(), items_.end(), [&](const CycleWindow& w) {
        return w.isWindow() && w.id == id;
    });
    if (gone == items_.end()) {
        return;
    }
    const auto index = static_cast<std::size_t>(gone - items_.begin());
    items_.erase(gone);
    if (windowCount() == 0) {
        items_.clear();
        selected_.reset();
        return;
    }
    if (!selected_) {
        emptyPlaceWasRemoved_ = emptyPlaceWasRemoved_ || emptyPlace_ == index;
        emptyPlace_ -= emptyPlace_ > index ? 1 : 0;
        return;
    }
    const bool selectedWentAway = *selected_ == index;
    if (*selected_ > index || *selected_ == items_.size()) {
        selected_ = *selected_ - 1;
    }
    if (selectedWentAway && !isStop(items_[*selected_])) {
        // The item that took the gone one's place is there for the mouse only.
        const auto wasAt = std::ptrdiff_t(*selected_);
        selected_ = nearest(wasAt, StepDirection::Forward, false, isStop);
        if (!selected_) {
            selected_ = nearest(wasAt, StepDirection::Backward, false, isStop);
        }
    }
}

std::optional<std::size_t> WindowCycle::followUpOf(FollowUp followUp, std::size_t actedOn,
                                                   bool closed) const
{
    const CycleWindow& acted = items_[actedOn];
    const auto other = [&](const CycleWindow& w) {
        return w.isWindow() && w.id != acted.id;
    };
    const auto from = std::ptrdiff_t(actedOn);
    const auto neighbour = [&](StepDirection direction) -> std::optional<std::size_t> {
        if (const auto found = nearest(from, direction, options_.wrapAround, other)) {
            return found;
        }
        // At an end without wrapping: the window stays selected, or, gone, its neighbour.
        return closed ? nearest(from, opposite(direction), false, other) : std::optional(actedOn);
    };
    switch (followUp) {
    case FollowUp::Nothing:
        return std::nullopt;
    case FollowUp::SameApplication:
        if (const auto same =
                nearest(from, StepDirection::Forward, true, [&](const CycleWindow& w) {
                    return other(w) && w.applicationKey == acted.applicationKey;
                })) {
            return same;
        }
        return closed ? neighbour(StepDirection::Forward) : std::optional(actedOn);
    case FollowUp::NextWindow:
        return neighbour(StepDirection::Forward);
    case FollowUp::PreviousWindow:
        return neighbour(StepDirection::Backward);
    }
    return std::nullopt;
}

void WindowCycle::selectionActedOn(FollowUp followUp, bool closed)
{
    if (selected() == nullptr) {
        return;
    }
    const std::size_t at = *selected_;
    const auto next = followUpOf(followUp, at, closed);
    const std::uint64_t nextId = next ? items_[*next].id : 0;
    if (closed) {
        items_.erase(items_.begin() + static_cast<std::ptrdiff_t>(at));
        if (windowCount() == 0) {
            items_.clear();
            selected_.reset();
            return;
        }
    }
    selected_.reset();
    emptyPlace_ = at;
    emptyPlaceWasRemoved_ = closed;
    if (next) {
        const auto found = std::find_if(items_.begin(), items_.end(), [&](const CycleWindow& w) {
            return w.isWindow() && w.id == nextId;
        });
        selected_ = static_cast<std::size_t>(found - items_.begin());
    }
}

void WindowCycle::markMinimized(std::uint64_t id)
{
    for (CycleWindow& item : items_) {
        if (item.isWindow() && item.id == id) {
            item.minimized = true;
        }
    }
}

} // namespace vexto
