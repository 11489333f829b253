#include "toolkit/Application.hpp"

#include "toolkit/NotificationCenter.hpp"
#include "toolkit/Window.hpp"

#include <algorithm>

namespace vexto {

namespace {

Application& instance()
{
    static Application application;
    return application;
}

} // namespace

Application& Application::shared()
{
    return instance();
}

void Application::resetForTesting()
{
    instance() = Application();
}

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

void Application::pushCursor(std::string cursor)
{
    cursors_.push_back(std::move(cursor));
    if (cursorHandler_) {
        cursorHandler_(currentCursor(), true);
    }
}

void Application::popCursor()
{
    if (!cursors_.empty()) {
        cursors_.pop_back();
    }
    if (cursorHandler_) {
        cursorHandler_(currentCursor(), !cursors_.empty());
    }
}

double Application::widthOfString(const std::string& text, const Font& font) const
{
    if (textMetrics_ != nullptr) {
        return textMetrics_->widthOfString(text, font);
    }
    const auto characters = static_cast<double>(std::count_if(text.begin(), text.end(), [](char c) {
        return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
    }));
    return characters * font.pointSize() * 0.55;
}

int Application::runAlert(const AlertRequest& request)
{
    return alerts_ != nullptr ? alerts_->runModal(request) : Alerts::defaultReturn;
}

void Application::setKeyWindow(Window* window)
{
    moveWindowStatus(keyWindow_, window, true);
}

void Application::setMainWindow(Window* window)
{
    moveWindowStatus(mainWindow_, window, false);
}

void Application::moveWindowStatus(Window*& slot, Window* window, bool key)
{
    Window* previous = slot;
    if (previous == window) {
        return;
    }
    slot = window;
    const WindowChange change = key ? WindowChange::Key : WindowChange::Main;
    auto& center = NotificationCenter::defaultCenter();
    if (previous != nullptr) {
        previous->notify(change);
        center.post(key ? Window::didResignKeyNotification : Window::didResignMainNotification,
                    previous);
    }
    if (window != nullptr) {
        window->notify(change);
        center.post(key ? Window::didBecomeKeyNotification : Window::didBecomeMainNotification,
                    window);
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
