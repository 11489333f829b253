#include "qt/QtFilePanels.hpp"

#include <QApplication>
#include <QFileDialog>

namespace vexto {

std::optional<std::string> QtFilePanels::runModal(const FilePanelRequest& request)
{
    QFileDialog dialog(QApplication::activeWindow(), QString::fromStdString(request.title));
    dialog.setAcceptMode(request.saving ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog.setFileMode(request.saving ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    const QString type = QString::fromStdString(request.allowedFileType);
    if (!type.isEmpty()) {
        dialog.setNameFilter(QStringLiteral("*.") + type);
        dialog.setDefaultSuffix(type);
    }
    if (request.directory) {
        dialog.setDirectory(QString::fromStdString(*request.directory));
    }
    if (request.saving) {
        dialog.selectFile(QString::fromStdString(request.nameFieldStringValue));
    }
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
        return std::nullopt;
    }
    const std::string path = dialog.selectedFiles().front().toStdString();
    return request.saving ? withAllowedExtension(path, request.allowedFileType) : path;
}

} // namespace vexto
