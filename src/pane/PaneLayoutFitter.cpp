#include "pane/PaneLayoutFitter.hpp"

#include "toolkit/Application.hpp"
#include "toolkit/Button.hpp"
#include "toolkit/PopUpButton.hpp"
#include "toolkit/TextField.hpp"

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>
#include <vector>

namespace vexto {

namespace {

// Room the controls take beside their text: the check box's box, a button's bezel, a pop-up's
// arrow, a label's inset.
constexpr double checkBoxChrome = 28;
constexpr double pushButtonChrome = 32;
constexpr double popUpChrome = 44;
constexpr double labelChrome = 8;
// Positions closer than this are the same.
constexpr double slack = 0.5;

double textWidth(const std::string& text)
{
    return std::ceil(Application::shared().widthOfString(text, Font::systemFontOfSize(13)));
}

bool isRightAlignedLabel(const View& view)
{
    const auto* field = dynamic_cast<const TextField*>(&view);
    return field != nullptr && !field->isEditable() && field->alignment() == TextAlignment::Right;
}

// Moves every subview that starts at or right of `from` (and lies in the row, when one is
// given) by `delta` to the right.
void shiftRightOf(View& container, double from, double delta, const View* rowOf = nullptr)
{
    for (const auto& subview : container.subviews()) {
        const Rect frame = subview->frame();
        const bool inRow = rowOf == nullptr || (frame.minY() < rowOf->frame().maxY() - slack &&
                                                frame.maxY() > rowOf->frame().minY() + slack);
        if (inRow && frame.minX() >= from - slack) {
            subview->setFrameOrigin(Point{frame.minX() + delta, frame.minY()});
        }
    }
}

void widen(View& view, double delta)
{
    view.setFrameSize(Size{view.frame().width() + delta, view.frame().height()});
}

// Right-aligned labels that share their column grow together.
void fitLabelColumns(View& container)
{
    std::map<std::pair<double, double>, std::vector<View*>> columns;
    for (const auto& subview : container.subviews()) {
        if (isRightAlignedLabel(*subview)) {
            columns[{subview->frame().minX(), subview->frame().width()}].push_back(subview.get());
        }
    }
    // From the right, so that a column's shift does not move the next one's labels first.
    for (auto column = columns.rbegin(); column != columns.rend(); ++column) {
        double delta = 0;
        for (const View* label : column->second) {
            delta = std::max(delta, PaneLayoutFitter::neededWidth(*label) - label->frame().width());
        }
        if (delta <= 0) {
            continue;
        }
        const double edge = column->first.first + column->first.second;
        shiftRightOf(container, edge, delta);
        for (View* label : column->second) {
            widen(*label, delta);
        }
    }
}

void fitRows(View& container)
{
    std::vector<View*> controls;
    for (const auto& subview : container.subviews()) {
        controls.push_back(subview.get());
    }
    std::sort(controls.begin(), controls.end(),
              [](const View* a, const View* b) { return a->frame().minX() < b->frame().minX(); });
    for (View* control : controls) {
        // Controls in a box first: the box then needs what they need.
        for (const auto& inner : control->subviews()) {
            if (const double grow = PaneLayoutFitter::neededWidth(*inner) - inner->frame().width();
                grow > 0) {
                widen(*inner, grow);
            }
        }
        const double delta = PaneLayoutFitter::neededWidth(*control) - control->frame().width();
        if (delta <= 0 || isRightAlignedLabel(*control)) {
            continue;
        }
        shiftRightOf(container, control->frame().maxX(), delta, control);
        widen(*control, delta);
    }
}

// Controls that stood in one column before their rows grew stand in one column again, at the
// rightmost place one of them was carried to.
void realignColumns(View& container, const std::map<const View*, double>& startedAt)
{
    std::map<double, std::vector<View*>> columns;
    for (const auto& subview : container.subviews()) {
        columns[startedAt.at(subview.get())].push_back(subview.get());
    }
    for (auto& [x, column] : columns) {
        double target = x;
        for (const View* control : column) {
            target = std::max(target, control->frame().minX());
        }
        for (View* control : column) {
            if (const double delta = target - control->frame().minX(); delta > slack) {
                shiftRightOf(container, control->frame().minX(), delta, control);
            }
        }
    }
}

} // namespace

double PaneLayoutFitter::neededWidth(const View& view)
{
    const double own = view.frame().width();
    if (view.isHidden()) {
        return own;
    }
    if (const auto* button = dynamic_cast<const Button*>(&view)) {
        const double chrome =
            button->kind() == Button::Kind::CheckBox ? checkBoxChrome : pushButtonChrome;
        return button->title().empty() ? own : textWidth(button->title()) + chrome;
    }
    if (const auto* popUp = dynamic_cast<const PopUpButton*>(&view)) {
        double widest = 0;
        for (int index = 0; index < popUp->numberOfItems(); ++index) {
            widest = std::max(widest, textWidth(popUp->itemAtIndex(index)->title()));
            if (popUp->pullsDown()) {
                break; // a pull-down shows only its title
            }
        }
        return widest + popUpChrome;
    }
    if (const auto* field = dynamic_cast<const TextField*>(&view)) {
        return field->isEditable() || field->stringValue().empty()
                   ? own
                   : textWidth(field->stringValue()) + labelChrome;
    }
    // A box around controls needs what its widest control needs beyond its own start.
    double needed = own;
    for (const auto& subview : view.subviews()) {
        needed = std::max(needed, subview->frame().minX() + neededWidth(*subview));
    }
    return needed;
}

double PaneLayoutFitter::fit(View& container)
{
    if (!Application::shared().measuresText()) {
        return 0;
    }
    fitLabelColumns(container);
    std::map<const View*, double> startedAt;
    for (const auto& subview : container.subviews()) {
        startedAt[subview.get()] = subview->frame().minX();
    }
    fitRows(container);
    realignColumns(container, startedAt);
    double right = 0;
    for (const auto& subview : container.subviews()) {
        right = std::max(right, subview->frame().maxX());
    }
    return right + rightMargin;
}

} // namespace vexto
