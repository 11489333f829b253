#include "qt/QtWindowMirror.hpp"

#include "toolkit/TextView.hpp"
#include "toolkit/View.hpp"
#include "toolkit/Window.hpp"

#include <QCoreApplication>
#include <QEventLoop>
#include <QKeyEvent>
#include <QResizeEvent>
#include <QScreen>
#include <QShortcut>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>
#include <functional>

namespace vexto {

namespace {

// Escape closes the window only when the key reaches the window itself: when nothing inside it
// took the key, and no menu, list or dialog had it first. (A shortcut would be matched before an
// open list saw the key: on X11 the list closes and the same press then closes the window.)
class EscapeCloses final : public QObject {
public:
    explicit EscapeCloses(QWidget* window) : QObject(window), window_(window) {}

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (watched == window_ && event->type() == QEvent::KeyPress) {
            const auto* key = static_cast<QKeyEvent*>(event);
            if (key->key() == Qt::Key_Escape && key->modifiers() == Qt::NoModifier) {
                window_->close();
                return true;
            }
        }
        return false;
    }

private:
    QWidget* window_;
};

} // namespace

namespace {

// Room the window manager's frame and panels take around a window.
constexpr int screenMargin = 48;

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
        // Below the content's least size (a small screen), the content keeps it and scrolls.
        const Size least = window_.contentMinSize();
        const double width = std::max<double>(size.width(), least.width);
        const double height =
            std::max<double>(size.height(), least.height) + window_.titleBarHeight();
        const Rect frame = window_.frame();
        window_.setFrame(Rect(frame.minX(), frame.maxY() - height, width, height), true, false);
    });
    // The content scrolls inside the window where the screen is smaller than it.
    scroll_ = new QScrollArea(widget_.get());
    scroll_->setFrameShape(QFrame::NoFrame);
    // Scrolled by the pointer and by the focus moving, never itself a stop for Tab: it would be
    // one where Space and Return do nothing, and draws no focus.
    scroll_->setFocusPolicy(Qt::NoFocus);
    scroll_->setWidgetResizable(false);
    auto* layout = new QVBoxLayout(widget_.get());
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(scroll_);
    if (window_.contentView() != nullptr) {
        auto content = window_.contentView()->shared_from_this();
        content_ = QtViewMirror::create(content, scroll_->viewport());
        content_->setPinnedToParentOrigin(true);
        content_->place();
        scroll_->setWidget(content_->widget());
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
        } else if (change == WindowChange::FirstResponder) {
            takeKeyboardForARecordingField();
        }
    });
    sync();
}

// A field that takes every key (a hot-key field recording) takes the whole keyboard, so that a
// combination the window manager or the desktop holds reaches it too and can be named, instead
// of doing its own thing (Openbox closing the window on Alt+F4 while the user records it).
void QtWindowMirror::takeKeyboardForARecordingField()
{
    const auto* text = dynamic_cast<const TextView*>(window_.firstResponder());
    QtViewMirror* recording = text != nullptr && text->takesEveryKey() ? mirrorOf(text) : nullptr;
    QWidget* grabber = QWidget::keyboardGrabber();
    if (grabber != nullptr && widget_->isAncestorOf(grabber) &&
        (recording == nullptr || recording->widget() != grabber)) {
        grabber->releaseKeyboard();
    }
    if (recording != nullptr && recording->widget() != grabber) {
        recording->widget()->grabKeyboard();
    }
}

QtWindowMirror::~QtWindowMirror()
{
    if (QWidget* grabber = QWidget::keyboardGrabber(); grabber && widget_->isAncestorOf(grabber)) {
        grabber->releaseKeyboard();
    }
    window_.removeObserver(observer_);
    window_.setEventWaiter({});
    content_.reset();
}

void QtWindowMirror::sync()
{
    pushing_ = true;
    const Rect content = window_.contentRectForFrameRect(window_.frame());
    const Size least = window_.contentMinSize();
    const QSize screen = largestSize();
    widget_->setMinimumSize(std::min(int(std::ceil(least.width)), screen.width()),
                            std::min(int(std::ceil(least.height)), screen.height()));
    widget_->resize(std::min(int(std::lround(content.width())), screen.width()),
                    std::min(int(std::lround(content.height())), screen.height()));
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
    QWidget* content = content_ ? content_->widget() : widget_.get();
    return content->grab().toImage();
}

QSize QtWindowMirror::largestSize() const
{
    const QScreen* screen = widget_->screen();
    if (screen == nullptr) {
        return QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    }
    const QSize available = screen->availableGeometry().size();
    return QSize(std::max(available.width() - screenMargin / 2, 200),
                 std::max(available.height() - screenMargin, 200));
}

void QtWindowMirror::closeOnStandardKeys()
{
    QWidget* window = widget_.get();
    window->installEventFilter(new EscapeCloses(window));
    auto* shortcut = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_W), window);
    QObject::connect(shortcut, &QShortcut::activated, window, &QWidget::close);
    auto* quit = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q), window);
    QObject::connect(quit, &QShortcut::activated, QCoreApplication::instance(),
                     &QCoreApplication::quit, Qt::QueuedConnection);
}

} // namespace vexto
