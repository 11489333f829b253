#include "qt/QtKeyboardFocus.hpp"

#include <QEvent>
#include <QWidget>

namespace vexto {

namespace {

class RepaintOnFocusChange final : public QObject {
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut) {
            static_cast<QWidget*>(watched)->update();
        }
        return false;
    }
};

} // namespace

bool QtKeyboardFocus::isPressKey(int key)
{
    return key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter;
}

void QtKeyboardFocus::takeFocusAndShowIt(QWidget* widget)
{
    widget->setFocusPolicy(Qt::StrongFocus);
    widget->installEventFilter(new RepaintOnFocusChange(widget));
}

} // namespace vexto
