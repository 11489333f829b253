#include "qt/QtCustomViewMirror.hpp"

#include "qt/QtCanvas.hpp"
#include "qt/QtKeyboardFocus.hpp"
#include "toolkit/Button.hpp"
#include "toolkit/Event.hpp"
#include "toolkit/Window.hpp"

#include <QKeyEvent>
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
        QtKeyboardFocus::takeFocusAndShowIt(this);
        setFocusPolicy(Qt::NoFocus); // until it is known to have something to press
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        offerToTheKeyboard();
        QPainter painter(this);
        QtCanvas canvas(painter, view_.frame().height());
        view_.drawRect(canvas, view_.bounds());
        view_.setNeedsDisplay(false);
        if (hasFocus()) {
            painter.setRenderHint(QPainter::Antialiasing);
            painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
            painter.setBrush(Qt::NoBrush);
            painter.drawRoundedRect(QRectF(pressedArea()).adjusted(1, 1, -1, -1), 3, 3);
        }
    }

    // Reached with Tab, a button (or the button inside a field) is pressed with Space or Return
    // as it is clicked.
    void keyPressEvent(QKeyEvent* event) override
    {
        if (!QtKeyboardFocus::isPressKey(event->key())) {
            QWidget::keyPressEvent(event);
            return;
        }
        if (auto* button = dynamic_cast<Button*>(&view_)) {
            button->performClick();
        } else {
            view_.pressTrackedButton();
        }
        update();
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
    // A pointer that leaves in one jump is somewhere outside: what it lit up goes dark.
    void leaveEvent(QEvent*) override
    {
        if (Window* window = view_.window(); window != nullptr && !window->isWaitingForEvents()) {
            const Point outside{-1, -1};
            window->sendEvent(
                Event::mouse(Event::Type::MouseMoved, view_.convertPointToView(outside, nullptr)));
        }
    }
    void mouseMoveEvent(QMouseEvent* event) override
    {
        send(event->buttons() & Qt::LeftButton ? Event::Type::LeftMouseDragged
                                               : Event::Type::MouseMoved,
             event);
    }

private:
    // A custom button, or a field with a button inside, is a stop for Tab; a drawing is not.
    void offerToTheKeyboard()
    {
        const bool pressable =
            dynamic_cast<Button*>(&view_) != nullptr || view_.centreOfTrackedButton().has_value();
        const Qt::FocusPolicy policy = pressable ? Qt::StrongFocus : Qt::NoFocus;
        if (focusPolicy() != policy) {
            setFocusPolicy(policy);
        }
    }
    // Where the focus shows: the button inside the view, else the whole view.
    QRect pressedArea() const
    {
        if (view_.trackingAreas().empty()) {
            return rect();
        }
        const Rect area = view_.trackingAreas().front()->rect();
        return QRect(static_cast<int>(area.minX()),
                     static_cast<int>(view_.frame().height() - area.maxY()),
                     static_cast<int>(area.width()), static_cast<int>(area.height()));
    }

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

void QtCustomViewMirror::syncAll()
{
    // A disabled control is no stop for Tab either.
    if (const auto* control = dynamic_cast<const Control*>(&view())) {
        widget()->setEnabled(control->isEnabled());
    }
    widget()->update();
}

} // namespace vexto
