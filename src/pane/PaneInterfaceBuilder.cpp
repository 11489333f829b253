#include "pane/PaneInterfaceBuilder.hpp"

#include "foundation/ProductInfo.hpp"
#include "hotkeys/KRVXHotKeyClearButton.hpp"
#include "hotkeys/KRVXHotKeyTextView.hpp"
#include "pane/PaneControlTable.hpp"
#include "pane/PaneLayoutFitter.hpp"
#include "toolkit/Button.hpp"
#include "toolkit/ColorWell.hpp"
#include "toolkit/PopUpButton.hpp"
#include "toolkit/Slider.hpp"
#include "toolkit/TabView.hpp"
#include "toolkit/TextField.hpp"
#include "widgets/KRVXGradientColorWell.hpp"
#include "widgets/KRVXHeaderTextField.hpp"
#include "widgets/KRVXHeaderView.hpp"
#include "widgets/KRVXLinkTextField.hpp"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <vector>

namespace vexto {

namespace {

constexpr double mainViewHeight = 720;
constexpr double tabViewHeight = 660;
constexpr double rowStep = 28;
constexpr double controlHeight = 22;
constexpr double leftMargin = 20;
constexpr double labelWidth = 230;
constexpr double fieldX = leftMargin + labelWidth + 8;

struct Item {
    const char* title;
    int tag;
};

// Pop-up items: delays in milliseconds and screens are tags; positions and follow-ups are indices.
const std::initializer_list<Item> panelDelays = {
    {"No delay", 0},      {"0.1 seconds", 100},  {"0.2 seconds", 200}, {"0.3 seconds", 300},
    {"0.5 seconds", 500}, {"0.75 seconds", 750}, {"1 second", 1000}};
const std::initializer_list<Item> panelScreens = {{"the main screen", 0},
                                                  {"the screen with the mouse pointer", 1}};
const std::initializer_list<Item> itemPositions = {{"at the top", 0}, {"at the bottom", 1}};
const std::initializer_list<Item> sortOrders = {
    {"by name", 0}, {"by launch date", 1}, {"by number of windows", 2}, {"by most recent use", 3}};
const std::initializer_list<Item> iconModes = {
    {"no icons", 0}, {"application icons", 1}, {"application and window icons", 2}};
const std::initializer_list<Item> followUps = {{"nothing", 0},
                                               {"the same application", 1},
                                               {"the next window", 2},
                                               {"the previous window", 3}};
const std::initializer_list<Item> previewDelays = {{"immediately", 0},
                                                   {"0.5 seconds", 500},
                                                   {"1 second", 1000},
                                                   {"2 seconds", 2000},
                                                   {"3 seconds", 3000}};

// Places controls row by row from the top of a container, each pinned to the top edge.
class Page {
public:
    Page(View& view, const PaneInterfaceBuilder::Localizer& localized, ActionTarget* target)
        : view_(view), localized_(localized), target_(target), y_(view.frame().height() - 16)
    {}

    // The bottom of the next row.
    double nextRow(double height = controlHeight)
    {
        y_ -= rowStep + (height - controlHeight);
        return y_;
    }
    void skip(double points) { y_ -= points; }

    template <typename T> T* place(std::shared_ptr<T> view, Rect frame)
    {
        view->setFrame(frame);
        view->setAutoresizingMask(View::MinYMargin);
        view_.addSubview(view);
        return view.get();
    }

    TextField* label(std::string_view text, Rect frame,
                     TextAlignment alignment = TextAlignment::Right)
    {
        auto field = std::make_shared<TextField>();
        field->setStringValue(localized_(text));
        field->setAlignment(alignment);
        return place(field, frame);
    }

    Button* checkBox(std::string_view title, Rect frame, bool allowsMixed = false)
    {
        auto box = std::make_shared<Button>(Rect{}, Button::Kind::CheckBox);
        box->setTitle(localized_(title));
        box->setAllowsMixedState(allowsMixed);
        return place(box, frame);
    }

