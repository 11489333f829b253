#pragma once

#include <array>
#include <memory>
#include <string>

namespace vexto {

// A colour as the pane stores it: a colour space and its single-precision components, or a
// named colour of a catalog (such as the system's control colours) with the colour it falls back
// to where the catalog is unknown.
class Color {
public:
    enum class Space {
        CalibratedRGB,
        DeviceRGB,
        CalibratedWhite,
        DeviceWhite,
        DeviceCMYK,
        Catalog
    };

    struct Rgba {
        float red, green, blue, alpha;
        friend bool operator==(const Rgba&, const Rgba&) = default;
    };

    Color() : Color(Space::CalibratedWhite, {0, 0, 0, 0, 0}) {}

    static Color calibratedWhite(float white, float alpha);
    static Color deviceWhite(float white, float alpha);
    static Color calibratedRGB(float red, float green, float blue, float alpha);
    static Color deviceRGB(float red, float green, float blue, float alpha);
    static Color deviceCMYK(float cyan, float magenta, float yellow, float black, float alpha);
    static Color catalog(std::string catalogName, std::string colorName,
                         std::shared_ptr<const Color> fallback);

    // The platform's system colours that the pane's defaults name.
    static Color whiteColor() { return calibratedWhite(1, 1); }
    static Color selectedControlColor();
    static Color alternateSelectedControlColor();

    Space space() const { return space_; }
    // The components in archive order (white+alpha, r+g+b+alpha, c+m+y+k+alpha); none for catalogs.
    int componentCount() const;
    float component(int index) const { return components_.at(static_cast<std::size_t>(index)); }
    float alpha() const;

    const std::string& catalogName() const { return catalogName_; }
    const std::string& colorName() const { return colorName_; }
    const Color* fallback() const { return fallback_.get(); }

    // The colour in device RGB terms, for drawing; catalog colours answer with their fallback.
    Rgba rgba() const;

    // A one-line readable form, e.g. "<color calibrated white 0 alpha 0.5>".
    std::string description() const;

    friend bool operator==(const Color& a, const Color& b);

private:
    Color(Space space, std::array<float, 5> components) : space_(space), components_(components) {}

    Space space_;
    std::array<float, 5> components_;
    std::string catalogName_;
    std::string colorName_;
    std::shared_ptr<const Color> fallback_;
};

} // namespace vexto
