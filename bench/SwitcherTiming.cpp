// How fast a window switcher answers, measured from outside as a user sees it: Super is held and
// Tab pressed through XTEST, and the time is taken until the switcher's panel is mapped and first
// painted (the DAMAGE extension reports its first drawing), then for each further Tab until the
// panel is drawn anew. Any switcher can be measured alike, ours and its peers.
//
//   vexto_switcher_timing ROUNDS STEPS
//
// prints the median time to the first picture and the median time of a step, in milliseconds,
// and how many rounds showed no panel at all.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <poll.h>
#include <thread>
#include <vector>
#include <xcb/damage.h>
#include <xcb/xcb.h>
#include <xcb/xtest.h>

namespace {

constexpr xcb_keycode_t superKey = 133;
constexpr xcb_keycode_t tabKey = 23;

using Clock = std::chrono::steady_clock;

double millisecondsSince(Clock::time_point start)
{
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

class Timing {
public:
    explicit Timing(xcb_connection_t* c) : c_(c)
    {
        root_ = xcb_setup_roots_iterator(xcb_get_setup(c_)).data->root;
        const std::uint32_t events = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
        xcb_change_window_attributes(c_, root_, XCB_CW_EVENT_MASK, &events);
        std::free(xcb_damage_query_version_reply(c_, xcb_damage_query_version(c_, 1, 1), nullptr));
        damageEvent_ = xcb_get_extension_data(c_, &xcb_damage_id)->first_event;
        xcb_flush(c_);
    }

    void key(std::uint8_t type, xcb_keycode_t key)
    {
        xcb_test_fake_input(c_, type, key, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
        xcb_flush(c_);
    }

    // The next override-redirect window mapped, within the time allowed.
    std::optional<xcb_window_t> waitForPanel(double seconds)
    {
        std::optional<xcb_window_t> found;
        waitFor(seconds, [&](const xcb_generic_event_t& event) {
            if ((event.response_type & 0x7F) == XCB_MAP_NOTIFY) {
                const auto& map = reinterpret_cast<const xcb_map_notify_event_t&>(event);
                if (map.override_redirect != 0) {
                    found = map.window;
                }
            }
            return found.has_value();
        });
        return found;
    }

    void watchDrawing(xcb_window_t window)
    {
        damage_ = xcb_generate_id(c_);
        xcb_damage_create(c_, damage_, window, XCB_DAMAGE_REPORT_LEVEL_NON_EMPTY);
        xcb_flush(c_);
    }

    // Waits for the watched window to be drawn on, and clears what was drawn.
    bool waitForDrawing(double seconds)
    {
        const bool drawn = waitFor(seconds, [&](const xcb_generic_event_t& event) {
            return event.response_type == damageEvent_ + XCB_DAMAGE_NOTIFY;
        });
        xcb_damage_subtract(c_, damage_, XCB_NONE, XCB_NONE);
        xcb_flush(c_);
        return drawn;
    }

    void waitForUnmap(double seconds)
    {
        waitFor(seconds, [](const xcb_generic_event_t& event) {
            return (event.response_type & 0x7F) == XCB_UNMAP_NOTIFY;
        });
        if (damage_ != XCB_NONE) {
            xcb_damage_destroy(c_, damage_);
            damage_ = XCB_NONE;
        }
    }

private:
    template <typename Match> bool waitFor(double seconds, Match match)
    {
        const auto end = Clock::now() + std::chrono::duration<double>(seconds);
        for (;;) {
            while (xcb_generic_event_t* event = xcb_poll_for_event(c_)) {
                const bool matched = match(*event);
                std::free(event);
                if (matched) {
                    return true;
                }
            }
            const double left =
                std::chrono::duration<double, std::milli>(end - Clock::now()).count();
            if (left <= 0 || xcb_connection_has_error(c_) != 0) {
                return false;
            }
            pollfd descriptor{xcb_get_file_descriptor(c_), POLLIN, 0};
            ::poll(&descriptor, 1, static_cast<int>(left) + 1);
        }
    }

    xcb_connection_t* c_;
    xcb_window_t root_ = XCB_NONE;
    xcb_damage_damage_t damage_ = XCB_NONE;
    std::uint8_t damageEvent_ = 0;
};

double median(std::vector<double> values)
{
    if (values.empty()) {
        return 0;
    }
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

} // namespace

int main(int argc, char** argv)
{
    const int rounds = argc > 1 ? std::atoi(argv[1]) : 20;
    const int steps = argc > 2 ? std::atoi(argv[2]) : 5;
    xcb_connection_t* c = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(c) != 0) {
        std::fprintf(stderr, "vexto_switcher_timing: no display\n");
        return 1;
    }
    Timing timing(c);
    std::vector<double> firstPictures;
    std::vector<double> stepTimes;
    int missed = 0;
    for (int round = 0; round < rounds; ++round) {
        timing.key(XCB_KEY_PRESS, superKey);
        const auto pressed = Clock::now();
        timing.key(XCB_KEY_PRESS, tabKey);
        timing.key(XCB_KEY_RELEASE, tabKey);
        const auto panel = timing.waitForPanel(2.0);
        if (!panel) {
            ++missed;
            timing.key(XCB_KEY_RELEASE, superKey);
            continue;
        }
        timing.watchDrawing(*panel);
        if (timing.waitForDrawing(1.0)) {
            firstPictures.push_back(millisecondsSince(pressed));
        }
        for (int step = 0; step < steps; ++step) {
            const auto stepped = Clock::now();
            timing.key(XCB_KEY_PRESS, tabKey);
            timing.key(XCB_KEY_RELEASE, tabKey);
            if (timing.waitForDrawing(1.0)) {
                stepTimes.push_back(millisecondsSince(stepped));
            }
        }
        timing.key(XCB_KEY_RELEASE, superKey);
        timing.waitForUnmap(2.0);
        std::this_thread::sleep_for(std::chrono::milliseconds(150));
    }
    std::printf("first picture %.2f ms, step %.2f ms, rounds without a panel %d of %d\n",
                median(firstPictures), median(stepTimes), missed, rounds);
    xcb_disconnect(c);
    return 0;
}
