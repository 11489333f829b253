#pragma once

namespace vexto {

class View;

// Makes room for the texts the controls of one container show, measured as the front draws
// them: a column of right-aligned labels that is too narrow grows and carries everything to its
// right along; any other control narrower than its text grows and carries the rest of its row.
// Nothing ever shrinks, so a layout whose texts fit stays as it was.
class PaneLayoutFitter {
public:
    static constexpr double rightMargin = 18;

    // The width the view's text needs with the control's own chrome around it; its present
    // width when it shows no text.
    static double neededWidth(const View& view);
    // Fits the container's subviews and answers the width the container then needs; 0 while
    // texts are not measured, when nothing is moved.
    static double fit(View& container);
};

} // namespace vexto
