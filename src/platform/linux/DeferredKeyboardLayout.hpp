#pragma once

#include "ports/KeyboardLayout.hpp"

#include <functional>
#include <memory>

namespace vexto {

// The desktop's keyboard layout, compiled the first time a key's character is asked for. The
// compilation reads dozens of files; labels of special keys and panes that show no letter key
// never need it.
class DeferredKeyboardLayout final : public KeyboardLayout {
public:
    using Source = std::function<std::unique_ptr<KeyboardLayout>()>;
    // By default the layout comes from the desktop module.
    DeferredKeyboardLayout();
    explicit DeferredKeyboardLayout(Source source) : source_(std::move(source)) {}

    std::optional<char16_t> characterForKeyCode(std::uint16_t keyCode) const override
    {
        if (source_) {
            layout_ = source_();
            source_ = nullptr;
        }
        return layout_ ? layout_->characterForKeyCode(keyCode) : std::nullopt;
    }

private:
    mutable Source source_;
    mutable std::unique_ptr<KeyboardLayout> layout_;
};

} // namespace vexto
