// The daemon's Qt side: its run loop where there is a display, the panel shown as a window that
// never takes the focus and takes clicks only on its items, and a sample drawn into a picture.
#include "DaemonQtFront.hpp"

#include "ThemeIcons.hpp"
#include "cycling/WindowCycle.hpp"
#include "panel/PanelPresenter.hpp"
#include "panel/PanelView.hpp"
#include "platform/linux/EwmhProcessWindows.hpp"
#include "qt/QtCanvas.hpp"
#include "qt/QtRunLoop.hpp"
#include "qt/QtTextMetrics.hpp"
#include "xserver/X11InputShape.hpp"

#include <QApplication>
#include <QCursor>
#include <QGuiApplication>
#include <QImage>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QPainterPath>
#include <QRegion>
#include <QScreen>
#include <QTimer>
#include <QWidget>

#include <cstdlib>
#include <functional>
#include <memory>

using namespace vexto;

namespace {

constexpr int sampleMilliseconds = 2000;

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

xcb_connection_t* x11Connection()
{
    auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 != nullptr ? x11->connection() : nullptr;
}

// One borderless window over everything else that never takes the keyboard focus.
class PanelWindow final : public QWidget {
public:
    PanelWindow()
        : QWidget(nullptr, Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                               Qt::WindowDoesNotAcceptFocus)
    {
        setAttribute(Qt::WA_ShowWithoutActivating);
        setAttribute(Qt::WA_TranslucentBackground);
        setFocusPolicy(Qt::NoFocus);
    }

    // Moves the selection of the panel shown, where only the selection changed.
    bool takeSelectionOf(const PanelContent& content)
    {
        if (!view_ || !clickable_ || !isVisible()) {
            return false;
        }
        const auto changed = view_->takeSelectionOf(content);
        if (!changed) {
            return false;
        }
        // At once, not when Qt's loop next comes round: the key press waits for this picture.
        const double height = view_->frame().height();
        QRegion region;
        for (const Rect& part : *changed) {
            region += QRectF(part.minX(), height - part.maxY(), part.width(), part.height())
                          .toAlignedRect();
        }
        repaint(region);
        return true;
    }

    void setClickedHandler(std::function<void(std::size_t)> clicked)
    {
        clicked_ = std::move(clicked);
    }

    // Without a compositing manager nothing shows through a translucent window: the window is
    // then cut to the panel's own shape, so that no dark corners or shadow band show. A sample
    // takes no clicks at all; a cycle's panel takes them on its items only.
    void setView(std::unique_ptr<PanelView> view, bool composited, bool clickable)
    {
        view_ = std::move(view);
        background_ = QImage();
        clickable_ = clickable;
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

    // Once shown, when the window exists on the server.
    void limitClicks()
    {
        xcb_connection_t* connection = x11Connection();
        if (connection == nullptr || !view_) {
            return;
        }
        std::vector<X11InputShape::Area> areas;
        if (clickable_) {
            const double height = view_->frame().height();
            const qreal scale = devicePixelRatioF();
            const auto add = [&](const Rect& r) {
                areas.push_back(
                    {std::int16_t(r.minX() * scale), std::int16_t((height - r.maxY()) * scale),
                     std::uint16_t(r.width() * scale), std::uint16_t(r.height() * scale)});
            };
            for (std::size_t index = 0; index < view_->content().applications.size(); ++index) {
                add(view_->itemRect(index));
            }
            const auto* selected = view_->content().selected();
            const std::size_t rows = selected != nullptr ? std::min(selected->windows.size(),
                                                                    PanelView::mostListedWindows)
                                                         : 0;
            for (std::size_t line = 0; line < rows; ++line) {
                add(view_->windowRowRect(line));
            }
        }
        X11InputShape::takeClicksOnlyIn(connection, static_cast<xcb_window_t>(winId()), areas);
    }

protected:
    void paintEvent(QPaintEvent* event) override
    {
        if (!view_) {
            return;
        }
        // The panel and its shadow are drawn once a view; a step of the cycle draws only what
        // lies on them.
        const qreal scale = devicePixelRatioF();
        if (background_.isNull()) {
            background_ = QImage(size() * scale, QImage::Format_ARGB32_Premultiplied);
            background_.setDevicePixelRatio(scale);
            background_.fill(Qt::transparent);
            QPainter layer(&background_);
            QtCanvas canvas(layer, view_->frame().height());
            view_->drawBackground(canvas);
        }
        QPainter painter(this);
        painter.setClipRegion(event->region());
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        painter.drawImage(QPointF(0, 0), background_);
        painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
        const double height = view_->frame().height();
        QtCanvas canvas(painter, height);
        std::vector<Rect> dirty;
        for (const QRect& part : event->region()) {
            dirty.emplace_back(part.x(), height - part.y() - part.height(), part.width(),
                               part.height());
        }
        view_->drawForeground(canvas, dirty);
    }

    void mousePressEvent(QMouseEvent* event) override
    {
        if (!view_ || !clickable_ || !clicked_) {
            return;
        }
        const QPointF at = event->position();
        if (const auto index =
                view_->cycleIndexAt(Point{at.x(), view_->frame().height() - at.y()})) {
            clicked_(*index);
        }
    }

private:
    std::unique_ptr<PanelView> view_;
    QImage background_;
    std::function<void(std::size_t)> clicked_;
    bool clickable_ = false;
};

// A larger picture of the selected window beside the panel, framed in the preview's border
// colour. It takes no clicks and never the focus.
class PreviewWindow final : public QWidget {
public:
    static constexpr int border = 4;
    static constexpr int gap = 12;

