#pragma once

namespace vexto {

enum class TextAlignment { Left, Right, Center, Justified, Natural };

} // namespace vexto
