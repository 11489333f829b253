#include "qt/QtWindowMirror.hpp"

#include "toolkit/View.hpp"
#include "toolkit/Window.hpp"

#include <QCoreApplication>
#include <QEventLoop>
#include <QResizeEvent>
#include <QShortcut>

#include <cmath>
#include <functional>

namespace vexto {

namespace {

// The top-level widget, telling the mirror when the person resizes it.
class TopLevel final : public QWidget {
public:
    explicit TopLevel(std::function<void(QSize)> resized) : resized_(std::move(resized)) {}

protected:
    void resizeEvent(QResizeEvent* event) override
    {
        QWidget::resizeEvent(event);
        resized_(event->size());
    }

private:
    std::function<void(QSize)> resized_;
};

} // namespace

QtWindowMirror::QtWindowMirror(Window& window) : window_(window)
{
    widget_ = std::make_unique<TopLevel>([this](QSize size) {
        if (pushing_) {
            return;
        }
        const Rect frame = window_.frame();
        const double height = size.height() + window_.titleBarHeight();
        window_.setFrame(Rect(frame.minX(), frame.maxY() - height, size.width(), height), true,
                         false);
    });
    if (window_.contentView() != nullptr) {
        auto content = window_.contentView()->shared_from_this();
        content_ = QtViewMirror::create(content, widget_.get());
        content_->setPinnedToParentOrigin(true);
        content_->place();
        content_->widget()->show();
    }
    // A click's tracking loop in the model waits for the mouse as Qt delivers it.
    window_.setEventWaiter([] {
        if (QCoreApplication::closingDown()) {
            return false;
        }
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        return true;
    });
    observer_ = window_.addObserver([this](Window&, WindowChange change) {
        if (change == WindowChange::Frame || change == WindowChange::Title ||
            change == WindowChange::Visible) {
            sync();
        }
    });
    sync();
}

QtWindowMirror::~QtWindowMirror()
{
    window_.removeObserver(observer_);
    window_.setEventWaiter({});
    content_.reset();
}

void QtWindowMirror::sync()
{
    pushing_ = true;
    const Rect content = window_.contentRectForFrameRect(window_.frame());
    const Size least = window_.contentMinSize();
    widget_->setMinimumSize(int(std::ceil(least.width)), int(std::ceil(least.height)));
    widget_->resize(int(std::lround(content.width())), int(std::lround(content.height())));
    widget_->setWindowTitle(QString::fromStdString(window_.title()));
    if (content_) {
        content_->place();
    }
    pushing_ = false;
}

QtViewMirror* QtWindowMirror::mirrorOf(const View* view) const
{
    return content_ ? content_->find(view) : nullptr;
}

QImage QtWindowMirror::render() const
{
    widget_->ensurePolished();
    return widget_->grab().toImage();
}

void QtWindowMirror::closeOnStandardKeys()
{
    QWidget* window = widget_.get();
    for (const QKeySequence& keys :
         {QKeySequence(Qt::Key_Escape), QKeySequence(Qt::CTRL | Qt::Key_W)}) {
        auto* shortcut = new QShortcut(keys, window);
        QObject::connect(shortcut, &QShortcut::activated, window, &QWidget::close);
    }
    auto* quit = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q), window);
    QObject::connect(quit, &QShortcut::activated, QCoreApplication::instance(),
                     &QCoreApplication::quit, Qt::QueuedConnection);
}

} // namespace vexto
