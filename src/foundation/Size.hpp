#pragma once

namespace vexto {

struct Size {
    double width = 0;
    double height = 0;
    friend bool operator==(const Size&, const Size&) = default;
};

} // namespace vexto
