#include "qt/QtCustomViewMirror.hpp"

#include "qt/QtCanvas.hpp"
#include "toolkit/Event.hpp"
#include "toolkit/Window.hpp"

#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QToolTip>

namespace vexto {

namespace {

class CustomWidget final : public QWidget {
public:
    CustomWidget(View& view, QWidget* parent) : QWidget(parent), view_(view)
    {
        setMouseTracking(true);
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        QtCanvas canvas(painter, view_.frame().height());
        view_.drawRect(canvas, view_.bounds());
        view_.setNeedsDisplay(false);
    }

    void mousePressEvent(QMouseEvent* event) override { send(Event::Type::LeftMouseDown, event); }

    // Tool tips show over the rectangles the view asks for, not over the whole view.
    bool event(QEvent* event) override
    {
        if (event->type() != QEvent::ToolTip) {
            return QWidget::event(event);
        }
        const QPointF local = static_cast<QHelpEvent*>(event)->pos();
        const std::string tip =
            view_.toolTipAtPoint(Point{local.x(), view_.frame().height() - local.y()});
        if (tip.empty()) {
            QToolTip::hideText();
            event->ignore();
        } else {
            QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(),
                               QString::fromStdString(tip), this);
        }
        return true;
    }
    void mouseReleaseEvent(QMouseEvent* event) override { send(Event::Type::LeftMouseUp, event); }
    void mouseMoveEvent(QMouseEvent* event) override
    {
        send(event->buttons() & Qt::LeftButton ? Event::Type::LeftMouseDragged
                                               : Event::Type::MouseMoved,
             event);
    }

private:
    void send(Event::Type type, QMouseEvent* event)
    {
        const QPointF local = event->position();
        const Point inView{local.x(), view_.frame().height() - local.y()};
        Event modelEvent = Event::mouse(type, view_.convertPointToView(inView, nullptr));
        Window* window = view_.window();
        if (window == nullptr) {
            // A view outside any window (a colour panel's accessory) takes its clicks itself.
            if (type == Event::Type::LeftMouseDown) {
                view_.mouseDown(modelEvent);
            }
            return;
        }
        if (window->isWaitingForEvents()) {
            window->postEvent(modelEvent); // a click's tracking loop reads it
            return;
        }
        window->sendEvent(modelEvent);
    }

    View& view_;
};

} // namespace

QtCustomViewMirror::QtCustomViewMirror(std::shared_ptr<View> view, QWidget* parent)
    : QtViewMirror(view, new CustomWidget(*view, parent))
{}

} // namespace vexto
