#include "qt/QtTextViewMirror.hpp"

#include "qt/QtCanvas.hpp"
#include "qt/QtFonts.hpp"
#include "qt/QtKeyEvents.hpp"
#include "qt/QtKeyNames.hpp"
#include "qt/QtKeyboardFocus.hpp"
#include "toolkit/Event.hpp"
#include "toolkit/TextView.hpp"
#include "toolkit/Window.hpp"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

namespace vexto {

namespace {

class TextBox final : public QWidget {
public:
    TextBox(TextView& view, QWidget* parent) : QWidget(parent), view_(view)
    {
        QtKeyboardFocus::takeFocusAndShowIt(this);
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        const QRect frame = rect().adjusted(0, 0, -1, -1);
        painter.fillRect(frame, QtCanvas::qtColor(view_.backgroundColor()));
        painter.setPen(view_.isFirstResponder() || hasFocus() ? palette().color(QPalette::Highlight)
                                                              : QColor(160, 160, 160));
        painter.drawRect(frame);
        painter.setFont(QtFonts::qtFont(view_.font()));
        painter.setPen(QtCanvas::qtColor(view_.textColor()));
        // A combination reads in the desktop's words, with its symbols in the tip.
        const QString symbols = QString::fromStdString(view_.string());
        const QString text =
            view_.showsKeyCombination() ? QtKeyNames::nativeText(view_.string()) : symbols;
        const QString tip = text != symbols ? symbols : QString();
        if (toolTip() != tip) {
            setToolTip(tip);
        }
        const QRect textArea = frame.adjusted(4, 0, -4, 0);
        const bool truncate =
            view_.paragraphStyle().lineBreak == ParagraphStyle::LineBreak::TruncateTail;
        painter.drawText(
            textArea, QtCanvas::qtAlignment(view_.paragraphStyle().alignment),
            truncate ? painter.fontMetrics().elidedText(text, Qt::ElideRight, textArea.width())
                     : text);
    }

    // Through the window, as a click: the view takes the keyboard focus the model's way.
    void mousePressEvent(QMouseEvent*) override { click(); }

    void click()
    {
        if (Window* window = view_.window()) {
            const Point centre{view_.bounds().midX(), view_.bounds().midY()};
            window->sendEvent(Event::mouse(Event::Type::LeftMouseDown,
                                           view_.convertPointToView(centre, nullptr)));
            update();
        }
    }

    // Keys go to the model's window, which hands them to its first responder; Tab too, so
    // that a recording field records it instead of Qt moving the focus.
    bool event(QEvent* event) override
    {
        if (event->type() == QEvent::ShortcutOverride && view_.isFirstResponder() &&
            view_.takesEveryKey()) {
            event->accept();
            return true;
        }
        if (event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease) {
            Window* window = view_.window();
            const auto modelEvent = QtKeyEvents::modelEvent(*static_cast<QKeyEvent*>(event));
            if (window != nullptr && modelEvent && view_.isFirstResponder()) {
                window->sendEvent(*modelEvent);
                update();
                return true;
            }
            // Reached with Tab, the field is pressed with Space or Return as it is clicked, and
            // cleared with Delete or Backspace as with its clear button.
            const int key = static_cast<QKeyEvent*>(event)->key();
            if (event->type() == QEvent::KeyPress && QtKeyboardFocus::isPressKey(key)) {
                click();
                return true;
            }
            if (event->type() == QEvent::KeyPress &&
                (key == Qt::Key_Backspace || key == Qt::Key_Delete) && view_.deleteBackward()) {
                update();
                return true;
            }
        }
        return QWidget::event(event);
    }

private:
    TextView& view_;
};

} // namespace

QtTextViewMirror::QtTextViewMirror(std::shared_ptr<TextView> view, QWidget* parent)
    : QtViewMirror(view, new TextBox(*view, parent))
{}

void QtTextViewMirror::syncAll()
{
    widget()->update();
}

} // namespace vexto
