#include "foundation/Color.hpp"

#include "foundation/NumericText.hpp"

#include <algorithm>

namespace vexto {

Color Color::calibratedWhite(float white, float alpha)
{
    return Color(Space::CalibratedWhite, {white, alpha, 0, 0, 0});
}

Color Color::deviceWhite(float white, float alpha)
{
    return Color(Space::DeviceWhite, {white, alpha, 0, 0, 0});
}

Color Color::calibratedRGB(float red, float green, float blue, float alpha)
{
    return Color(Space::CalibratedRGB, {red, green, blue, alpha, 0});
}

Color Color::deviceRGB(float red, float green, float blue, float alpha)
{
    return Color(Space::DeviceRGB, {red, green, blue, alpha, 0});
}

Color Color::deviceCMYK(float cyan, float magenta, float yellow, float black, float alpha)
{
    return Color(Space::DeviceCMYK, {cyan, magenta, yellow, black, alpha});
}

Color Color::catalog(std::string catalogName, std::string colorName,
                     std::shared_ptr<const Color> fallback)
{
    Color color(Space::Catalog, {0, 0, 0, 0, 0});
    color.catalogName_ = std::move(catalogName);
    color.colorName_ = std::move(colorName);
    color.fallback_ = std::move(fallback);
    return color;
}

// Where the system catalog is unknown these show as the classic blue appearance approximately.
Color Color::selectedControlColor()
{
    return catalog("System", "selectedControlColor",
                   std::make_shared<Color>(calibratedRGB(0.709804f, 0.835294f, 1.0f, 1.0f)));
}

Color Color::alternateSelectedControlColor()
{
    return catalog("System", "alternateSelectedControlColor",
                   std::make_shared<Color>(calibratedRGB(0.0f, 0.364706f, 0.85098f, 1.0f)));
}

int Color::componentCount() const
{
    switch (space_) {
    case Space::CalibratedWhite:
    case Space::DeviceWhite:
        return 2;
    case Space::CalibratedRGB:
    case Space::DeviceRGB:
        return 4;
    case Space::DeviceCMYK:
        return 5;
    case Space::Catalog:
        return 0;
    }
    return 0;
}

float Color::alpha() const
{
    if (space_ == Space::Catalog) {
        return fallback_ ? fallback_->alpha() : 1.0f;
    }
    return components_[static_cast<std::size_t>(componentCount() - 1)];
}

Color::Rgba Color::rgba() const
{
    const auto& c = components_;
    switch (space_) {
    case Space::CalibratedWhite:
    case Space::DeviceWhite:
        return {c[0], c[0], c[0], c[1]};
    case Space::CalibratedRGB:
    case Space::DeviceRGB:
        return {c[0], c[1], c[2], c[3]};
    case Space::DeviceCMYK:
        return {(1 - c[0]) * (1 - c[3]), (1 - c[1]) * (1 - c[3]), (1 - c[2]) * (1 - c[3]), c[4]};
    case Space::Catalog:
        return fallback_ ? fallback_->rgba() : Rgba{0, 0, 0, 1};
    }
    return {0, 0, 0, 1};
}

std::string Color::description() const
{
    if (space_ == Space::Catalog) {
        std::string text = "<color catalog \"" + catalogName_ + "\" \"" + colorName_ + "\"";
        if (fallback_) {
            text += " fallback " + fallback_->description();
        }
        return text + ">";
    }
    static constexpr const char* names[] = {"calibrated rgb", "device rgb", "calibrated white",
                                            "device white", "device cmyk"};
    std::string text = std::string("<color ") + names[static_cast<int>(space_)];
    const int count = componentCount();
    for (int i = 0; i + 1 < count; ++i) {
        text += " " + NumericText::shortestText(components_[static_cast<std::size_t>(i)]);
    }
    return text + " alpha " + NumericText::shortestText(alpha()) + ">";
}

bool operator==(const Color& a, const Color& b)
{
    if (a.space_ != b.space_) {
        return false;
    }
    if (a.space_ == Color::Space::Catalog) {
        const bool sameFallback = (!a.fallback_ && !b.fallback_) ||
                                  (a.fallback_ && b.fallback_ && *a.fallback_ == *b.fallback_);
        return a.catalogName_ == b.catalogName_ && a.colorName_ == b.colorName_ && sameFallback;
    }
    const auto count = static_cast<std::size_t>(a.componentCount());
    return std::equal(a.components_.begin(), a.components_.begin() + count, b.components_.begin());
}

} // namespace vexto
