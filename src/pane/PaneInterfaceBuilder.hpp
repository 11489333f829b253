#pragma once

#include "pane/PaneOutlets.hpp"

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace vexto {

class ActionTarget;
class KRVXGradientColorWellDelegate;
class TextFieldDelegate;
class View;

// Builds the pane's main view: the Enable button and access banner above the settings tab view
// ("triggers", "panel", "appearance", "windows", "about"), every control placed from the top of
// its tab and pinned there, so that fitting the pane to a tab moves only its bottom edge.
class PaneInterfaceBuilder {
public:
    using Localizer = std::function<std::string(std::string_view)>;

    // The main view's width before the window exists, and the room under a tab's content.
    static constexpr double paneWidth = 668.0;
    // What older systems close up when they hide the Spaces rows: the layout leaves exactly
    // this room so that nothing overlaps afterwards.
    static constexpr float spacesRowHeight = 30;
    static constexpr float sliderRowsShift = 15;

    // The gradient delegate keeps the selection colour's shading.
    PaneInterfaceBuilder(Localizer localized, ActionTarget* target, TextFieldDelegate* textDelegate,
                         KRVXGradientColorWellDelegate* gradientDelegate);

    // The main view, with every outlet filled in.
    std::shared_ptr<View> build(PaneOutlets& outlets) const;

private:
    Localizer localized_;
    ActionTarget* target_;
    TextFieldDelegate* textDelegate_;
    KRVXGradientColorWellDelegate* gradientDelegate_;
};

} // namespace vexto