    PreviewWindow()
        : QWidget(nullptr, Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                               Qt::WindowDoesNotAcceptFocus)
    {
        setAttribute(Qt::WA_ShowWithoutActivating);
        setFocusPolicy(Qt::NoFocus);
    }

    // Above the panel where the picture fits there, else on the side with more room, centred
    // on the panel; the picture only ever shrinks to fit.
    void show(const Bitmap& picture, const Color& borderColour, const QWidget& panelWindow)
    {
        const QScreen* screen = panelWindow.screen();
        if (screen == nullptr || picture.width <= 0 || picture.height <= 0 ||
            picture.rgba.size() < std::size_t(picture.width) * std::size_t(picture.height) * 4) {
            return;
        }
        const QRect panel = panelWindow.geometry();
        const QRect area = screen->availableGeometry();
        picture_ = QImage(picture.rgba.data(), picture.width, picture.height, picture.width * 4,
                          QImage::Format_RGBA8888)
                       .copy();
        borderColour_ = QtCanvas::qtColor(borderColour);
        const int above = panel.top() - area.top() - 2 * gap;
        const int below = area.bottom() - panel.bottom() - 2 * gap;
        const bool onTop = above - 2 * border >= picture_.height() || above >= below;
        const QSize room(int(area.width() * 0.8) - 2 * border,
                         (onTop ? above : below) - 2 * border);
        if (room.width() < 16 || room.height() < 16) {
            return;
        }
        const QSize shown = picture_.size().boundedTo(room).expandedTo(QSize(1, 1));
        resize(picture_.size().scaled(shown, Qt::KeepAspectRatio) + QSize(2 * border, 2 * border));
        const int x = panel.center().x() - width() / 2;
        const int y = onTop ? panel.top() - gap - height() : panel.bottom() + gap;
        move(std::clamp(x, area.left(), std::max(area.left(), area.right() - width())), y);
        QWidget::show();
        raise();
        if (xcb_connection_t* connection = x11Connection()) {
            X11InputShape::takeClicksOnlyIn(connection, static_cast<xcb_window_t>(winId()), {});
        }
        update();
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.fillRect(rect(), borderColour_);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(rect().adjusted(border, border, -border, -border), picture_);
    }

private:
    QImage picture_;
    QColor borderColour_;
};

class QtPanelPresenter final : public PanelPresenter {
public:
    QtPanelPresenter()
    {
        sampleTimer_.setSingleShot(true);
        QObject::connect(&sampleTimer_, &QTimer::timeout, &window_, &QWidget::hide);
        QObject::connect(&sampleTimer_, &QTimer::timeout, &preview_, &QWidget::hide);
    }

    void setAppearance(const PanelAppearance& appearance) override { look_ = appearance; }

    bool showSample(const PanelAppearance& appearance) override
    {
        if (!show(appearance, PanelContent::sample(), false)) {
            return false;
        }
        preview_.hide();
        if (appearance.showPreviews) {
            preview_.show(PanelContent::samplePreview(), appearance.previewBorder, window_);
        }
        sampleTimer_.start(sampleMilliseconds); // a new sample starts the time again
        return true;
    }

    bool showCycle(const WindowCycle& cycle) override
    {
        if (!look_) {
            return false;
        }
        sampleTimer_.stop();
        PanelContent content = PanelContent::fromCycle(cycle);
        if (look_->iconMode != 0) {
            themeIcons_.fill(content, look_->itemSize, look_->documentIconOverlays);
        }
        // A step of the cycle only moves the selection: the window keeps its size and shape.
        if (window_.takeSelectionOf(content)) {
            return true;
        }
        return show(*look_, std::move(content), true);
    }

    void hideCycle() override
    {
        preview_.hide();
        window_.hide();
    }

    void showPreview(const Bitmap& picture) override
    {
        if (look_ && window_.isVisible()) {
            preview_.show(picture, look_->previewBorder, window_);
        }
    }

    void hidePreview() override { preview_.hide(); }

    void setItemClickedHandler(std::function<void(std::size_t)> clicked) override
    {
        window_.setClickedHandler(std::move(clicked));
    }

private:
    bool show(const PanelAppearance& appearance, PanelContent content, bool clickable)
    {
        QScreen* screen = chosenScreen(appearance.onMouseScreen);
        if (screen == nullptr) {
            return false;
        }
        const QRect area = screen->availableGeometry();
        window_.setView(
            std::make_unique<PanelView>(appearance, std::move(content), area.width(), &metrics_),
            windows_.hasCompositingManager(), clickable);
        QRect placed(QPoint(), window_.size());
        placed.moveCenter(area.center());
        window_.move(placed.topLeft());
        window_.show();
        window_.raise();
        window_.limitClicks();
        return true;
    }

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

    PanelWindow window_;
    PreviewWindow preview_;
    QTimer sampleTimer_;
    QtTextMetrics metrics_;
    EwmhProcessWindows windows_;
    std::optional<PanelAppearance> look_;
    ThemeIcons themeIcons_;
};

} // namespace

extern "C" __attribute__((visibility("default"))) int
vexto_daemon_run_with_qt(int argc, char** argv, DaemonBody body)
{
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QtRunLoop loop;
    QtPanelPresenter presenter;
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
