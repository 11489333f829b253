#pragma once

#include "foundation/Color.hpp"
#include "foundation/Rect.hpp"
#include "toolkit/ObserverList.hpp"

#include <memory>

namespace vexto {

class ColorWell;
class View;

// The process's one colour panel: the colour being edited, whether opacity is offered, and an
// accessory view below the colour pickers. The active colour well follows it.
class ColorPanel {
public:
    static ColorPanel& shared();
    // None until something has asked for the shared panel.
    static ColorPanel* sharedIfExists();
    static void resetForTesting();

    // The platform keeps "ignores alpha" for all colours; false shows the opacity slider.
    static bool ignoresAlpha();
    static void setIgnoresAlpha(bool ignores);

    Rect frame() const { return frame_; }
    const Color& color() const { return color_; }
    void setColor(Color color);
    // The person picked a colour: the active well takes it and sends its action.
    void userDidPickColor(Color color);

    const std::shared_ptr<View>& accessoryView() const { return accessoryView_; }
    void setAccessoryView(std::shared_ptr<View> view);

    bool isVisible() const { return visible_; }
    void orderFront();
    void close();

    ColorWell* activeWell() const { return activeWell_; }

    int addObserver(std::function<void(ColorPanel&)> observer)
    {
        return observers_.add(std::move(observer));
    }
    void removeObserver(int token) { observers_.remove(token); }

private:
    friend class ColorWell;
    ColorPanel() = default;
    void setActiveWell(ColorWell* well);

    Rect frame_{0, 0, 222, 372};
    Color color_ = Color::calibratedWhite(1, 1);
    std::shared_ptr<View> accessoryView_;
    bool visible_ = false;
    ColorWell* activeWell_ = nullptr;
    ObserverList<ColorPanel&> observers_;
};

} // namespace vexto
