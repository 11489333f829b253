#pragma once

#include "platform/KeyEventTapList.hpp"

#include <QObject>
#include <QPointer>

namespace vexto {

// Taps as an application-wide event filter: every key press and release of the application is
// offered to the taps, newest first, before any widget (or Qt's focus chain) sees it.
class QtKeyEventTaps final : public QObject, public KeyEventTapList {
public:
    QtKeyEventTaps();
    ~QtKeyEventTaps() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // Whether Qt is offering the key last seen to the next widget up the chain.
    bool isPropagation(QObject* watched, const QEvent* event);

    const QEvent* lastEvent_ = nullptr;
    quint64 lastTimestamp_ = 0;
    QPointer<QWidget> lastWidget_;
};

} // namespace vexto
