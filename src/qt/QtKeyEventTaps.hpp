#pragma once

#include "ports/KeyEventTaps.hpp"

#include <QObject>
#include <QPointer>

#include <vector>

namespace vexto {

// Taps as an application-wide event filter: every key press and release of the application is
// offered to the taps, newest first, before any widget (or Qt's focus chain) sees it.
class QtKeyEventTaps final : public QObject, public KeyEventTaps {
public:
    QtKeyEventTaps();
    ~QtKeyEventTaps() override;

    std::unique_ptr<KeyEventTap> createTap(Callback callback) override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    class Tap;
    // Whether Qt is offering the key last seen to the next widget up the chain.
    bool isPropagation(QObject* watched, const QEvent* event);

    std::vector<Tap*> taps_;
    const QEvent* lastEvent_ = nullptr;
    quint64 lastTimestamp_ = 0;
    QPointer<QWidget> lastWidget_;
};

} // namespace vexto
