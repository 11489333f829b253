#pragma once

#include "ports/FilePanels.hpp"

namespace vexto {

// Open and save panels as modal Qt file dialogs, offering only the allowed file type.
class QtFilePanels final : public FilePanels {
public:
    std::optional<std::string> runModal(const FilePanelRequest& request) override;
};

} // namespace vexto
