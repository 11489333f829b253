#include "qt/QtTranslations.hpp"

#include "foundation/Localization.hpp"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QTranslator>

namespace vexto {

bool QtTranslations::install(QCoreApplication& application)
{
    const QString folder = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
    // The same languages, in the same order, as the pane's own texts are looked for in.
    for (const std::string& language : Localization::preferredLocalizationFolders()) {
        if (language == "en" || language == "English") {
            return false;
        }
        auto* translator = new QTranslator(&application);
        if (translator->load(QStringLiteral("qtbase_") + QString::fromStdString(language),
                             folder)) {
            return QCoreApplication::installTranslator(translator);
        }
        delete translator;
    }
    return false;
}

} // namespace vexto
