#pragma once

#include <string>

namespace vexto {

// A temporary home holding a copy of the user's Vexto folder, in force while it lives. Pictures
// are taken against it: selecting each tab to draw it would otherwise save "Last Tab" (and any
// setting the pane repairs on loading) into the user's own settings.
class ScratchHome {
public:
    ScratchHome();
    ~ScratchHome();
    ScratchHome(const ScratchHome&) = delete;
    ScratchHome& operator=(const ScratchHome&) = delete;

    // False when the copy could not be made; the home is then left as it was.
    bool ready() const { return !path_.empty(); }

private:
    std::string path_;
};

} // namespace vexto
