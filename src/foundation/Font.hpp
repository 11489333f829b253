#pragma once

#include <string>

namespace vexto {

// A font as the pane names it: the PostScript-style font name that settings store, the name
// people read, its family and its size in points.
class Font {
public:
    Font() = default;
    Font(std::string fontName, std::string displayName, std::string familyName, double pointSize)
        : fontName_(std::move(fontName)), displayName_(std::move(displayName)),
          familyName_(std::move(familyName)), pointSize_(pointSize)
    {}

    // The interface's own font; the front draws it with the desktop's default face.
    static Font systemFontOfSize(double size) { return Font("System", "System", "System", size); }

    const std::string& fontName() const { return fontName_; }
    const std::string& displayName() const { return displayName_; }
    const std::string& familyName() const { return familyName_; }
    double pointSize() const { return pointSize_; }
    Font withSize(double size) const { return Font(fontName_, displayName_, familyName_, size); }

    friend bool operator==(const Font&, const Font&) = default;

private:
    std::string fontName_ = "System";
    std::string displayName_ = "System";
    std::string familyName_ = "System";
    double pointSize_ = 13;
};

} // namespace vexto
