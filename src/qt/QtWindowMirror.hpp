#pragma once

#include "qt/QtViewMirror.hpp"

#include <QImage>
#include <QScrollArea>
#include <QWidget>

#include <memory>

namespace vexto {

class Window;

// A top-level Qt window showing a model window's content view. Model frame changes resize it;
// resizing it by hand changes the model frame, keeping the top edge where it is. It never grows
// past its screen: content larger than the screen scrolls, and the model keeps its full size.
class QtWindowMirror {
public:
    explicit QtWindowMirror(Window& window);
    ~QtWindowMirror();
    QtWindowMirror(const QtWindowMirror&) = delete;
    QtWindowMirror& operator=(const QtWindowMirror&) = delete;

    QWidget* widget() const { return widget_.get(); }
    // The mirror of a view of this window, or none.
    QtViewMirror* mirrorOf(const View* view) const;
    // The window's whole content as it looks now, drawn offscreen, scrolled or not.
    QImage render() const;
    // The part of the screen a window may take; the margin leaves room for the frame.
    QSize largestSize() const;
    // Escape and Ctrl+W close the window as its close button does; Ctrl+Q quits. A view that
    // takes every key (a recording hot-key field) gets them instead.
    void closeOnStandardKeys();

private:
    void sync();
    void takeKeyboardForARecordingField();

    Window& window_;
    std::unique_ptr<QWidget> widget_;
    QScrollArea* scroll_ = nullptr;
    std::unique_ptr<QtViewMirror> content_;
    int observer_ = 0;
    bool pushing_ = false;
};

} // namespace vexto
