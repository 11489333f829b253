#pragma once

class QCoreApplication;

namespace vexto {

// Qt's own texts (the buttons of its dialogs, the colour dialog, the file dialogs) in the
// language the pane's texts are in, where Qt ships a translation for it.
class QtTranslations {
public:
    // True when a translation was found and installed; English needs none.
    static bool install(QCoreApplication& application);
};

} // namespace vexto
