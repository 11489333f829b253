#pragma once

#include "toolkit/PaneEnvironment.hpp"
#include "toolkit/PreferencePane.hpp"
#include "toolkit/Window.hpp"

#include <memory>
#include <string>

namespace vexto {

class TabView;

// Plays the system preferences application's part: loads a pane bundle through its factory,
// puts the pane's main view in a window and drives its selection.
class PaneHost {
public:
    explicit PaneHost(const PaneEnvironment& environment) : environment_(environment) {}
    ~PaneHost();
    PaneHost(const PaneHost&) = delete;
    PaneHost& operator=(const PaneHost&) = delete;

    // Loads the bundle and its main view; false with a reason when it cannot.
    bool load(const std::string& bundlePath, std::string& error);

    void select();
    void unselect();
    bool isSelected() const { return selected_; }

    PreferencePane& pane() const { return *pane_; }
    Window& window() const { return *window_; }
    // The pane's settings tab view, or none.
    TabView* settingsTabView() const;

private:
    PaneEnvironment environment_;
    void* module_ = nullptr;
    std::unique_ptr<PreferencePane> pane_;
    std::unique_ptr<Window> window_;
    bool selected_ = false;
};

} // namespace vexto