    PopUpButton* popUp(std::initializer_list<Item> items, Rect frame)
    {
        auto popUp = std::make_shared<PopUpButton>();
        for (const Item& item : items) {
            popUp->addItemWithTitle(localized_(item.title)).setTag(item.tag);
        }
        return place(popUp, frame);
    }

    PopUpButton* pullDown(std::string_view title, std::string action, Rect frame)
    {
        auto pullDown = std::make_shared<PopUpButton>(Rect{}, true);
        pullDown->addItemWithTitle(localized_(title));
        pullDown->setTarget(target_);
        pullDown->setAction(std::move(action));
        return place(pullDown, frame);
    }

    // Every well is a gradient well, so that activating one without a shading to set takes
    // the selection's gradient strip off the colour panel.
    KRVXGradientColorWell* well(Rect frame)
    {
        return place(std::make_shared<KRVXGradientColorWell>(), frame);
    }

    Slider* slider(double minValue, double maxValue, Rect frame)
    {
        return place(std::make_shared<Slider>(Rect{}, minValue, maxValue), frame);
    }

    View& view() const { return view_; }
    const PaneInterfaceBuilder::Localizer& localized() const { return localized_; }
    ActionTarget* target() const { return target_; }

private:
    View& view_;
    const PaneInterfaceBuilder::Localizer& localized_;
    ActionTarget* target_;
    double y_;
};

Rect labelFrame(double y)
{
    return Rect(leftMargin, y, labelWidth, controlHeight);
}
Rect controlFrame(double y, double width, double x = fieldX)
{
    return Rect(x, y, width, controlHeight);
}

struct HotKeyRow {
    const char* title;
    KRVXHotKeyTextView** forward;
    KRVXHotKeyTextView** backward; // none for the actions without a direction
};

KRVXHotKeyTextView* hotKeyField(Page& page, Rect frame)
{
    auto field = std::make_shared<KRVXHotKeyTextView>();
    field->setEditable(false);
    auto* view =
        page.place(field, Rect(frame.minX(), frame.minY(), frame.width() - 22, frame.height()));
    auto clear = std::make_shared<KRVXHotKeyClearButton>();
    clear->setTarget(field.get());
    clear->setAction("delete:");
    view->setDeleteButton(page.place(clear, Rect(frame.maxX() - 18, frame.minY() + 3, 16, 16)));
    return view;
}

void buildTriggers(Page& page, PaneOutlets& o)
{
    constexpr double wideLabel = 290;
    constexpr double firstField = leftMargin + wideLabel + 8;
    constexpr double fieldWidth = 160;
    constexpr double secondField = firstField + fieldWidth + 12;
    const auto label = [&](const char* title, double y) {
        page.label(title, Rect(leftMargin, y, wideLabel, controlHeight));
    };
    double y = page.nextRow();
    // The title row of the page, on its header strip.
    constexpr double stripMargin = 6;
    View* strip =
        page.place(std::make_shared<KRVXHeaderView>(),
                   Rect(firstField - stripMargin, y - 3,
                        secondField + fieldWidth - firstField + stripMargin, controlHeight + 6));
    for (const auto& [title, x] : {std::pair{"Forward", firstField}, {"Backward", secondField}}) {
        auto header = std::make_shared<KRVXHeaderTextField>(
            Rect(x - firstField + stripMargin, 3, fieldWidth, controlHeight));
        header->setStringValue(page.localized()(title));
        header->setAlignment(TextAlignment::Center);
        header->setTextColor(Color::calibratedWhite(0.15f, 1));
        header->setTag(-1); // dark titles need no shadow below them
        strip->addSubview(header);
    }
    const HotKeyRow cycles[] = {
        {"All windows:", &o.allForwardTextView, &o.allBackwardTextView},
        {"Non-minimized windows:", &o.normalForwardTextView, &o.normalBackwardTextView},
        {"Minimized windows:", &o.minimizedForwardTextView, &o.minimizedBackwardTextView},
        {"Frontmost application, all windows:", &o.frontmostAllForwardTextView,
         &o.frontmostAllBackwardTextView},
        {"Frontmost application, non-minimized:", &o.frontmostNormalForwardTextView,
         &o.frontmostNormalBackwardTextView},
        {"Frontmost application, minimized:", &o.frontmostMinimizedForwardTextView,
         &o.frontmostMinimizedBackwardTextView},
    };
    for (const HotKeyRow& row : cycles) {
        y = page.nextRow();
        label(row.title, y);
        *row.forward = hotKeyField(page, controlFrame(y, fieldWidth, firstField));
        *row.backward = hotKeyField(page, controlFrame(y, fieldWidth, secondField));
        (*row.forward)->setTitle(row.title);
        (*row.backward)->setTitle(row.title);
    }
    page.skip(12);
    const HotKeyRow additional[] = {
        {"Zoom the frontmost window:", &o.zoomFrontmostTextView, nullptr},
        {"Minimize the frontmost window:", &o.minimizeFrontmostTextView, nullptr},
        {"Close the frontmost window:", &o.closeFrontmostTextView, nullptr},
        {"Deminimize all windows:", &o.deminimizeAllMinimizedTextView, nullptr},
        {"Deminimize the frontmost application:",
         &o.deminimizeFrontmostApplicationMinimizedTextView, nullptr},
        {"Close all minimized windows:", &o.closeAllMinimizedTextView, nullptr},
        {"Close the frontmost application's minimized:",
         &o.closeFrontmostApplicationMinimizedTextView, nullptr},
    };
    for (const HotKeyRow& row : additional) {
        y = page.nextRow();
        label(row.title, y);
        *row.forward = hotKeyField(page, controlFrame(y, fieldWidth, firstField));
        (*row.forward)->setTitle(row.title);
    }
}

void buildPanel(Page& page, PaneOutlets& o)
{
    double y = page.nextRow();
    page.label("Show the panel after:", labelFrame(y));
    o.panelDelayPopUpButton = page.popUp(panelDelays, controlFrame(y, 180));
    y = page.nextRow();
    page.label("Show the panel on:", labelFrame(y));
    o.panelScreenPopUpButton = page.popUp(panelScreens, controlFrame(y, 260));
    y = page.nextRow();
    o.addActivateItemButton = page.checkBox("Add an activation item", controlFrame(y, 230));
    o.addActivateItemPopUpButton = page.popUp(itemPositions, controlFrame(y, 140, fieldX + 240));
    y = page.nextRow();
    o.addCancelItemButton = page.checkBox("Add a cancellation item", controlFrame(y, 230));
    o.addCancelItemPopUpButton = page.popUp(itemPositions, controlFrame(y, 140, fieldX + 240));
    y = page.nextRow();
    o.activateOnNoModifiersButton = page.checkBox(
        "Activate the selection when all modifier keys are released", controlFrame(y, 380));
    y = page.nextRow();
    o.initiallySelectNextWindowButton =
        page.checkBox("Select the next window at once", controlFrame(y, 380));
    y = page.nextRow();
    o.wrapAroundScrollingButton = page.checkBox("Wrap around at either end", controlFrame(y, 380));
    y = page.nextRow();
    page.label("Sort applications:", labelFrame(y));
    o.applicationsSortOrderPopUpButton = page.popUp(sortOrders, controlFrame(y, 200));
    o.invertApplicationsSortOrderButton =
        page.checkBox("Reverse", controlFrame(y, 120, fieldX + 210));
    y = page.nextRow();
    o.showApplicationNamesButton = page.checkBox("Show application names", controlFrame(y, 380));
    y = page.nextRow();
    page.label("Show:", labelFrame(y));
    o.iconModePopUpButton = page.popUp(iconModes, controlFrame(y, 240));
    y = page.nextRow();
    // In a box of its own, which hides when no icons are shown.
    auto overlayBox = std::make_shared<View>();
    View* box = page.place(overlayBox, controlFrame(y, 380));
    auto overlays =
        std::make_shared<Button>(Rect(0, 0, 380, controlHeight), Button::Kind::CheckBox);
    overlays->setTitle(page.localized()("Show document icon overlays"));
    box->addSubview(overlays);
    o.showDocumentIconOverlaysButton = overlays.get();
    y = page.nextRow();
    o.showShortcutBadgesButton = page.checkBox("Show shortcut badges", controlFrame(y, 380));
    y = page.nextRow();
    o.showQuickLookButton = page.checkBox("Show previews after:", controlFrame(y, 200));
    o.quickLookDelayPopUpButton = page.popUp(previewDelays, controlFrame(y, 160, fieldX + 210));
    y = page.nextRow();
    o.switchAcrossSpacesButton = page.checkBox("Switch across Spaces", controlFrame(y, 380));
    y = page.nextRow();
    o.showSpaceBadgesButton = page.checkBox("Show Space badges", controlFrame(y, 380), true);
}

// The row's label without its colon ("Background:" gives "Background", "Fond :" gives "Fond").
std::string wellTitle(std::string label)
{
    while (!label.empty() && (label.back() == ':' || label.back() == ' ')) {
        label.pop_back();
    }
    return label;
}

struct WellRow {
    const char* title;
    ColorWell** well;
    TextField** label = nullptr;
    bool shaded = false;
};

void buildAppearance(Page& page, PaneOutlets& o, KRVXGradientColorWellDelegate* gradientDelegate)
{
    double y = page.nextRow();
    page.label("Layout:", labelFrame(y));
    o.layoutPresetsPopUpButton =
        page.pullDown("Layouts", "chooseLayoutPresets:", controlFrame(y, 220));
    o.layoutPresetsPopUpButton->addItemWithTitle(page.localized()("Default Appearance"));
    y = page.nextRow();
    page.label("Font:", labelFrame(y));
    o.fontsPopUpButton = page.pullDown("Font: Default", {}, controlFrame(y, 220));
    // Room that older systems give up when they move the sliders up with the Spaces rows gone.
    page.skip(PaneInterfaceBuilder::sliderRowsShift);
    y = page.nextRow();
    o.maximumTextSizeTextField = page.label("", labelFrame(y));
    o.maximumTextSizeSlider = page.slider(12, 128, controlFrame(y, 260));
    y = page.nextRow();
    o.maximumPaneWidthTextField = page.label("", labelFrame(y));
    // Widths below 0.01 mean "as wide as needed", and 0.01 itself is stored in single precision
    // just below that bound: the narrow end stays clear of it.
    o.maximumPaneWidthSlider = page.slider(0.05, 1, controlFrame(y, 260));
    page.skip(8);
    const WellRow wells[] = {
        {"Background:", &o.backgroundColorWell},
        {"Selection:", &o.selectionColorWell, nullptr, true},
        {"Selection border:", &o.selectionBorderColorWell},
        {"Application names:", &o.applicationNameColorWell},
        {"Window names:", &o.windowNameColorWell},
        {"Selected window name:", &o.selectionWindowNameColorWell},
        {"Dock indicator border:", &o.dockIndicatorBorderColorWell},
        {"Shortcut badges:", &o.keyBadgeColorWell},
        {"Preview border:", &o.quickLookBorderColorWell},
        {"Space badges:", &o.spaceBadgeColorWell, &o.spaceBadgeColorLabel},
    };
    for (const WellRow& row : wells) {
        y = page.nextRow();
        TextField* label = page.label(row.title, labelFrame(y));
        if (row.label != nullptr) {
            *row.label = label;
        }
        KRVXGradientColorWell* well = page.well(controlFrame(y, 52));
        if (row.shaded) {
            well->setGradientDelegate(gradientDelegate);
        }
        *row.well = well;
        (*row.well)->setTitle(wellTitle(label->stringValue()));
    }
    // Exactly one Spaces row lower: older systems move the box up into the hidden row.
    y = page.nextRow(controlHeight + PaneInterfaceBuilder::spacesRowHeight - rowStep);
    o.panelShadowButton = page.checkBox("Panel shadow", controlFrame(y, 180));
    y = page.nextRow();
    o.applicationNameShadowButton = page.checkBox("Application name shadow", controlFrame(y, 190));
    o.windowNameShadowButton =
        page.checkBox("Window name shadow", controlFrame(y, 180, fieldX + 200));
}

TextField* exceptionsField(Page& page, Rect frame)
{
    auto field = std::make_shared<TextField>();
    field->setEditable(true);
    field->setBordered(true);
    field->setPlaceholder(page.localized()("Names separated by commas"));
    return page.place(field, frame);
}

void buildWindows(Page& page, PaneOutlets& o)
{
    double y = page.nextRow();
    page.label("After zooming a window, select:", labelFrame(y));
    o.afterZoomingPopUpButton = page.popUp(followUps, controlFrame(y, 220));
    y = page.nextRow();
    page.label("After minimizing a window, select:", labelFrame(y));
    o.afterMinimizingPopUpButton = page.popUp(followUps, controlFrame(y, 220));
    y = page.nextRow();
    page.label("After closing a window, select:", labelFrame(y));
    o.afterClosingPopUpButton = page.popUp(followUps, controlFrame(y, 220));
    y = page.nextRow();
    o.processWindowsWhenDoneButton =
        page.checkBox("Zoom, minimize and close only when the panel closes", controlFrame(y, 380));
    page.skip(8);
    y = page.nextRow();
    page.label("Leave out applications:", labelFrame(y));
    o.applicationExceptionsTextField = exceptionsField(page, controlFrame(y, 360));
    o.applicationExceptionsTextField->setToolTip(
        page.localized()("Names of applications, separated by commas, that the panel leaves out."));
    y = page.nextRow();
    page.label("Leave out windows named:", labelFrame(y));
    o.windowExceptionsTextField = exceptionsField(page, controlFrame(y, 360));
    o.windowExceptionsTextField->setToolTip(
        page.localized()("Window titles, separated by commas, that the panel leaves out."));
    page.skip(8);
    y = page.nextRow();
    page.label("Wait for unresponsive applications:", labelFrame(y));
    o.timeoutSlider = page.slider(0.05, 1.0, controlFrame(y, 220));
    o.timeoutSliderValueTextField =
        page.label("", controlFrame(y, 140, fieldX + 230), TextAlignment::Left);
}

void buildAbout(Page& page, PaneOutlets& o)
{
    double y = page.nextRow();
    auto updates = std::make_shared<Button>(Rect{}, Button::Kind::CheckBox);
    updates->setTitle(page.localized()("Check for updates automatically"));
    updates->setTarget(page.target());
    updates->setAction("toggleAutomaticChecking:");
    o.autoUpdateCheckingSwitch = page.place(updates, controlFrame(y, 300, leftMargin));
    auto checkNow = std::make_shared<Button>();
    checkNow->setTitle(page.localized()("Check Now"));
    checkNow->setTarget(page.target());
    checkNow->setAction("checkForUpdates:");
    o.checkNowButton = page.place(checkNow, controlFrame(y, 140, leftMargin + 320));
    y = page.nextRow();
    o.statusTextField = page.label("", controlFrame(y, 600, leftMargin), TextAlignment::Left);
    y = page.nextRow();
    o.statusDateTextField = page.label("", controlFrame(y, 600, leftMargin), TextAlignment::Left);
    page.skip(12);
    y = page.nextRow();
    o.aboutTextField = page.label("", controlFrame(y, 400, leftMargin), TextAlignment::Left);
    y = page.nextRow();
    o.feedbackTextField =
        page.place(std::make_shared<KRVXLinkTextField>(), controlFrame(y, 400, leftMargin));
    y = page.nextRow();
    auto productPage = std::make_shared<Button>();
    productPage->setTitle(page.localized()("Visit the Vexto Website"));
    productPage->setTarget(page.target());
    productPage->setAction("visitProductPage:");
    productPage->setToolTip(std::string(product::homePageAddress));
    o.productPageButton = page.place(productPage, controlFrame(y, 220, leftMargin));
}

} // namespace

PaneInterfaceBuilder::PaneInterfaceBuilder(Localizer localized, ActionTarget* target,
                                           TextFieldDelegate* textDelegate,
                                           KRVXGradientColorWellDelegate* gradientDelegate)
    : localized_(std::move(localized)), target_(target), textDelegate_(textDelegate),
      gradientDelegate_(gradientDelegate)
{}

std::shared_ptr<View> PaneInterfaceBuilder::build(PaneOutlets& o) const
{
    auto main = std::make_shared<View>(Rect(0, 0, paneWidth, mainViewHeight));
    o.mainView = main.get();
    Page top(*main, localized_, target_);
    const double y = top.nextRow(24);
    auto enable = std::make_shared<Button>(Rect{}, Button::Kind::Toggle);
    enable->setTitle(localized_("Enable Vexto"));
    enable->setTarget(target_);
    enable->setAction("enable:");
    enable->setToolTip(localized_("Starts or stops the Vexto daemon, which does the cycling. "
                                  "It keeps running after this window closes."));
    o.enableButton = top.place(enable, Rect(leftMargin, y, 160, 24));
    constexpr double helpSide = 26;
    o.warningTextField = top.place(std::make_shared<KRVXLinkTextField>(),
                                   Rect(200, y, paneWidth - 240 - helpSide, 24));
    auto help = std::make_shared<Button>();
    help->setTitle("?");
    help->setTarget(target_);
    help->setAction("help:");
    help->setToolTip(localized_("Vexto Help"));
    o.helpButton = top.place(help, Rect(paneWidth - leftMargin - helpSide, y, helpSide, 24));
    o.helpButton->setAutoresizingMask(View::MinXMargin | View::MinYMargin);

    auto tabs = std::make_shared<TabView>(Rect(0, 0, paneWidth, tabViewHeight));
    tabs->setAutoresizingMask(View::WidthSizable | View::HeightSizable);
    main->addSubview(tabs);
    o.settingsTabView = tabs.get();

    struct Tab {
        const char* identifier;
        const char* label;
        std::function<void(Page&)> build;
    };
    const Tab pages[] = {
        {"triggers", "Hot Keys",
         [&](Page& page) {
             buildTriggers(page, o);
         }},
        {"panel", "Panel",
         [&](Page& page) {
             buildPanel(page, o);
         }},
        {"appearance", "Appearance",
         [&](Page& page) {
             buildAppearance(page, o, gradientDelegate_);
         }},
        {"windows", "Windows",
         [&](Page& page) {
             buildWindows(page, o);
         }},
        {"about", "Updates & About",
         [&](Page& page) {
             buildAbout(page, o);
         }},
    };
    double width = paneWidth;
    for (const Tab& tab : pages) {
        auto content = std::make_shared<View>(tabs->contentRect());
        Page page(*content, localized_, target_);
        tab.build(page);
        width = std::max(width, PaneLayoutFitter::fit(*content));
        tabs->addTabViewItem(
            std::make_shared<TabViewItem>(tab.identifier, localized_(tab.label), content));
    }
    // Wider than usual only when a language's texts need it.
    main->setFrameSize(Size{std::ceil(width), mainViewHeight});
    // What each control stores, and so which action it sends, is the control table's.
    PaneControlTable::bindActions(o, target_, textDelegate_);
    return main;
}

} // namespace vexto
