#pragma once

#include "toolkit/View.hpp"

#include <QPointer>
#include <QWidget>

#include <memory>
#include <vector>

namespace vexto {

// Keeps one Qt widget in step with one model view, both ways: model changes are pushed to the
// widget (geometry flipped against the superview's height), and the person's input on the
// widget is turned into model actions. Subviews are mirrored as child widgets.
class QtViewMirror {
public:
    // The mirror for the view's kind, with its widget created under `parent`.
    static std::unique_ptr<QtViewMirror> create(std::shared_ptr<View> view, QWidget* parent);

    virtual ~QtViewMirror();
    QtViewMirror(const QtViewMirror&) = delete;
    QtViewMirror& operator=(const QtViewMirror&) = delete;

    View& view() const { return *view_; }
    QWidget* widget() const { return widget_; }

    // Places the widget from the view's frame; `pinned` ones sit at the parent's top left.
    void place();
    void setPinnedToParentOrigin(bool pinned) { pinned_ = pinned; }

    // The mirror of a view in this subtree, or none.
    QtViewMirror* find(const View* view);

    // A title for Qt widgets that read "&" as a shortcut marker: shown as the text it is.
    static QString plainTitle(const std::string& title);
    // The notice as the desktop shows it: keys named in its words ("Ctrl+Alt+Z"), as the field
    // names them, instead of symbols.
    static QString noticeText(const View& view);

protected:
    QtViewMirror(std::shared_ptr<View> view, QWidget* widget);

    // Called for every model change; the base handles frame, hidden, tool tip, enabled,
    // subviews and redisplay.
    virtual void modelChanged(ViewChange change);
    // Pushes the whole model state to the widget (once at creation, and when asked).
    virtual void syncAll() {}
    // Where child widgets go.
    virtual QWidget* childContainer() const { return widget_; }
    // Whether the subviews are mirrored by the base (a tab view mirrors its pages itself).
    virtual bool mirrorsSubviews() const { return true; }

    void rebuildChildren();
    void start(); // called by create() once the object is complete

    // True while the model is being pushed to the widget: widget signals are then ignored.
    bool pushing_ = false;
    std::vector<std::unique_ptr<QtViewMirror>> children_;

private:
    void showNotice();

    std::shared_ptr<View> view_;
    QPointer<QWidget> widget_;
    int observer_ = 0;
    bool pinned_ = false;
};

} // namespace vexto
