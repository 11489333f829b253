#include "ScriptedAlerts.hpp"

#include "foundation/Log.hpp"

namespace vexto {

int ScriptedAlerts::runModal(const AlertRequest& request)
{
    int answer = defaultReturn;
    if (!answers_.empty()) {
        answer = answers_.front();
        answers_.pop_front();
    }
    const char* chosen = answer == defaultReturn     ? request.defaultButton.c_str()
                         : answer == alternateReturn ? request.alternateButton.c_str()
                                                     : request.otherButton.c_str();
    Log::line("alert \"" + request.title + "\": " + request.message + " -> " + chosen);
    return answer;
}

std::optional<std::string> ScriptedAlerts::runModal(const FilePanelRequest& request)
{
    const std::string kind = request.saving ? "save panel" : "open panel";
    std::optional<std::string> answer;
    if (!fileAnswers_.empty()) {
        answer = fileAnswers_.front();
        fileAnswers_.pop_front();
    }
    if (!answer) {
        Log::line(kind + " \"" + request.title + "\" -> cancelled");
        return std::nullopt;
    }
    std::string path = *answer;
    if (request.saving) {
        path = withAllowedExtension(path, request.allowedFileType);
    }
    Log::line(kind + " \"" + request.title + "\" -> " + path);
    return path;
}

} // namespace vexto
