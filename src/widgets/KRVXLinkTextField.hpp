#pragma once

#include "foundation/PlistValue.hpp"
#include "widgets/KRVXActionButtonTextField.hpp"

#include <optional>
#include <string>
#include <variant>

namespace vexto {

class Workspace;

// An address a link opens: web, FTP and mail addresses as written, file paths as file URLs.
struct LinkURL {
    std::string absoluteString;
    friend bool operator==(const LinkURL&, const LinkURL&) = default;
};

// A text whose small arrow opens a link with the desktop's default handler. The arrow is the
// pane's "KRLinkArrow.tiff", shared by every link field.
class KRVXLinkTextField : public KRVXActionButtonTextField {
public:
    // What may be given as a link: text, an address made already, or any other value (which
    // gives no link, as a number does).
    using Link = std::variant<std::monostate, std::string, LinkURL, PlistValue>;

    using KRVXActionButtonTextField::KRVXActionButtonTextField;
    const char* className() const override { return "KRVXLinkTextField"; }

    // Addresses open through this workspace, the same for every link field.
    static void setWorkspace(Workspace* workspace);

    const std::optional<LinkURL>& linkURL() const { return linkURL_; }

    void setStringValue(std::string text, const Link& link, std::optional<std::string> toolTip);
    // The tool tip is the link's own text.
    void setStringValue(std::string text, const Link& link);
    // With `clearLink` off only the text changes, and the arrow moves after it.
    void setStringValue(std::string text, bool clearLink);
    // Plain text removes any link.
    void setStringValue(std::string text) override { setStringValue(std::move(text), true); }

    // Opens the link, if there is one.
    void goToLinkURL();

    // Capital schemes ("HTTP://") are paths, as the platform reads them.
    static std::optional<LinkURL> linkFrom(const Link& link);

private:
    std::optional<LinkURL> linkURL_;
};

} // namespace vexto
