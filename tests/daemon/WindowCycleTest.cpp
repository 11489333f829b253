#include "cycling/WindowCycle.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace vexto {
namespace {

using A = DaemonAction;
using S = StepDirection;

// Five windows, most recently used first: the terminal has the focus.
std::vector<CycleWindow> desk()
{
    return {
        {1, "term", "Terminal", "~", false, 0, nullptr},
        {2, "web", "Browser", "News", false, 0, nullptr},
        {3, "term", "Terminal", "build", true, 0, nullptr},
        {4, "mail", "Mail", "Inbox", false, std::nullopt, nullptr},
        {5, "web", "Browser", "Docs", true, 1, nullptr},
    };
}

std::vector<std::uint64_t> ids(const WindowCycle& cycle)
{
    std::vector<std::uint64_t> listed;
    for (const CycleWindow& window : cycle.items()) {
        listed.push_back(window.id);
    }
    return listed;
}

std::uint64_t selectedId(const WindowCycle& cycle)
{
    return cycle.selected() != nullptr ? cycle.selected()->id : 0;
}

TEST(WindowCycleTest, EachModeOffersItsWindowsInTheOrderTheyWereUsed)
{
    const auto windows = desk();
    const WindowCycle::Options options;
    EXPECT_EQ(ids(WindowCycle(windows, 1, A::CycleAllWindows, S::Forward, options)),
              (std::vector<std::uint64_t>{1, 2, 3, 4, 5}));
    EXPECT_EQ(ids(WindowCycle(windows, 1, A::CycleNonMinimizedWindows, S::Forward, options)),
              (std::vector<std::uint64_t>{1, 2, 4}));
    EXPECT_EQ(ids(WindowCycle(windows, 1, A::CycleMinimizedWindows, S::Forward, options)),
              (std::vector<std::uint64_t>{3, 5}));
    EXPECT_EQ(
        ids(WindowCycle(windows, 1, A::CycleAllWindowsOfFrontmostApplication, S::Forward, options)),
        (std::vector<std::uint64_t>{1, 3}));
    EXPECT_EQ(ids(WindowCycle(windows, 2, A::CycleNonMinimizedWindowsOfFrontmostApplication,
                              S::Forward, options)),
              (std::vector<std::uint64_t>{2}));
    EXPECT_EQ(ids(WindowCycle(windows, 2, A::CycleMinimizedWindowsOfFrontmostApplication,
                              S::Forward, options)),
              (std::vector<std::uint64_t>{5}));
    // With no window focused there is no frontmost program to cycle.
    EXPECT_TRUE(WindowCycle(windows, std::nullopt, A::CycleAllWindowsOfFrontmostApplication,
                            S::Forward, options)
                    .isEmpty());
    EXPECT_TRUE(WindowCycle({}, std::nullopt, A::CycleAllWindows, S::Forward, options).isEmpty());
}

TEST(WindowCycleTest, TheFirstPressSelectsTheWindowUsedBeforeOrStaysWithoutStepForward)
{
    const auto windows = desk();
    EXPECT_EQ(selectedId(WindowCycle(windows, 1, A::CycleAllWindows, S::Forward, {true, true})),
              2u);
    EXPECT_EQ(selectedId(WindowCycle(windows, 1, A::CycleAllWindows, S::Backward, {true, true})),
              5u);
    EXPECT_EQ(selectedId(WindowCycle(windows, 1, A::CycleAllWindows, S::Forward, {false, true})),
              1u);
    EXPECT_EQ(selectedId(WindowCycle(windows, 1, A::CycleAllWindows, S::Backward, {false, true})),
              1u);
    // A cycle that does not offer the focused window starts on its first window already.
    EXPECT_EQ(
        selectedId(WindowCycle(windows, 1, A::CycleMinimizedWindows, S::Forward, {true, true})),
        3u);
    EXPECT_EQ(
        selectedId(WindowCycle(windows, 1, A::CycleMinimizedWindows, S::Backward, {true, true})),
        5u);
    // A lone window stays selected whatever the options.
    const std::vector<CycleWindow> alone = {{7, "x", "X", "x", false, 0, nullptr}};
    EXPECT_EQ(selectedId(WindowCycle(alone, 7, A::CycleAllWindows, S::Forward, {true, false})), 7u);
}

TEST(WindowCycleTest, StepsWrapAroundOnlyWhenAskedAndStayOnTheSameWindowWhenOneGoes)
{
    const auto windows = desk();
    WindowCycle wrapping(windows, 1, A::CycleNonMinimizedWindows, S::Forward, {true, true});
    wrapping.step(S::Forward);
    EXPECT_EQ(selectedId(wrapping), 4u);
    wrapping.step(S::Forward);
    EXPECT_EQ(selectedId(wrapping), 1u);
    wrapping.step(S::Backward);
    EXPECT_EQ(selectedId(wrapping), 4u);

    WindowCycle stopping(windows, 1, A::CycleNonMinimizedWindows, S::Forward, {true, false});
    stopping.step(S::Forward);
    stopping.step(S::Forward);
    EXPECT_EQ(selectedId(stopping), 4u);
    stopping.selectFirst();
    stopping.step(S::Backward);
    EXPECT_EQ(selectedId(stopping), 1u);
    stopping.selectLast();
    EXPECT_EQ(selectedId(stopping), 4u);
    stopping.select(99);
    EXPECT_EQ(selectedId(stopping), 4u);

    WindowCycle shrinking(windows, 1, A::CycleAllWindows, S::Forward, {true, true});
    shrinking.select(3); // the mail window
    shrinking.remove(2);
    EXPECT_EQ(selectedId(shrinking), 4u);
    shrinking.remove(4); // the selected one goes: the next takes its place
    EXPECT_EQ(selectedId(shrinking), 5u);
    shrinking.remove(5); // and at the end, the one before
    EXPECT_EQ(selectedId(shrinking), 3u);
    shrinking.remove(42);
    shrinking.remove(1);
    shrinking.remove(3);
    EXPECT_TRUE(shrinking.isEmpty());
    EXPECT_EQ(shrinking.selected(), nullptr);
    shrinking.step(S::Forward);
    EXPECT_EQ(shrinking.selected(), nullptr);
}

TEST(WindowCycleTest, ExceptionsAsTypedAndTheCurrentDesktopLeaveWindowsOut)
{
    const auto windows = desk();
    WindowCycle::Options options;
    // "Mail, Terminal," as typed in the pane: the blank and the empty last name do not count.
    options.leftOutApplications = {"MAIL", " Terminal", ""};
    EXPECT_EQ(ids(WindowCycle(windows, 1, A::CycleAllWindows, S::Forward, options)),
              (std::vector<std::uint64_t>{2, 5}));
    options.leftOutApplications.clear();
    options.leftOutTitles = {"news ", "build"};
    EXPECT_EQ(ids(WindowCycle(windows, 1, A::CycleAllWindows, S::Forward, options)),
              (std::vector<std::uint64_t>{1, 4, 5}));
    // A title that merely contains a left-out one stays.
    options.leftOutTitles = {"New"};
    EXPECT_EQ(ids(WindowCycle(windows, 1, A::CycleAllWindows, S::Forward, options)).size(), 5u);
    options.leftOutTitles.clear();
    options.desktop = 1;
    EXPECT_EQ(ids(WindowCycle(windows, 1, A::CycleAllWindows, S::Forward, options)),
              (std::vector<std::uint64_t>{4, 5}))
        << "a window shown on every desktop stays";
}

TEST(WindowCycleTest, EachApplicationOrderKeepsAnApplicationsWindowsTogetherInTheirOrderOfUse)
{
    auto windows = desk();
    // Mapped first: the browser, then mail, then the terminal.
    for (auto& [id, order] : std::vector<std::pair<std::uint64_t, std::uint32_t>>{
             {1, 5}, {2, 0}, {3, 2}, {4, 1}, {5, 4}}) {
        windows[id - 1].mappedOrder = order;
    }
    using O = WindowCycle::ApplicationOrder;
    const auto ordered = [&](O order, bool invert) {
        WindowCycle::Options options;
        options.applicationOrder = order;
        options.invertApplicationOrder = invert;
        return ids(WindowCycle(windows, 1, A::CycleAllWindows, S::Forward, options));
    };
    EXPECT_EQ(ordered(O::RecentUse, false), (std::vector<std::uint64_t>{1, 2, 3, 4, 5}));
    EXPECT_EQ(ordered(O::RecentUse, true), (std::vector<std::uint64_t>{4, 2, 5, 1, 3}));
    EXPECT_EQ(ordered(O::Name, false), (std::vector<std::uint64_t>{2, 5, 4, 1, 3}));
    EXPECT_EQ(ordered(O::Name, true), (std::vector<std::uint64_t>{1, 3, 4, 2, 5}));
    EXPECT_EQ(ordered(O::LaunchDate, false), (std::vector<std::uint64_t>{2, 5, 4, 1, 3}));
    EXPECT_EQ(ordered(O::WindowCount, false), (std::vector<std::uint64_t>{1, 3, 2, 5, 4}));

    // The first step still moves on from the focused window, wherever the order puts it.
    WindowCycle::Options byName;
    byName.applicationOrder = O::Name;
    EXPECT_EQ(selectedId(WindowCycle(windows, 1, A::CycleAllWindows, S::Forward, byName)), 3u);
    EXPECT_EQ(selectedId(WindowCycle(windows, 1, A::CycleAllWindows, S::Backward, byName)), 4u);
    EXPECT_EQ(selectedId(WindowCycle(windows, 3, A::CycleAllWindows, S::Forward, byName)), 2u);
}

TEST(WindowCycleTest, EachApplicationIsNumberedByItsFirstWindow)
{
    const WindowCycle cycle(desk(), 1, A::CycleAllWindows, S::Forward, {});
    EXPECT_EQ(cycle.firstWindowOfEachApplication(), (std::vector<std::size_t>{0, 1, 3}));
}

WindowCycle::Options withOwnItems(std::optional<WindowCycle::ItemPlace> activation,
                                  std::optional<WindowCycle::ItemPlace> cancellation)
{
    WindowCycle::Options options;
    options.activationItem = activation;
    options.cancellationItem = cancellation;
    return options;
}

// Windows by id, the cycle's own items as 0.
std::vector<std::string> listed(const WindowCycle& cycle)
{
    std::vector<std::string> found;
    for (const CycleWindow& item : cycle.items()) {
        found.push_back(item.kind == CycleItemKind::ActivationItem     ? "activate"
                        : item.kind == CycleItemKind::CancellationItem ? "cancel"
                                                                       : std::to_string(item.id));
    }
    return found;
}

TEST(WindowCycleTest, OwnItemsStandWhereAskedAndOnlyTheCancellationItemIsAStop)
{
    using P = WindowCycle::ItemPlace;
    const auto windows = desk();
    WindowCycle cycle(windows, 1, A::CycleNonMinimizedWindows, S::Forward,
                      withOwnItems(P::Top, P::Bottom));
    EXPECT_EQ(listed(cycle), (std::vector<std::string>{"activate", "1", "2", "4", "cancel"}));
    EXPECT_EQ(selectedId(cycle), 2u);
    cycle.step(S::Forward);
    cycle.step(S::Forward);
    EXPECT_TRUE(cycle.cancellationItemSelected());
    EXPECT_EQ(cycle.selected(), nullptr) << "nothing to switch to";
    cycle.step(S::Forward); // past the activation item, which is there for the mouse
    EXPECT_EQ(selectedId(cycle), 1u);
    cycle.selectLast();
    EXPECT_TRUE(cycle.cancellationItemSelected());
    cycle.selectFirst();
    EXPECT_EQ(selectedId(cycle), 1u);
    EXPECT_EQ(cycle.firstWindowOfEachApplication(), (std::vector<std::size_t>{1, 2, 3}));

    // Both at the top, activation first. A first step lands on a window whatever lies beyond
    // the end, so that a quick press and release always switches.
    const WindowCycle top(windows, 4, A::CycleNonMinimizedWindows, S::Forward,
                          withOwnItems(P::Top, P::Top));
    EXPECT_EQ(listed(top), (std::vector<std::string>{"activate", "cancel", "1", "2", "4"}));
    EXPECT_EQ(selectedId(top), 1u);
    EXPECT_EQ(selectedId(WindowCycle(windows, 1, A::CycleNonMinimizedWindows, S::Backward,
                                     withOwnItems(P::Bottom, P::Top))),
              4u);
    EXPECT_EQ(selectedId(WindowCycle(windows, 1, A::CycleMinimizedWindows, S::Backward,
                                     withOwnItems(P::Bottom, P::Bottom))),
              5u);

    // The selected window going away never leaves the selection on the activation item, and
    // the own items go with the last window.
    WindowCycle shrinking(windows, 1, A::CycleNonMinimizedWindows, S::Forward,
                          withOwnItems(P::Bottom, std::nullopt));
    shrinking.selectLast();
    shrinking.remove(4);
    EXPECT_EQ(selectedId(shrinking), 2u);
    shrinking.remove(0);
    EXPECT_EQ(listed(shrinking), (std::vector<std::string>{"1", "2", "activate"}));
    shrinking.remove(1);
    shrinking.remove(2);
    EXPECT_TRUE(shrinking.isEmpty());
    EXPECT_TRUE(
        WindowCycle({}, 1, A::CycleAllWindows, S::Forward, withOwnItems(P::Top, P::Top)).isEmpty());
}

TEST(WindowCycleTest, AfterActingOnTheSelectedWindowEachRuleSelectsItsWindow)
{
    using F = WindowCycle::FollowUp;
    struct Case {
        std::uint64_t actedOn;
        F followUp;
        bool closed;
        bool wrap;
        std::uint64_t selectedAfter; // 0: nothing
        const char* why;
    };
    // Terminal 1, Browser 2, Terminal 3, Mail 4, Browser 5.
    const Case cases[] = {
        {2, F::NextWindow, false, true, 3, "the window after it"},
        {3, F::PreviousWindow, false, true, 2, "the window before it"},
        {2, F::SameApplication, false, true, 5, "the browser's other window"},
        {5, F::SameApplication, false, true, 2, "around the end to the browser's other window"},
        {4, F::SameApplication, false, true, 4, "mail's only window stays selected"},
        {4, F::SameApplication, true, true, 5, "mail's only window closed: the next window"},
        {3, F::PreviousWindow, true, true, 2, "closed: the window before it"},
        {5, F::NextWindow, false, true, 1, "around the end"},
        {5, F::NextWindow, false, false, 5, "at the end without wrapping it stays"},
        {5, F::NextWindow, true, false, 4, "closed at the end: the one before"},
        {1, F::PreviousWindow, true, false, 2, "closed at the start: the one after"},
        {3, F::Nothing, false, true, 0, "nothing"},
    };
    for (const Case& c : cases) {
        WindowCycle::Options options;
        options.wrapAround = c.wrap;
        WindowCycle cycle(desk(), 1, A::CycleAllWindows, S::Forward, options);
        const auto ids = listed(cycle);
        cycle.select(std::size_t(std::find(ids.begin(), ids.end(), std::to_string(c.actedOn)) -
                                 ids.begin()));
        cycle.selectionActedOn(c.followUp, c.closed);
        EXPECT_EQ(selectedId(cycle), c.selectedAfter) << c.why;
        EXPECT_EQ(cycle.items().size(), c.closed ? 4u : 5u) << c.why;
    }

    // With nothing selected a step starts where the window was: after a close, the window that
    // took its place comes first.
    WindowCycle cycle(desk(), 1, A::CycleAllWindows, S::Forward, {});
    cycle.select(2);
    cycle.selectionActedOn(F::Nothing, true);
    EXPECT_EQ(cycle.selected(), nullptr);
    cycle.step(S::Forward);
    EXPECT_EQ(selectedId(cycle), 4u);
    cycle.selectionActedOn(F::Nothing, false);
    cycle.step(S::Backward);
    EXPECT_EQ(selectedId(cycle), 2u);
    cycle.selectionActedOn(F::Nothing, true);
    cycle.step(S::Backward);
    EXPECT_EQ(selectedId(cycle), 1u);
    // Only the last window closing empties the cycle.
    cycle.selectionActedOn(F::NextWindow, true);
    cycle.selectionActedOn(F::NextWindow, true);
    cycle.selectionActedOn(F::NextWindow, true);
    EXPECT_TRUE(cycle.isEmpty());
}

} // namespace
} // namespace vexto
