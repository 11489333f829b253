#include "qt/QtTextFieldMirror.hpp"

#include "qt/QtCanvas.hpp"
#include "toolkit/TextField.hpp"

#include <QLabel>
#include <QLineEdit>

namespace vexto {

QtTextFieldMirror::QtTextFieldMirror(std::shared_ptr<TextField> field, QWidget* parent)
    : QtViewMirror(field, field->isEditable() ? static_cast<QWidget*>(new QLineEdit(parent))
                                              : static_cast<QWidget*>(new QLabel(parent))),
      field_(*field)
{
    if (auto* edit = qobject_cast<QLineEdit*>(widget())) {
        QObject::connect(edit, &QLineEdit::textEdited, edit, [this](const QString& text) {
            if (!pushing_) {
                field_.userDidEditText(text.toStdString());
            }
        });
    }
}

void QtTextFieldMirror::syncAll()
{
    const QString text = QString::fromStdString(field_.stringValue());
    QPalette palette = widget()->palette();
    palette.setColor(QPalette::WindowText, QtCanvas::qtColor(field_.textColor()));
    palette.setColor(QPalette::Text, QtCanvas::qtColor(field_.textColor()));
    widget()->setPalette(palette);
    widget()->setEnabled(field_.isEnabled());
    if (auto* edit = qobject_cast<QLineEdit*>(widget())) {
        const QSignalBlocker block(edit);
        if (edit->text() != text) {
            edit->setText(text);
        }
        edit->setAlignment(QtCanvas::qtAlignment(field_.alignment()));
        edit->setPlaceholderText(QString::fromStdString(field_.placeholder()));
        return;
    }
    auto* label = static_cast<QLabel*>(widget());
    label->setText(text);
    label->setAlignment(QtCanvas::qtAlignment(field_.alignment()));
    label->setTextInteractionFlags(field_.isSelectable() ? Qt::TextSelectableByMouse
                                                         : Qt::NoTextInteraction);
}

} // namespace vexto
