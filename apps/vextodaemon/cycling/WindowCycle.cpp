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
    selectFirstStep(active, firstStep);
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
    const auto at = std::find_if(items_.begin(), items_.end(),
                                 [&](const CycleWindow& w) { return w.id == active; });
    if (at == items_.end()) {
        // The focused window is not offered: the first window offered is already the one after
        // it, and the last the one before.
        selected_ = firstStep == StepDirection::Forward ? 0 : items_.size() - 1;
        return;
    }
    const auto place = static_cast<std::size_t>(at - items_.begin());
    selected_ = place;
    if (!options_.stepForwardInitially) {
        return;
    }
    if (firstStep == StepDirection::Forward) {
        if (items_.size() > 1) {
            selected_ = (place + 1) % items_.size();
        }
    } else {
        // A first step backwards goes past either end, whatever the wrapping.
        selected_ = place == 0 ? items_.size() - 1 : place - 1;
    }
}

const CycleWindow* WindowCycle::selected() const
{
    return selected_ ? &items_[*selected_] : nullptr;
}

std::vector<std::size_t> WindowCycle::firstWindowOfEachApplication() const
{
    std::vector<std::size_t> firsts;
    for (std::size_t index = 0; index < items_.size(); ++index) {
        const bool seen = std::any_of(firsts.begin(), firsts.end(), [&](std::size_t first) {
            return items_[first].applicationKey == items_[index].applicationKey;
        });
        if (!seen) {
            firsts.push_back(index);
        }
    }
    return firsts;
}

void WindowCycle::step(StepDirection direction)
{
    if (!selected_) {
        return;
    }
    const std::size_t count = items_.size();
    const std::size_t at = *selected_;
    if (direction == StepDirection::Forward) {
        if (at + 1 < count) {
            selected_ = at + 1;
        } else if (options_.wrapAround) {
            selected_ = 0;
        }
    } else {
        if (at > 0) {
            selected_ = at - 1;
        } else if (options_.wrapAround) {
            selected_ = count - 1;
        }
    }
}

void WindowCycle::selectFirst()
{
    if (!items_.empty()) {
        selected_ = 0;
    }
}

void WindowCycle::selectLast()
{
    if (!items_.empty()) {
        selected_ = items_.size() - 1;
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
    const auto gone = std::find_if(items_.begin(), items_.end(),
                                   [&](const CycleWindow& w) { return w.id == id; });
    if (gone == items_.end()) {
        return;
    }
    const auto index = static_cast<std::size_t>(gone - items_.begin());
    items_.erase(gone);
    if (items_.empty()) {
        selected_.reset();
    } else if (*selected_ > index || *selected_ == items_.size()) {
        selected_ = *selected_ - 1;
    }
}

} // namespace vexto
