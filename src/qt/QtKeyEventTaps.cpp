#include "qt/QtKeyEventTaps.hpp"

#include "qt/QtKeyEvents.hpp"
#include "toolkit/Event.hpp"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QWidget>

#include <algorithm>

namespace vexto {

class QtKeyEventTaps::Tap final : public KeyEventTap {
public:
    Tap(QtKeyEventTaps& owner, Callback callback) : owner_(owner), callback_(std::move(callback))
    {
        owner_.taps_.push_back(this);
    }
    ~Tap() override { std::erase(owner_.taps_, this); }
    Tap(const Tap&) = delete;
    Tap& operator=(const Tap&) = delete;

    bool isEnabled() const override { return enabled_; }
    void setEnabled(bool enabled) override { enabled_ = enabled; }
    bool handle(const Event& event) const { return enabled_ && callback_(event); }

private:
    QtKeyEventTaps& owner_;
    Callback callback_;
    bool enabled_ = true;
};

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

std::unique_ptr<KeyEventTap> QtKeyEventTaps::createTap(Callback callback)
{
    return std::make_unique<Tap>(*this, std::move(callback));
}

bool QtKeyEventTaps::eventFilter(QObject* watched, QEvent* event)
{
    if (taps_.empty() ||
        (event->type() != QEvent::KeyPress && event->type() != QEvent::KeyRelease)) {
        return QObject::eventFilter(watched, event);
    }
    // Qt offers each key to several objects (window, then widget): the widget's turn counts,
    // and only the first widget's when nobody takes the key.
    if (!watched->isWidgetType() || isPropagation(watched, event)) {
        return false;
    }
    const auto modelEvent = QtKeyEvents::modelEvent(*static_cast<QKeyEvent*>(event));
    if (!modelEvent) {
        return false;
    }
    for (auto tap = taps_.rbegin(); tap != taps_.rend(); ++tap) {
        if ((*tap)->handle(*modelEvent)) {
            return true;
        }
    }
    return false;
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
