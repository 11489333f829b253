#include "xserver/X11WindowSystem.hpp"

#include "cycling/CycleController.hpp"
#include "foundation/Log.hpp"
#include "platform/DescriptorWatcher.hpp"
#include "ports/RunLoop.hpp"
#include "xserver/XcbReply.hpp"

#include <cstdlib>
#include <utility>
#include <xcb/xcb_icccm.h>

namespace vexto {

namespace {

// Activation on behalf of the user, as pagers and switchers ask for it.
constexpr xcb_ewmh_client_source_type_t fromSwitcher = XCB_EWMH_CLIENT_SOURCE_TYPE_OTHER;

constexpr double modifierWatchInterval = 0.25;

} // namespace

std::unique_ptr<X11WindowSystem> X11WindowSystem::open(RunLoop& loop, DescriptorWatcher& watcher,
                                                       const std::string& displayName,
                                                       std::string& problem)
{
    auto connection = XcbConnection::open(displayName, problem);
    if (!connection) {
        return nullptr;
    }
    return std::unique_ptr<X11WindowSystem>(
        new X11WindowSystem(loop, watcher, std::move(connection)));
}

X11WindowSystem::X11WindowSystem(RunLoop& loop, DescriptorWatcher& watcher,
                                 std::unique_ptr<XcbConnection> connection)
    : loop_(loop), watcher_(watcher), connection_(std::move(connection)), keys_(*connection_),
      clients_(*connection_), pictures_(*connection_),
      changeStateAtom_(connection_->atom("WM_CHANGE_STATE"))
{
    const std::uint32_t rootEvents = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(connection_->get(), connection_->root(), XCB_CW_EVENT_MASK,
                                 &rootEvents);
    xcb_flush(connection_->get());
    watcher_.watchDescriptor(connection_->descriptor(), [this] { dispatch(); });
}

X11WindowSystem::~X11WindowSystem()
{
    loop_.cancelPreviousPerformRequests(this);
    watcher_.unwatchDescriptor(connection_->descriptor());
    if (keyboardGrabbed_) {
        ungrabKeyboard(XCB_CURRENT_TIME);
    }
}

void X11WindowSystem::useBindings(const std::vector<HotKeyBinding>& bindings,
                                  X11KeyGrabs::Options options)
{
    lastRefused_.clear(); // new settings: what still cannot be taken is said again
    logRefusals(keys_.grab(bindings, options));
    dispatchSoon();
}

void X11WindowSystem::logRefusals(const std::vector<X11KeyGrabs::Refusal>& refused)
{
    std::vector<HotKeyBinding> bindings;
    for (const X11KeyGrabs::Refusal& refusal : refused) {
        bindings.push_back(refusal.binding);
    }
    if (std::exchange(lastRefused_, bindings) == bindings) {
        return;
    }
    for (const X11KeyGrabs::Refusal& refusal : refused) {
        const std::string text = refusal.binding.text.empty()
                                     ? "key code " + std::to_string(refusal.binding.keyCode)
                                     : refusal.binding.text;
        Log::line("could not take the hot key " + text + ": " + refusal.reason);
    }
}

void X11WindowSystem::dispatch()
{
    while (auto event = owned(xcb_poll_for_event(connection_->get()))) {
        handle(*event);
    }
    if (connection_->isBroken()) {
        watcher_.unwatchDescriptor(connection_->descriptor());
        if (controller_ != nullptr) {
            controller_->cancel(XCB_CURRENT_TIME);
        }
        if (auto lost = std::exchange(lost_, nullptr)) {
            lost();
        }
    }
}

void X11WindowSystem::handle(const xcb_generic_event_t& event)
{
    switch (event.response_type & 0x7F) {
    case XCB_KEY_PRESS:
        keyPressed(reinterpret_cast<const xcb_key_press_event_t&>(event));
        break;
    case XCB_KEY_RELEASE:
        keyReleased(reinterpret_cast<const xcb_key_release_event_t&>(event));
        break;
    case XCB_PROPERTY_NOTIFY:
        propertyChanged(reinterpret_cast<const xcb_property_notify_event_t&>(event));
        break;
    case XCB_MAPPING_NOTIFY:
        if (reinterpret_cast<const xcb_mapping_notify_event_t&>(event).request !=
            XCB_MAPPING_POINTER) {
            logRefusals(keys_.mappingChanged());
        }
        break;
    default:
        break;
    }
}

void X11WindowSystem::keyPressed(const xcb_key_press_event_t& event)
{
    if (controller_ == nullptr) {
        return;
    }
    if (controller_->isCycling()) {
        if (keys_.modifierMaskOfKey(event.detail) != 0) {
            return;
        }
        if (const auto key = X11KeyGrabs::virtualKey(event.detail)) {
            controller_->keyPressed(*key, keys_.modifierFlags(event.state), event.time);
        }
        return;
    }
    const HotKeyBinding* binding = keys_.bindingFor(event.detail, event.state);
    if (binding == nullptr) {
        return;
    }
    if (!startsCycle(binding->action)) {
        actions_.perform(binding->action, event.time);
        xcb_flush(connection_->get());
        return;
    }
    controller_->hotKeyPressed(*binding, event.time);
    if (controller_->isCycling()) {
        checkModifiersStillHeld(event.time);
    }
}

void X11WindowSystem::keyReleased(const xcb_key_release_event_t& event)
{
    if (controller_ == nullptr || !controller_->isCycling()) {
        return;
    }
    // The state is the one before the release: the released key's own modifier is taken off.
    if (const std::uint16_t mask = keys_.modifierMaskOfKey(event.detail); mask != 0) {
        const auto stillHeld = static_cast<std::uint16_t>(event.state & ~mask);
        controller_->modifiersReleased(keys_.modifierFlags(stillHeld), event.time);
    } else if (const auto key = X11KeyGrabs::virtualKey(event.detail)) {
        controller_->keyReleased(*key, keys_.modifierFlags(event.state), event.time);
    }
}

void X11WindowSystem::checkModifiersStillHeld(std::uint32_t time)
{
    auto pointer = owned(xcb_query_pointer_reply(
        connection_->get(), xcb_query_pointer(connection_->get(), connection_->root()), nullptr));
    if (pointer) {
        controller_->modifiersReleased(keys_.modifierFlags(pointer->mask), time);
    }
}

void X11WindowSystem::propertyChanged(const xcb_property_notify_event_t& event)
{
    xcb_ewmh_connection_t& ewmh = connection_->ewmh();
    if (event.window != connection_->root()) {
        if (event.atom == ewmh._NET_WM_ICON) {
            clients_.iconChanged(event.window);
        }
        return;
    }
    if (event.atom == ewmh._NET_ACTIVE_WINDOW) {
        clients_.activeWindowChanged();
    } else if (event.atom == ewmh._NET_CLIENT_LIST_STACKING ||
               event.atom == ewmh._NET_CLIENT_LIST) {
        for (const std::uint64_t gone : clients_.clientListChanged()) {
            if (controller_ != nullptr) {
                controller_->windowClosed(gone);
            }
        }
    }
}

std::vector<CycleWindow> X11WindowSystem::windowsInRecentOrder() const
{
    std::vector<CycleWindow> windows = clients_.windowsInRecentOrder();
    dispatchSoon();
    return windows;
}

void X11WindowSystem::dispatchSoon() const
{
    // Asking for the window list changes nothing the caller sees; serving events later does.
    auto* self = const_cast<X11WindowSystem*>(this);
    loop_.cancelPreviousPerformRequests(this, "dispatch", {});
    loop_.performAfterDelay(this, "dispatch", {}, 0, {RunLoopMode::Default},
                            [self] { self->dispatch(); });
}

std::shared_ptr<const Bitmap> X11WindowSystem::pictureOf(const CycleWindow& window,
                                                         int largestSide) const
{
    auto picture = pictures_.take(static_cast<xcb_window_t>(window.id), largestSide);
    dispatchSoon();
    return picture;
}

std::optional<std::uint64_t> X11WindowSystem::activeWindow() const
{
    return clients_.activeWindow();
}

bool X11WindowSystem::grabKeyboard(std::uint32_t time)
{
    auto reply = owned(
        xcb_grab_keyboard_reply(connection_->get(),
                                xcb_grab_keyboard(connection_->get(), 0, connection_->root(), time,
                                                  XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
                                nullptr));
    keyboardGrabbed_ = reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
    if (keyboardGrabbed_) {
        watchModifiers();
    }
    return keyboardGrabbed_;
}

void X11WindowSystem::watchModifiers()
{
    loop_.performAfterDelay(
        this, "watchModifiers", {}, modifierWatchInterval, {RunLoopMode::Default}, [this] {
            if (keyboardGrabbed_ && controller_ != nullptr && controller_->isCycling()) {
                checkModifiersStillHeld(XCB_CURRENT_TIME);
                dispatch();
            }
            if (keyboardGrabbed_) {
                watchModifiers();
            }
        });
}

void X11WindowSystem::ungrabKeyboard(std::uint32_t time)
{
    loop_.cancelPreviousPerformRequests(this, "watchModifiers", {});
    xcb_ungrab_keyboard(connection_->get(), time);
    xcb_flush(connection_->get());
    keyboardGrabbed_ = false;
}

void X11WindowSystem::activate(const CycleWindow& window, std::uint32_t time)
{
    xcb_ewmh_connection_t& ewmh = connection_->ewmh();
    const int screen = connection_->screenNumber();
    const auto current = clients_.currentDesktop();
    if (window.desktop && current && *window.desktop != *current) {
        xcb_ewmh_request_change_current_desktop(&ewmh, screen, *window.desktop, time);
    }
    const auto active = clients_.activeWindow();
    xcb_ewmh_request_change_active_window(&ewmh, screen, static_cast<xcb_window_t>(window.id),
                                          fromSwitcher, time,
                                          active ? static_cast<xcb_window_t>(*active) : XCB_NONE);
    xcb_flush(connection_->get());
}

void X11WindowSystem::toggleZoom(const CycleWindow& window, std::uint32_t)
{
    xcb_ewmh_connection_t& ewmh = connection_->ewmh();
    xcb_ewmh_request_change_wm_state(&ewmh, connection_->screenNumber(),
                                     static_cast<xcb_window_t>(window.id), XCB_EWMH_WM_STATE_TOGGLE,
                                     ewmh._NET_WM_STATE_MAXIMIZED_VERT,
                                     ewmh._NET_WM_STATE_MAXIMIZED_HORZ, fromSwitcher);
    xcb_flush(connection_->get());
}

void X11WindowSystem::minimize(const CycleWindow& window)
{
    // The window manager is asked to iconify it, as a program asks for its own window.
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = static_cast<xcb_window_t>(window.id);
    message.type = changeStateAtom_;
    message.data.data32[0] = XCB_ICCCM_WM_STATE_ICONIC;
    xcb_send_event(connection_->get(), 0, connection_->root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&message));
    xcb_flush(connection_->get());
}

void X11WindowSystem::close(const CycleWindow& window, std::uint32_t time)
{
    xcb_ewmh_request_close_window(&connection_->ewmh(), connection_->screenNumber(),
                                  static_cast<xcb_window_t>(window.id), time, fromSwitcher);
    xcb_flush(connection_->get());
}

} // namespace vexto
