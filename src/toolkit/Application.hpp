#pragma once

#include "ports/Alerts.hpp"
#include "ports/TextMetrics.hpp"
#include "toolkit/Event.hpp"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace vexto {

class Window;

// The process's application object: active state, key and main windows, the event being
// handled, the system beep, the cursor stack and modal alerts (through the Alerts port).
class Application {
public:
    static Application& shared();
    // Forgets every window, event, handler and count; for tests.
    static void resetForTesting();

    bool isActive() const { return active_; }
    void setActive(bool active);

    Window* keyWindow() const { return keyWindow_; }
    Window* mainWindow() const { return mainWindow_; }

    const Event* currentEvent() const { return currentEvent_ ? &*currentEvent_ : nullptr; }
    void setCurrentEvent(std::optional<Event> event) { currentEvent_ = std::move(event); }

    void beep();
    int beepCount() const { return beeps_; }
    void setBeepHandler(std::function<void()> handler) { beepHandler_ = std::move(handler); }

    void pushCursor(std::string cursor);
    void popCursor();
    std::string currentCursor() const { return cursors_.empty() ? "arrow" : cursors_.back(); }
    // The front shows the cursor: told the cursor in force after each push and pop, and whether
    // any is pushed at all.
    void setCursorHandler(std::function<void(const std::string& cursor, bool pushed)> handler)
    {
        cursorHandler_ = std::move(handler);
    }

    // The front measures text as it draws it; without one, a character is taken as 0.55 em wide.
    void setTextMetrics(const TextMetrics* metrics) { textMetrics_ = metrics; }
    // False while widths are only estimated from the number of characters.
    bool measuresText() const { return textMetrics_ != nullptr; }
    double widthOfString(const std::string& text, const Font& font) const;

    void setAlerts(Alerts* alerts) { alerts_ = alerts; }
    // Runs a modal alert; without an Alerts port it answers as if the default button were chosen.
    int runAlert(const AlertRequest& request);

private:
    friend class Window;

    void setKeyWindow(Window* window);
    void setMainWindow(Window* window);
    // Moves a status (key or main) from the window in `slot` to `window`, telling both and
    // posting the resign and become notifications.
    void moveWindowStatus(Window*& slot, Window* window, bool key);
    void windowWillClose(Window* window);

    bool active_ = true;
    Window* keyWindow_ = nullptr;
    Window* mainWindow_ = nullptr;
    std::optional<Event> currentEvent_;
    int beeps_ = 0;
    std::function<void()> beepHandler_;
    std::vector<std::string> cursors_;
    std::function<void(const std::string&, bool)> cursorHandler_;
    Alerts* alerts_ = nullptr;
    const TextMetrics* textMetrics_ = nullptr;
};

} // namespace vexto
