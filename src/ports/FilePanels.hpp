#pragma once

#include <optional>
#include <string>

namespace vexto {

// What an open or save panel is asked for.
struct FilePanelRequest {
    bool saving = false;
    std::string title;
    std::string allowedFileType;          // an extension without its dot
    std::optional<std::string> directory; // where the panel starts; none: where it likes
    std::string nameFieldStringValue;     // the proposed name, when saving
};

// The platform's open and save panels, run modally: the chosen file's path, or none when the
// user cancels. A save panel gives the name the allowed extension when the user left it off.
class FilePanels {
public:
    virtual ~FilePanels() = default;
    virtual std::optional<std::string> runModal(const FilePanelRequest& request) = 0;

    // The path as a save panel hands it back: with the allowed extension.
    static std::string withAllowedExtension(const std::string& path, const std::string& type)
    {
        const std::string suffix = "." + type;
        const bool hasIt = path.size() > suffix.size() &&
                           path.compare(path.size() - suffix.size(), suffix.size(), suffix) == 0;
        return type.empty() || hasIt ? path : path + suffix;
    }
};

} // namespace vexto
