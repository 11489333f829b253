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

} // namespace vexto
