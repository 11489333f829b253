#pragma once

#include "toolkit/View.hpp"
#include "toolkit/Window.hpp"

#include <memory>

namespace vexto::test {

// The pane's main view in a model window of its own size, made the key window, as a host shows it.
inline std::unique_ptr<Window> paneWindowAround(View& main)
{
    const Rect content = main.frame();
    auto window = std::make_unique<Window>(Rect(0, 0, content.width(), content.height()));
    window->setContentView(main.shared_from_this());
    window->makeKeyAndOrderFront();
    return window;
}

} // namespace vexto::test
