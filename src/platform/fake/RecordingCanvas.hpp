#pragma once

#include "toolkit/Canvas.hpp"

#include <string>
#include <vector>

namespace vexto {

// A canvas that writes down what is drawn on it, one readable line an operation, for tests.
// Numbers print in their shortest exact form; colours as "w=0.5 a=1" or "rgb=1,0,0 a=1".
class RecordingCanvas final : public Canvas {
public:
    void saveGraphicsState() override;
    void restoreGraphicsState() override;
    using Canvas::fill;
    void fill(const BezierPath& path, const Color& color, CompositingOperation operation) override;
    void clip(const BezierPath& path) override;
    void drawLinearGradient(const Gradient& gradient, Rect rect, double angle) override;
    void setShadow(const std::optional<Shadow>& shadow) override;
    void setShouldSmoothFonts(bool smooth) override;
    void beginTransparencyLayer(Rect rect) override;
    void endTransparencyLayer() override;
    void drawImage(const Image& image, Rect destination, CompositingOperation operation,
                   float fraction) override;
    void drawText(const std::string& text, Rect rect, const Font& font, const Color& color,
                  TextAlignment alignment) override;

    const std::vector<std::string>& operations() const { return operations_; }
    void clear() { operations_.clear(); }
    // How deeply saves are nested now; 0 when every save was restored.
    int saveDepth() const { return depth_; }

    static std::string describe(double value);
    static std::string describe(Rect rect);
    static std::string describe(const BezierPath& path);
    static std::string describe(const Color& color);

private:
    std::vector<std::string> operations_;
    int depth_ = 0;
};

} // namespace vexto
