#include "qt/QtButtonMirror.hpp"

#include "toolkit/Button.hpp"

#include <QCheckBox>
#include <QPushButton>

namespace vexto {

namespace {

QAbstractButton* makeWidget(const Button& button, QWidget* parent)
{
    if (button.kind() == Button::Kind::CheckBox) {
        return new QCheckBox(parent);
    }
    auto* push = new QPushButton(parent);
    push->setCheckable(button.kind() == Button::Kind::Toggle);
    return push;
}

} // namespace

QtButtonMirror::QtButtonMirror(std::shared_ptr<Button> button, QWidget* parent)
    : QtViewMirror(button, makeWidget(*button, parent)), button_(*button)
{
    auto* widget = static_cast<QAbstractButton*>(this->widget());
    QObject::connect(widget, &QAbstractButton::clicked, widget, [this] {
        if (pushing_) {
            return;
        }
        button_.performClick();
        // Qt's own three-state order differs from the model's: show the model's.
        pushing_ = true;
        syncAll();
        pushing_ = false;
    });
}

void QtButtonMirror::syncAll()
{
    auto* widget = static_cast<QAbstractButton*>(this->widget());
    const QSignalBlocker block(widget);
    widget->setText(plainTitle(button_.title()));
    widget->setEnabled(button_.isEnabled());
    if (auto* box = qobject_cast<QCheckBox*>(widget)) {
        box->setTristate(button_.allowsMixedState());
        box->setCheckState(button_.state() == Button::mixedState ? Qt::PartiallyChecked
                           : button_.state() == Button::onState  ? Qt::Checked
                                                                 : Qt::Unchecked);
    } else if (widget->isCheckable()) {
        widget->setChecked(button_.state() == Button::onState);
    }
}

} // namespace vexto
