#pragma once

#include "toolkit/TextAlignment.hpp"

namespace vexto {

struct ParagraphStyle {
    enum class LineBreak { WordWrap, CharWrap, Clip, TruncateHead, TruncateTail, TruncateMiddle };

    TextAlignment alignment = TextAlignment::Natural;
    LineBreak lineBreak = LineBreak::WordWrap;
    friend bool operator==(const ParagraphStyle&, const ParagraphStyle&) = default;
};

} // namespace vexto
