#include "qt/QtViewMirror.hpp"

#include "qt/QtButtonMirror.hpp"
#include "qt/QtColorWellMirror.hpp"
#include "qt/QtCustomViewMirror.hpp"
#include "qt/QtKeyNames.hpp"
#include "qt/QtPopUpMirror.hpp"
#include "qt/QtSliderMirror.hpp"
#include "qt/QtTabViewMirror.hpp"
#include "qt/QtTextFieldMirror.hpp"
#include "qt/QtTextViewMirror.hpp"
#include "toolkit/Button.hpp"
#include "toolkit/ColorWell.hpp"
#include "toolkit/PopUpButton.hpp"
#include "toolkit/Slider.hpp"
#include "toolkit/TabView.hpp"
#include "toolkit/TextField.hpp"
#include "toolkit/TextView.hpp"

#include <QEvent>
#include <QTimer>
#include <QToolTip>

#include <cmath>

namespace vexto {

std::unique_ptr<QtViewMirror> QtViewMirror::create(std::shared_ptr<View> view, QWidget* parent)
{
    std::unique_ptr<QtViewMirror> mirror;
    View* raw = view.get();
    if (raw->isCustomDrawn()) {
        mirror.reset(new QtCustomViewMirror(std::move(view), parent));
    } else if (auto button = std::dynamic_pointer_cast<Button>(view)) {
        mirror.reset(new QtButtonMirror(std::move(button), parent));
    } else if (auto popUp = std::dynamic_pointer_cast<PopUpButton>(view)) {
        mirror.reset(new QtPopUpMirror(std::move(popUp), parent));
    } else if (auto slider = std::dynamic_pointer_cast<Slider>(view)) {
        mirror.reset(new QtSliderMirror(std::move(slider), parent));
    } else if (auto field = std::dynamic_pointer_cast<TextField>(view)) {
        mirror.reset(new QtTextFieldMirror(std::move(field), parent));
    } else if (auto tabs = std::dynamic_pointer_cast<TabView>(view)) {
        mirror.reset(new QtTabViewMirror(std::move(tabs), parent));
    } else if (auto well = std::dynamic_pointer_cast<ColorWell>(view)) {
        mirror.reset(new QtColorWellMirror(std::move(well), parent));
    } else if (auto text = std::dynamic_pointer_cast<TextView>(view)) {
        mirror.reset(new QtTextViewMirror(std::move(text), parent));
    } else {
        mirror.reset(new QtViewMirror(std::move(view), new QWidget(parent)));
    }
    mirror->start();
    return mirror;
}

QtViewMirror::QtViewMirror(std::shared_ptr<View> view, QWidget* widget)
    : view_(std::move(view)), widget_(widget)
{}

QtViewMirror::~QtViewMirror()
{
    view_->removeObserver(observer_);
    children_.clear();
    if (widget_) {
        // Not deleted at once: the widget may be in the middle of emitting the signal that
        // led here.
        widget_->hide();
        widget_->deleteLater();
    }
}

namespace {

// A window that has just appeared is still being placed and activated, which takes tips away.
constexpr int noticeSettleTime = 600;
constexpr const char* noticeWatched = "vextoNoticeWatched";

// Just under the widget, without waiting for the pointer.
void showTipUnder(QWidget* widget, const QString& text)
{
    QToolTip::showText(widget->mapToGlobal(QPoint(0, widget->height())), text, widget);
}

// A notice given before the window showed (the pane's first look) appears when the view does.
class NoticeWhenShown final : public QObject {
public:
    NoticeWhenShown(std::shared_ptr<View> view, QWidget* widget)
        : QObject(widget), view_(std::move(view)), widget_(widget)
    {
        widget->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Show && !view_->notice().empty()) {
            QTimer::singleShot(noticeSettleTime, widget_, [view = view_, widget = widget_] {
                const QString text = QtViewMirror::noticeText(*view);
                // One tip shows at a time: the first field's notice, in reading order.
                if (!text.isEmpty() && widget->isVisible() && !QToolTip::isVisible()) {
                    showTipUnder(widget, text);
                }
            });
        }
        return false;
    }

private:
    std::shared_ptr<View> view_;
    QWidget* widget_;
};

} // namespace

// A notice appears as a tip just under the view, without waiting for the pointer, and goes when
// the model takes it away.
QString QtViewMirror::noticeText(const View& view)
{
    QString text = QString::fromStdString(view.notice());
    const std::string& keys = view.noticeKeyCombination();
    if (!keys.empty()) {
        text.replace(QString::fromStdString(keys), QtKeyNames::nativeText(keys));
    }
    return text;
}

void QtViewMirror::showNotice()
{
    const QString text = noticeText(*view_);
    if (text.isEmpty()) {
        QToolTip::hideText();
        return;
    }
    if (!widget_->isVisible()) {
        // One watcher a widget, however many notices come before it shows.
        if (!widget_->property(noticeWatched).toBool()) {
            widget_->setProperty(noticeWatched, true);
            new NoticeWhenShown(view_, widget_);
        }
        return;
    }
    showTipUnder(widget_, text);
}

void QtViewMirror::start()
{
    observer_ = view_->addObserver([this](View&, ViewChange change) { modelChanged(change); });
    pushing_ = true;
    syncAll();
    pushing_ = false;
    widget_->setToolTip(QString::fromStdString(view_->toolTip()));
    widget_->setVisible(!view_->isHidden());
    if (mirrorsSubviews()) {
        rebuildChildren();
    }
    place();
}

void QtViewMirror::place()
{
    if (!widget_) {
        return;
    }
    const Rect frame = view_->frame();
    const double parentHeight =
        view_->superview() != nullptr ? view_->superview()->frame().height() : frame.maxY();
    const double top = pinned_ ? 0 : parentHeight - frame.maxY();
    const double left = pinned_ ? 0 : frame.minX();
    widget_->setGeometry(int(std::lround(left)), int(std::lround(top)),
                         int(std::lround(frame.width())), int(std::lround(frame.height())));
    for (const auto& child : children_) {
        child->place();
    }
}

QString QtViewMirror::plainTitle(const std::string& title)
{
    return QString::fromStdString(title).replace('&', "&&");
}

QtViewMirror* QtViewMirror::find(const View* view)
{
    if (view_.get() == view) {
        return this;
    }
    for (const auto& child : children_) {
        if (QtViewMirror* found = child->find(view)) {
            return found;
        }
    }
    return nullptr;
}

void QtViewMirror::rebuildChildren()
{
    children_.clear();
    for (const auto& subview : view_->subviews()) {
        auto child = create(subview, childContainer());
        child->widget()->show();
        child->widget()->setVisible(!subview->isHidden());
        children_.push_back(std::move(child));
    }
}

void QtViewMirror::modelChanged(ViewChange change)
{
    if (!widget_) {
        return;
    }
    pushing_ = true;
    switch (change) {
    case ViewChange::Frame:
        place();
        break;
    case ViewChange::Hidden:
        widget_->setVisible(!view_->isHidden());
        break;
    case ViewChange::ToolTip:
        widget_->setToolTip(QString::fromStdString(view_->toolTip()));
        break;
    case ViewChange::Notice:
        showNotice();
        break;
    case ViewChange::Subviews:
        if (mirrorsSubviews()) {
            rebuildChildren();
            place();
        }
        break;
    case ViewChange::Display:
        widget_->update();
        break;
    default:
        syncAll();
        break;
    }
    pushing_ = false;
}

} // namespace vexto
