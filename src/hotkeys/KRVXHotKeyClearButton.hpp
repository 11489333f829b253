#pragma once

#include "toolkit/Button.hpp"

namespace vexto {

// The small button beside a hot-key field that clears the field's hot key.
class KRVXHotKeyClearButton : public Button {
public:
    explicit KRVXHotKeyClearButton(Rect frame = {}) : Button(frame, Kind::Push) {}
    const char* className() const override { return "HotKeyClearButton"; }
};

} // namespace vexto
