#include "qt/QtAlerts.hpp"

#include <QMessageBox>
#include <QPushButton>

namespace vexto {

int QtAlerts::runModal(const AlertRequest& request)
{
    QMessageBox box;
    box.setWindowTitle(QString::fromStdString(request.title));
    box.setText(QString::fromStdString(request.message));
    QPushButton* defaultButton = box.addButton(
        QString::fromStdString(request.defaultButton.empty() ? "OK" : request.defaultButton),
        QMessageBox::AcceptRole);
    QPushButton* alternate = request.alternateButton.empty()
                                 ? nullptr
                                 : box.addButton(QString::fromStdString(request.alternateButton),
                                                 QMessageBox::RejectRole);
    QPushButton* other =
        request.otherButton.empty()
            ? nullptr
            : box.addButton(QString::fromStdString(request.otherButton), QMessageBox::ActionRole);
    box.setDefaultButton(defaultButton);
    box.exec();
    if (alternate != nullptr && box.clickedButton() == alternate) {
        return alternateReturn;
    }
    if (other != nullptr && box.clickedButton() == other) {
        return otherReturn;
    }
    return defaultReturn;
}

} // namespace vexto
