#include "qt/QtPopUpMirror.hpp"

#include "qt/QtCanvas.hpp"
#include "qt/QtFonts.hpp"
#include "toolkit/Image.hpp"
#include "toolkit/PopUpButton.hpp"

#include <QComboBox>
#include <QFontDatabase>
#include <QIcon>
#include <QMenu>
#include <QPainter>
#include <QPixmap>
#include <QPushButton>

#include <functional>

namespace vexto {

namespace {

// A combo box that tells the model before its list opens.
class OpeningComboBox final : public QComboBox {
public:
    OpeningComboBox(QWidget* parent, std::function<void()> willOpen)
        : QComboBox(parent), willOpen_(std::move(willOpen))
    {}

    void showPopup() override
    {
        willOpen_();
        QComboBox::showPopup();
    }

private:
    std::function<void()> willOpen_;
};

// The item's image, drawn at twice its size so that it stays sharp on a dense screen.
QIcon iconFor(const Image& image)
{
    const Size size = image.size();
    QImage pixels(std::max(1, static_cast<int>(size.width * 2)),
                  std::max(1, static_cast<int>(size.height * 2)),
                  QImage::Format_ARGB32_Premultiplied);
    pixels.setDevicePixelRatio(2.0);
    pixels.fill(Qt::transparent);
    QPainter painter(&pixels);
    QtCanvas canvas(painter, size.height);
    canvas.drawImage(image, Rect(0, 0, size.width, size.height), CompositingOperation::SourceOver,
                     1.0);
    painter.end();
    return QIcon(QPixmap::fromImage(pixels));
}

QWidget* makeWidget(PopUpButton& popUp, QWidget* parent)
{
    if (popUp.pullsDown()) {
        auto* button = new QPushButton(parent);
        button->setMenu(new QMenu(button));
        return button;
    }
    return new OpeningComboBox(parent, [&popUp] { popUp.willOpenMenu(); });
}

} // namespace

QtPopUpMirror::QtPopUpMirror(std::shared_ptr<PopUpButton> popUp, QWidget* parent)
    : QtViewMirror(popUp, makeWidget(*popUp, parent)), popUp_(*popUp)
{
    if (auto* combo = qobject_cast<QComboBox*>(widget())) {
        QObject::connect(combo, &QComboBox::activated, combo, [this](int index) {
            if (MenuItem* item = popUp_.itemAtIndex(index); item != nullptr && !pushing_) {
                popUp_.userDidChooseItem(*item);
            }
        });
        return;
    }
    auto* button = static_cast<QPushButton*>(widget());
    QMenu* qtMenu = button->menu();
    QObject::connect(qtMenu, &QMenu::aboutToShow, qtMenu, [this, qtMenu] {
        popUp_.willOpenMenu();
        qtMenu->clear();
        fillQtMenu(*qtMenu, popUp_.menu(), 1);
    });
}

void QtPopUpMirror::fillQtMenu(QMenu& qtMenu, const Menu& menu, int firstIndex)
{
    for (int i = firstIndex; i < menu.numberOfItems(); ++i) {
        const std::shared_ptr<MenuItem> item = menu.sharedItemAtIndex(i);
        if (item->isSeparatorItem()) {
            qtMenu.addSeparator();
            continue;
        }
        const QString title = plainTitle(item->title());
        QAction* action = nullptr;
        if (item->submenu()) {
            QMenu* sub = qtMenu.addMenu(title);
            fillQtMenu(*sub, *item->submenu(), 0);
            action = sub->menuAction();
        } else {
            action = qtMenu.addAction(title);
        }
        action->setEnabled(item->isEnabled());
        action->setCheckable(item->state() != 0);
        action->setChecked(item->state() != 0);
        // A one-point image only evens out the items' heights where the platform needs it; as an
        // icon it would take the place where a ticked item shows its tick.
        if (item->image() && item->image()->size().width > 1 && item->image()->size().height > 1) {
            action->setIcon(iconFor(*item->image()));
        }
        // A name is drawn in its own face unless that face draws symbols instead of letters.
        if (item->attributedTitleFont()) {
            const QFont font = QtFonts::qtFont(*item->attributedTitleFont());
            if (!QFontDatabase::writingSystems(font.family()).contains(QFontDatabase::Symbol)) {
                action->setFont(font);
            }
        }
        if (item->submenu()) {
            continue; // chosen through its submenu
        }
        std::weak_ptr<MenuItem> weak = item;
        QObject::connect(action, &QAction::triggered, widget(), [this, weak] {
            if (auto chosen = weak.lock()) {
                popUp_.userDidChooseItem(*chosen);
            }
        });
    }
}

void QtPopUpMirror::syncAll()
{
    widget()->setEnabled(popUp_.isEnabled());
    if (popUp_.pullsDown()) {
        syncPullDownTitle();
    } else {
        syncComboBox();
    }
}

void QtPopUpMirror::syncPullDownTitle()
{
    static_cast<QPushButton*>(widget())->setText(plainTitle(popUp_.title()));
}

void QtPopUpMirror::syncComboBox()
{
    auto* combo = static_cast<QComboBox*>(widget());
    const QSignalBlocker block(combo);
    combo->clear();
    const Menu& menu = popUp_.menu();
    for (int i = 0; i < menu.numberOfItems(); ++i) {
        const MenuItem& item = *menu.itemAtIndex(i);
        if (item.isSeparatorItem()) {
            combo->insertSeparator(i);
            continue;
        }
        combo->addItem(QString::fromStdString(item.title()));
        if (item.attributedTitleFont()) {
            combo->setItemData(i, QtFonts::qtFont(*item.attributedTitleFont()), Qt::FontRole);
        }
    }
    combo->setCurrentIndex(popUp_.indexOfSelectedItem());
}

} // namespace vexto
