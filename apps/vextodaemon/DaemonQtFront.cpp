// The daemon's Qt side: its run loop where there is a display, the sample panel shown as a
// window that takes no focus, and the sample drawn into a picture.
#include "DaemonQtFront.hpp"

#include "panel/PanelView.hpp"
#include "panel/SamplePresenter.hpp"
#include "platform/linux/EwmhProcessWindows.hpp"
#include "qt/QtCanvas.hpp"
#include "qt/QtRunLoop.hpp"
#include "qt/QtTextMetrics.hpp"

#include <QApplication>
#include <QCursor>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QRegion>
#include <QScreen>
#include <QTimer>
#include <QWidget>

#include <cstdlib>
#include <memory>

using namespace vexto;

namespace {

constexpr int shownMilliseconds = 2000;

QImage rendered(PanelView& view)
{
    const Size size = view.frame().size;
    QImage image(QSize(int(std::ceil(size.width)), int(std::ceil(size.height))),
                 QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    QtCanvas canvas(painter, size.height);
    view.drawRect(canvas, view.bounds());
    return image;
}

// One borderless window over everything else that never takes the keyboard focus.
class SampleWindow final : public QWidget {
public:
    SampleWindow()
        : QWidget(nullptr, Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                               Qt::WindowDoesNotAcceptFocus)
    {
        setAttribute(Qt::WA_ShowWithoutActivating);
        setAttribute(Qt::WA_TranslucentBackground);
        setFocusPolicy(Qt::NoFocus);
    }

    // Without a compositing manager nothing shows through a translucent window: the window is
    // then cut to the panel's own shape, so that no dark corners or shadow band show.
    void setView(std::unique_ptr<PanelView> view, bool composited)
    {
        view_ = std::move(view);
        resize(int(std::ceil(view_->frame().width())), int(std::ceil(view_->frame().height())));
        if (composited) {
            clearMask();
        } else {
            const Rect panel = view_->panelRect();
            const double radius = view_->panelCornerRadius();
            QPainterPath shape;
            shape.addRoundedRect(QRectF(panel.minX(), view_->frame().height() - panel.maxY(),
                                        panel.width(), panel.height()),
                                 radius, radius);
            setMask(QRegion(shape.toFillPolygon().toPolygon()));
        }
        update();
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        if (!view_) {
            return;
        }
        QPainter painter(this);
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        painter.fillRect(rect(), Qt::transparent);
        painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
        QtCanvas canvas(painter, view_->frame().height());
        view_->drawRect(canvas, view_->bounds());
    }

private:
    std::unique_ptr<PanelView> view_;
};

class QtSamplePresenter final : public SamplePresenter {
public:
    QtSamplePresenter()
    {
        hideTimer_.setSingleShot(true);
        QObject::connect(&hideTimer_, &QTimer::timeout, &window_, &QWidget::hide);
    }

    bool showSample(const PanelAppearance& appearance) override
    {
        QScreen* screen = chosenScreen(appearance.onMouseScreen);
        if (screen == nullptr) {
            return false;
        }
        const QRect area = screen->availableGeometry();
        window_.setView(std::make_unique<PanelView>(appearance, PanelContent::sample(),
                                                    area.width(), &metrics_),
                        windows_.hasCompositingManager());
        QRect placed(QPoint(), window_.size());
        placed.moveCenter(area.center());
        window_.move(placed.topLeft());
        window_.show();
        window_.raise();
        hideTimer_.start(shownMilliseconds); // a new sample starts the time again
        return true;
    }

private:
    // The screen with the pointer, or the one with the active window (the pane's, while its
    // controls are being changed), else the primary one.
    QScreen* chosenScreen(bool onMouseScreen)
    {
        if (onMouseScreen) {
            if (QScreen* screen = QGuiApplication::screenAt(QCursor::pos())) {
                return screen;
            }
        }
        if (const auto frame = windows_.activeWindowFrame()) {
            const QPoint centre(int(frame->midX()), int(frame->midY()));
            if (QScreen* screen = QGuiApplication::screenAt(centre)) {
                return screen;
            }
        }
        return QGuiApplication::primaryScreen();
    }

    SampleWindow window_;
    QTimer hideTimer_;
    QtTextMetrics metrics_;
    EwmhProcessWindows windows_;
};

} // namespace

extern "C" __attribute__((visibility("default"))) int
vexto_daemon_run_with_qt(int argc, char** argv, DaemonBody body)
{
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QtRunLoop loop;
    QtSamplePresenter presenter;
    return body(loop, loop, &presenter);
}

extern "C" __attribute__((visibility("default"))) int
vexto_daemon_render_sample(const PanelAppearance* appearance, double screenWidth,
                           const char* pngPath)
{
    if (std::getenv("QT_QPA_PLATFORM") == nullptr) {
        ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    }
    int argc = 1;
    char name[] = "vextodaemon";
    char* argv[] = {name, nullptr};
    QApplication application(argc, argv);
    QtTextMetrics metrics;
    PanelView view(*appearance, PanelContent::sample(), screenWidth, &metrics);
    return rendered(view).save(QString::fromUtf8(pngPath)) ? 0 : 1;
}
