#include "qt/QtKeyEventTaps.hpp"

#include "qt/QtKeyEvents.hpp"
#include "toolkit/Event.hpp"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QWidget>

namespace vexto {

QtKeyEventTaps::QtKeyEventTaps()
{
    QCoreApplication::instance()->installEventFilter(this);
}

QtKeyEventTaps::~QtKeyEventTaps()
{
    if (QCoreApplication::instance() != nullptr) {
        QCoreApplication::instance()->removeEventFilter(this);
    }
}

bool QtKeyEventTaps::eventFilter(QObject* watched, QEvent* event)
{
    if (empty() || (event->type() != QEvent::KeyPress && event->type() != QEvent::KeyRelease)) {
        return QObject::eventFilter(watched, event);
    }
    // Qt offers each key to several objects (window, then widget): the widget's turn counts,
    // and only the first widget's when nobody takes the key.
    if (!watched->isWidgetType() || isPropagation(watched, event)) {
        return false;
    }
    const auto modelEvent = QtKeyEvents::modelEvent(*static_cast<QKeyEvent*>(event));
    return modelEvent && deliver(*modelEvent);
}

bool QtKeyEventTaps::isPropagation(QObject* watched, const QEvent* event)
{
    // A key nobody accepts goes to each parent in turn as the same event object; a new key at the
    // same address would carry another time stamp.
    auto* widget = static_cast<QWidget*>(watched);
    const quint64 timestamp = static_cast<const QKeyEvent*>(event)->timestamp();
    const bool propagated = event == lastEvent_ && timestamp == lastTimestamp_ &&
                            lastWidget_ != nullptr && lastWidget_->parentWidget() == widget;
    lastEvent_ = event;
    lastTimestamp_ = timestamp;
    lastWidget_ = widget;
    return propagated;
}

} // namespace vexto
