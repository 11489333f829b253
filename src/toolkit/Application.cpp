#include "toolkit/Application.hpp"

#include "toolkit/NotificationCenter.hpp"
#include "toolkit/Window.hpp"

namespace vexto {

namespace {

Application& instance()
{
    static Application application;
    return application;
}

} // namespace

Application& Application::shared() { return instance(); }

void Application::resetForTesting() { instance() = Application(); }

void Application::setActive(bool active)
{
    if (active_ == active) {
        return;
    }
    active_ = active;
    for (Window* window : {keyWindow_, mainWindow_}) {
        if (window != nullptr) {
            window->notify(WindowChange::Main);
        }
    }
}

void Application::beep()
{
    ++beeps_;
    if (beepHandler_) {
        beepHandler_();
    }
}

void Application::popCursor()
{
    if (!cursors_.empty()) {
        cursors_.pop_back();
    }
}

int Application::runAlert(const AlertRequest& request)
{
    return alerts_ != nullptr ? alerts_->runModal(request) : Alerts::defaultReturn;
}

void Application::setKeyWindow(Window* window)
{
    Window* previous = keyWindow_;
    if (previous == window) {
        return;
    }
    keyWindow_ = window;
    auto& center = NotificationCenter::defaultCenter();
    if (previous != nullptr) {
        previous->notify(WindowChange::Key);
        center.post(Window::didResignKeyNotification, previous);
    }
    if (window != nullptr) {
        window->notify(WindowChange::Key);
        center.post(Window::didBecomeKeyNotification, window);
    }
}

void Application::setMainWindow(Window* window)
{
    Window* previous = mainWindow_;
    if (previous == window) {
        return;
    }
    mainWindow_ = window;
    auto& center = NotificationCenter::defaultCenter();
    if (previous != nullptr) {
        previous->notify(WindowChange::Main);
        center.post(Window::didResignMainNotification, previous);
    }
    if (window != nullptr) {
        window->notify(WindowChange::Main);
        center.post(Window::didBecomeMainNotification, window);
    }
}

void Application::windowWillClose(Window* window)
{
    if (keyWindow_ == window) {
        keyWindow_ = nullptr;
    }
    if (mainWindow_ == window) {
        mainWindow_ = nullptr;
    }
}

} // namespace vexto
