#pragma once

#include "toolkit/Canvas.hpp"

#include <QImage>
#include <QPainter>
#include <QTransform>

#include <memory>
#include <optional>
#include <vector>

namespace vexto {

// Paints the canvas operations of a custom view with QPainter. Model coordinates are unflipped
// (y upward) in a view of the given height; text and images are drawn upright.
class QtCanvas final : public Canvas {
public:
    QtCanvas(QPainter& painter, double viewHeight);
    ~QtCanvas() override;

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

    static QColor qtColor(const Color& color);
    static Qt::Alignment qtAlignment(TextAlignment alignment);

private:
    struct Layer {
        std::unique_ptr<QImage> image;
        std::unique_ptr<QPainter> painter;
        QPoint origin; // device position of the layer's top-left corner
    };

    QPainter& painter();
    QPainterPath qtPath(const BezierPath& path) const;
    // A rectangle in model coordinates, in the painter's unflipped device terms.
    QRectF deviceRect(Rect rect) const;
    // Runs `draw` with the painter unflipped (device coordinates), for text and images.
    template <typename Draw> void upright(Draw draw);

    QPainter& base_;
    double viewHeight_;
    std::vector<Layer> layers_;
    struct TextState {
        std::optional<Shadow> shadow;
        bool smoothFonts = true;
    };
    std::vector<TextState> stateStack_;
    std::optional<Shadow> shadow_;
    bool smoothFonts_ = true;
};

} // namespace vexto
