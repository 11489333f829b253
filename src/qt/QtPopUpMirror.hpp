#pragma once

#include "qt/QtViewMirror.hpp"

class QMenu;

namespace vexto {

class Menu;
class PopUpButton;

// Pop-ups as QComboBox, pull-downs as a push button with a QMenu (item 0 is the title).
// Opening either lets the model's menu delegate rebuild the menu first; choosing an item runs
// the model's choice, which sends the item's action or the button's.
class QtPopUpMirror final : public QtViewMirror {
public:
    QtPopUpMirror(std::shared_ptr<PopUpButton> popUp, QWidget* parent);

protected:
    void syncAll() override;

private:
    void syncComboBox();
    void syncPullDownTitle();
    void fillQtMenu(QMenu& qtMenu, const Menu& menu, int firstIndex);

    PopUpButton& popUp_;
};

} // namespace vexto
