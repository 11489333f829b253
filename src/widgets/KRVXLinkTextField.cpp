#include "widgets/KRVXLinkTextField.hpp"

#include "ports/Workspace.hpp"
#include "toolkit/ActionSender.hpp"
#include "toolkit/ActionTarget.hpp"
#include "widgets/ResourceImages.hpp"

#include <array>
#include <filesystem>

namespace vexto {

namespace {

Workspace* sharedWorkspace = nullptr;

constexpr std::array<std::string_view, 4> schemes = {"http://", "https://", "ftp://", "mailto:"};
constexpr const char* goToLinkSelector = "goToLinkURL:";

// A file URL as the platform makes one: an absolute path, with what a URL cannot hold escaped.
LinkURL fileURL(const std::string& path)
{
    std::error_code ignored;
    const std::string absolute =
        std::filesystem::absolute(path, ignored).lexically_normal().string();
    static constexpr char hex[] = "0123456789ABCDEF";
    std::string escaped;
    for (unsigned char c : absolute) {
        const bool plain =
            (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
            std::string_view("/-._~!$&'()*+,;=:@").find(char(c)) != std::string_view::npos;
        if (plain) {
            escaped += static_cast<char>(c);
        } else {
            escaped += '%';
            escaped += hex[c >> 4];
            escaped += hex[c & 15];
        }
    }
    return LinkURL{"file://" + escaped};
}

// The field is its own target: its arrow sends it goToLinkURL:.
class LinkFollower final : public ActionTarget {
public:
    bool respondsToSelector(std::string_view selector) const override
    {
        return selector == goToLinkSelector;
    }
    void performAction(std::string_view selector, const ActionSender& sender) override
    {
        if (auto* field = sender.viewAs<KRVXLinkTextField>();
            field && selector == goToLinkSelector) {
            field->goToLinkURL();
        }
    }
};

LinkFollower& follower()
{
    static LinkFollower shared;
    return shared;
}

} // namespace

void KRVXLinkTextField::setWorkspace(Workspace* workspace)
{
    sharedWorkspace = workspace;
}

std::optional<LinkURL> KRVXLinkTextField::linkFrom(const Link& link)
{
    if (const auto* url = std::get_if<LinkURL>(&link)) {
        return *url;
    }
    const std::string* text = std::get_if<std::string>(&link);
    if (const auto* value = std::get_if<PlistValue>(&link)) {
        text = value->asString();
    }
    if (text == nullptr) {
        return std::nullopt;
    }
    for (std::string_view scheme : schemes) {
        if (text->starts_with(scheme)) {
            return LinkURL{*text};
        }
    }
    return fileURL(*text);
}

void KRVXLinkTextField::setStringValue(std::string text, const Link& link,
                                       std::optional<std::string> toolTip)
{
    linkURL_ = linkFrom(link);
    if (linkURL_) {
        setTarget(&follower());
        setAction(goToLinkSelector);
        setActionButtonImage(ResourceImages::named("KRLinkArrow.tiff"));
    } else {
        setTarget(nullptr);
        setAction("");
        setActionButtonImage(nullptr);
    }
    setToolTip(toolTip.value_or(std::string()));
    KRVXActionButtonTextField::setStringValue(std::move(text));
}

void KRVXLinkTextField::setStringValue(std::string text, const Link& link)
{
    const auto url = linkFrom(link);
    setStringValue(std::move(text), link,
                   url ? std::optional<std::string>(url->absoluteString) : std::nullopt);
}

void KRVXLinkTextField::setStringValue(std::string text, bool clearLink)
{
    if (clearLink) {
        setStringValue(std::move(text), Link{}, std::nullopt);
        return;
    }
    KRVXActionButtonTextField::setStringValue(std::move(text));
}

void KRVXLinkTextField::goToLinkURL()
{
    if (linkURL_ && sharedWorkspace != nullptr) {
        sharedWorkspace->openURL(linkURL_->absoluteString);
    }
}

} // namespace vexto
