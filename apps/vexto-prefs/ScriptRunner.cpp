#include "ScriptRunner.hpp"

#include "JsonDescriptions.hpp"
#include "KeyCombination.hpp"
#include "PaneHost.hpp"
#include "ScriptedAlerts.hpp"
#include "foundation/DictionaryExtensions.hpp"
#include "foundation/HomeDirectory.hpp"
#include "foundation/NumericText.hpp"
#include "foundation/TextEncoding.hpp"
#include "ports/RunLoop.hpp"
#include "toolkit/Application.hpp"
#include "toolkit/Button.hpp"
#include "toolkit/ColorPanel.hpp"
#include "toolkit/ColorWell.hpp"
#include "toolkit/PopUpButton.hpp"
#include "toolkit/PreferencePane.hpp"
#include "toolkit/Slider.hpp"
#include "toolkit/TabView.hpp"
#include "toolkit/TextField.hpp"
#include "toolkit/Window.hpp"

namespace vexto {

namespace {

bool fail(std::string& error, std::string message)
{
    error = std::move(message);
    return false;
}

} // namespace

ScriptRunner::ScriptRunner(PaneHost& host, RunLoop& runLoop, ScriptedAlerts& alerts, std::FILE* out,
                           std::FILE* errors)
    : host_(host), runLoop_(runLoop), alerts_(alerts), out_(out), errors_(errors)
{}

std::optional<std::vector<std::string>> ScriptRunner::words(std::string_view line,
                                                            std::string& error)
{
    std::vector<std::string> result;
    std::string word;
    bool inWord = false;
    bool quoted = false;
    for (std::size_t i = 0; i < line.size(); ++i) {
        const char c = line[i];
        if (quoted) {
            if (c == '\\' && i + 1 < line.size() && (line[i + 1] == '"' || line[i + 1] == '\\')) {
                word += line[++i];
            } else if (c == '"') {
                quoted = false;
            } else {
                word += c;
            }
        } else if (c == '"') {
            quoted = true;
            inWord = true;
        } else if (c == '#') {
            break;
        } else if (c == ' ' || c == '\t' || c == '\r') {
            if (inWord) {
                result.push_back(std::move(word));
                word.clear();
                inWord = false;
            }
        } else {
            word += c;
            inWord = true;
        }
    }
    if (quoted) {
        error = "a quote is not closed";
        return std::nullopt;
    }
    if (inWord) {
        result.push_back(std::move(word));
    }
    return result;
}

// One line, of which at most one character more than the longest acceptable is kept, so that a
// script without line breaks cannot fill the memory.
bool ScriptRunner::readLine(std::FILE* script, std::string& line)
{
    line.clear();
    int c = 0;
    bool any = false;
    while ((c = std::getc(script)) != EOF) {
        any = true;
        if (c == '\n') {
            return true;
        }
        if (line.size() <= maximumLineLength) {
            line += static_cast<char>(c);
        }
    }
    return any;
}

void ScriptRunner::printLine(const std::string& text)
{
    std::fwrite(text.data(), 1, text.size(), out_);
    std::fputc('\n', out_);
}

int ScriptRunner::run(std::FILE* script)
{
    std::string line;
    int lineNumber = 0;
    while (!quit_ && readLine(script, line)) {
        ++lineNumber;
        std::string error;
        std::optional<Words> parsed;
        if (line.size() > maximumLineLength) {
            error = "longer than " + std::to_string(maximumLineLength) + " characters";
        } else {
            parsed = words(line, error);
        }
        if (!parsed || (!parsed->empty() && !runCommand(*parsed, error))) {
            std::fflush(out_);
            std::fprintf(errors_, "script line %d: %s\n", lineNumber, error.c_str());
            host_.unselect();
            return 2;
        }
        std::fflush(out_);
    }
    host_.unselect();
    return 0;
}

View* ScriptRunner::outlet(const std::string& name, std::string& error) const
{
    View* view = host_.pane().outletNamed(name);
    if (view == nullptr) {
        fail(error, "no outlet named " + name);
    }
    return view;
}

template <typename Kind>
Kind* ScriptRunner::outletOfKind(const std::string& name, const char* kind,
                                 std::string& error) const
{
    View* view = outlet(name, error);
    auto* found = dynamic_cast<Kind*>(view);
    if (view != nullptr && found == nullptr) {
        fail(error, name + " is not " + kind);
    }
    return found;
}

std::span<const ScriptCommand> ScriptRunner::commands()
{
    using R = ScriptRunner;
    static const ScriptCommand table[] = {
        {"select-tab", "ID", 1,
         "selects the settings tab (`triggers`, `panel`, `appearance`, `windows`, `about`) through "
         "the tab view",
         &R::selectTab},
        {"click", "OUTLET", 1,
         "clicks a button, check box or colour well; on a field with a button inside (a link's "
         "arrow), presses and releases that button through the window",
         &R::click},
        {"hover", "OUTLET", 1,
         "moves the mouse over the button inside a field (it lights up when the field has an "
         "action)",
         &R::hover},
        {"set-state", "OUTLET N", 2, "sets a button's state (-1, 0, 1) and sends its action",
         &R::setState},
        {"choose", "OUTLET index=N|tag=N|title=\"T\"", 2,
         "opens the pop-up (menus built on demand are built), chooses the item, sends its action",
         &R::choose},
        {"choose-submenu", "OUTLET \"Item\" \"Subitem\"", 3, "chooses an item inside a submenu",
         &R::chooseSubmenu},
        {"slide", "OUTLET VALUE", 2, "moves a slider and sends its action as a drag would",
         &R::slide},
        {"gradient", "OUTLET VALUE", 2,
         "clicks the colour well unless it is active, then drags the gradient slider on the "
         "colour panel's strip to VALUE (values of 1 to 7 either way snap)",
         &R::setGradient},
        {"click-strip", "left|right|middle|X", 1,
         "clicks the colour panel's gradient strip near an end, in its middle or X points from its "
         "left edge (only the end squares, as wide as the strip is high, take clicks)",
         &R::clickStrip},
        {"type", "OUTLET \"TEXT\"", 2,
         "replaces a text field's text one character at a time, telling the pane after each",
         &R::type},
        {"key", "OUTLET COMBO", 2,
         "focuses a field and presses COMBO: modifiers `cmd opt ctrl shift fn caps` (or `lcmd "
         "rcmd lopt ropt lctrl rctrl lshift rshift`) joined by `+`, then `keycode=N` or a key name "
         "(`a`-`z`, `0`-`9`, `space`, `tab`, `return`, `escape`, `delete`, `f1`-`f19`, `left right "
         "up down`)",
         &R::press},
        {"clear", "OUTLET", 1, "presses a hot-key field's clear button", &R::clear},
        {"answer", "default|alternate|other", 1, "the answer to the next alert", &R::answer},
        {"answer-file", "PATH|cancel", 1,
         "the answer to the next open or save panel (`~` is the pane's home; a save panel adds "
         "the file type when the name has none; with no answer queued a panel is cancelled)",
         &R::answerFile},
        {"wait", "SECONDS", 1, "runs the run loop for that long (delayed saves happen meanwhile)",
         &R::wait},
        {"unselect", "", 0, "leaves the pane, as closing its window does", &R::unselect},
        {"select", "", 0, "selects the pane again", &R::select},
        {"revert", "", 0, "reverts the settings to the defaults", &R::revert},
        {"print-setting", "\"KEY\"", 1,
         "`{\"setting\":\"KEY\",\"value\":V}` from the pane's settings in memory; absent keys "
         "give `null`; data reads `{\"data\":\"BASE64\"}` with `\"color\":\"<color ...>\"` added "
         "for archived colours",
         &R::printSetting},
        {"print-saved-setting", "\"KEY\"", 1,
         "the same, read from the settings file on disk (shows what has been saved so far)",
         &R::printSavedSetting},
        {"print-control", "OUTLET", 1,
         "the control's class, state, enabled, hidden, frame `[x,y,w,h]` (unflipped), text, "
         "selection and menu items, and a `notice` while one is shown beside it (why a hot key "
         "was refused); for a field with a button inside, the button's tracked frame "
         "(`actionButton`) and tool tip, and a link field's `link`",
         &R::printControl},
        {"print-window", "", 0, "the window's frame and the selected tab", &R::printWindow},
        {"print-color-panel", "", 0,
         "whether the colour panel shows, its colour, the title of the well it edits and its "
         "strip's slider (`null` when it carries none)",
         &R::printColorPanel},
        {"quit", "", 0, "ends the script", &R::quit},
    };
    return table;
}

std::string ScriptRunner::commandTable()
{
    std::string table = "| Command | Effect |\n|---|---|\n";
    for (const ScriptCommand& command : commands()) {
        table += "| `" + std::string(command.name);
        if (!command.arguments.empty()) {
            table += " " + std::string(command.arguments);
        }
        table += "` | " + std::string(command.effect) + " |\n";
    }
    return table;
}

bool ScriptRunner::runCommand(const Words& words, std::string& error)
{
    for (const ScriptCommand& command : commands()) {
        if (command.name != words[0]) {
            continue;
        }
        if (words.size() != command.argumentCount + 1) {
            return fail(error, std::string(command.name) +
                                   (command.arguments.empty()
                                        ? " takes nothing after it"
                                        : " takes " + std::string(command.arguments)));
        }
        return (this->*command.handler)(words, error);
    }
    return fail(error, "unknown command \"" + words[0] + "\"");
}

bool ScriptRunner::quit(const Words&, std::string&)
{
    quit_ = true;
    return true;
}

bool ScriptRunner::select(const Words&, std::string&)
{
    host_.select();
    return true;
}

bool ScriptRunner::unselect(const Words&, std::string&)
{
    host_.unselect();
    return true;
}

bool ScriptRunner::revert(const Words&, std::string& error)
{
    return host_.pane().performActionNamed("revert:") || fail(error, "the pane cannot revert");
}

bool ScriptRunner::selectTab(const Words& words, std::string& error)
{
    TabView* tabs = host_.settingsTabView();
    return (tabs != nullptr && tabs->selectTabViewItemWithIdentifier(words[1])) ||
           fail(error, "no tab with the identifier " + words[1]);
}

bool ScriptRunner::click(const Words& words, std::string& error)
{
    View* view = outlet(words[1], error);
    if (view == nullptr) {
        return false;
    }
    if (auto* button = dynamic_cast<Button*>(view)) {
        button->performClick();
    } else if (auto* well = dynamic_cast<ColorWell*>(view)) {
        well->performClick();
    } else if (!view->pressTrackedButton()) {
        return fail(error, words[1] + " is not a button and holds none");
    }
    return true;
}

bool ScriptRunner::hover(const Words& words, std::string& error)
{
    View* view = outlet(words[1], error);
    if (view == nullptr) {
        return false;
    }
    const auto centre = view->centreOfTrackedButton();
    if (!centre) {
        return fail(error, words[1] + " tracks no mouse");
    }
    host_.window().sendEvent(Event::mouse(Event::Type::MouseMoved, *centre));
    return true;
}

bool ScriptRunner::setState(const Words& words, std::string& error)
{
    auto* button = outletOfKind<Button>(words[1], "a button", error);
    const auto state = NumericText::wholeReal(words[2]);
    if (button == nullptr) {
        return false;
    }
    if (!state || (*state != -1 && *state != 0 && *state != 1)) {
        return fail(error, "a state is -1, 0 or 1, not " + words[2]);
    }
    button->setState(static_cast<int>(*state));
    button->sendAction();
    return true;
}

bool ScriptRunner::answer(const Words& words, std::string& error)
{
    const std::string& answer = words[1];
    if (answer != "default" && answer != "alternate" && answer != "other") {
        return fail(error, "answer takes default, alternate or other");
    }
    alerts_.queueAnswer(answer == "default"     ? Alerts::defaultReturn
                        : answer == "alternate" ? Alerts::alternateReturn
                                                : Alerts::otherReturn);
    return true;
}

bool ScriptRunner::answerFile(const Words& words, std::string&)
{
    // "~/..." is the home the pane runs in, so that a script can name files there.
    alerts_.queueFileAnswer(words[1] == "cancel"
                                ? std::nullopt
                                : std::optional<std::string>(HomeDirectory::expandTilde(words[1])));
    return true;
}

bool ScriptRunner::wait(const Words& words, std::string& error)
{
    const auto seconds = NumericText::wholeReal(words[1]);
    if (!seconds || *seconds < 0) {
        return fail(error, "wait takes a number of seconds");
    }
    runLoop_.runFor(*seconds);
    return true;
}

bool ScriptRunner::printSetting(const Words& words, std::string&)
{
    printLine(JsonDescriptions::setting(words[1], host_.pane().valueForSettingKey(words[1])));
    return true;
}

bool ScriptRunner::printSavedSetting(const Words& words, std::string&)
{
    const auto saved = deeplyMutableDictionaryWithContentsOfFile(host_.pane().settingsFilePath());
    printLine(
        JsonDescriptions::setting(words[1], saved ? objectForKey(*saved, words[1]) : nullptr));
    return true;
}

bool ScriptRunner::printControl(const Words& words, std::string& error)
{
    View* view = outlet(words[1], error);
    if (view == nullptr) {
        return false;
    }
    // A menu built on demand is listed as it would be on opening.
    if (auto* popUp = dynamic_cast<PopUpButton*>(view)) {
        popUp->willOpenMenu();
    }
    printLine(JsonDescriptions::control(words[1], *view, host_.pane().linkOfOutletNamed(words[1])));
    return true;
}

bool ScriptRunner::printWindow(const Words&, std::string&)
{
    printLine(JsonDescriptions::window(host_.window(), host_.settingsTabView()));
    return true;
}

bool ScriptRunner::printColorPanel(const Words&, std::string&)
{
    printLine(JsonDescriptions::colorPanel(ColorPanel::shared()));
    return true;
}

bool ScriptRunner::choose(const Words& words, std::string& error)
{
    auto* popUp = outletOfKind<PopUpButton>(words[1], "a pop-up", error);
    if (popUp == nullptr) {
        return false;
    }
    popUp->willOpenMenu(); // menus built on demand are built now
    const std::string& choice = words[2];
    int index = -1;
    if (choice.starts_with("index=")) {
        index = static_cast<int>(NumericText::wholeReal(choice.substr(6)).value_or(-1));
    } else if (choice.starts_with("tag=")) {
        index = popUp->menu().indexOfItemWithTag(
            static_cast<int>(NumericText::wholeReal(choice.substr(4)).value_or(-1)));
    } else if (choice.starts_with("title=")) {
        index = popUp->menu().indexOfItemWithTitle(choice.substr(6));
    } else {
        return fail(error, "choose takes index=N, tag=N or title=\"T\"");
    }
    MenuItem* item = popUp->itemAtIndex(index);
    if (item == nullptr) {
        return fail(error, words[1] + " has no item " + choice);
    }
    popUp->userDidChooseItem(*item);
    return true;
}

bool ScriptRunner::chooseSubmenu(const Words& words, std::string& error)
{
    auto* popUp = outletOfKind<PopUpButton>(words[1], "a pop-up", error);
    if (popUp == nullptr) {
        return false;
    }
    popUp->willOpenMenu();
    const MenuItem* item = popUp->itemAtIndex(popUp->menu().indexOfItemWithTitle(words[2]));
    if (item == nullptr || !item->submenu()) {
        return fail(error, words[1] + " has no submenu " + words[2]);
    }
    MenuItem* subitem =
        item->submenu()->itemAtIndex(item->submenu()->indexOfItemWithTitle(words[3]));
    if (subitem == nullptr) {
        return fail(error, words[2] + " has no item " + words[3]);
    }
    popUp->userDidChooseItem(*subitem);
    return true;
}

bool ScriptRunner::slide(const Words& words, std::string& error)
{
    auto* slider = outletOfKind<Slider>(words[1], "a slider", error);
    const auto value = NumericText::wholeReal(words[2]);
    if (slider == nullptr) {
        return false;
    }
    if (!value) {
        return fail(error, "not a number: " + words[2]);
    }
    drag(*slider, *value);
    return true;
}

// As a drag: the event being handled is a drag, not the final release.
void ScriptRunner::drag(Slider& slider, double value)
{
    Application::shared().setCurrentEvent(Event::mouse(Event::Type::LeftMouseDragged, Point{}));
    slider.setDoubleValue(value);
    slider.sendAction();
}

// As a person does it: the well is clicked unless it is active already, which brings up the
// colour panel, and then the strip's slider is dragged.
bool ScriptRunner::setGradient(const Words& words, std::string& error)
{
    auto* well = outletOfKind<ColorWell>(words[1], "a colour well", error);
    const auto value = NumericText::wholeReal(words[2]);
    if (well == nullptr) {
        return false;
    }
    if (!value) {
        return fail(error, "not a number: " + words[2]);
    }
    if (!well->isActive()) {
        well->performClick();
    }
    const View* strip = ColorPanel::shared().accessoryView().get();
    Slider* slider = strip != nullptr ? JsonDescriptions::enclosedSlider(*strip) : nullptr;
    if (slider == nullptr) {
        return fail(error, words[1] + " puts no gradient strip on the colour panel");
    }
    drag(*slider, *value);
    return true;
}

// A click on the colour panel's strip: "left" and "right" near its ends, "middle", or at a
// distance in points from its left edge.
bool ScriptRunner::clickStrip(const Words& words, std::string& error)
{
    View* strip = ColorPanel::shared().accessoryView().get();
    if (strip == nullptr) {
        return fail(error, "the colour panel shows no strip");
    }
    const double width = strip->bounds().width();
    const std::string& where = words[1];
    const auto x = where == "left"     ? std::optional<double>(1)
                   : where == "right"  ? std::optional<double>(width - 1)
                   : where == "middle" ? std::optional<double>(width / 2)
                                       : NumericText::wholeReal(where);
    if (!x) {
        return fail(error, "click-strip takes left, right, middle or a distance in points");
    }
    const Point inStrip{*x, strip->bounds().height() / 2};
    strip->mouseDown(
        Event::mouse(Event::Type::LeftMouseDown, strip->convertPointToView(inStrip, nullptr)));
    return true;
}

bool ScriptRunner::type(const Words& words, std::string& error)
{
    auto* field = outletOfKind<TextField>(words[1], "a text field", error);
    if (field == nullptr) {
        return false;
    }
    if (words[2].empty()) {
        field->userDidEditText("");
        return true;
    }
    // One character at a time, as a person types.
    const std::u16string units = TextEncoding::utf16FromUtf8(words[2]);
    for (std::size_t length = 1; length <= units.size(); ++length) {
        if (length < units.size() && units[length - 1] >= 0xD800 && units[length - 1] <= 0xDBFF) {
            continue; // keep surrogate pairs together
        }
        field->userDidEditText(
            TextEncoding::utf8FromUtf16(std::u16string_view(units).substr(0, length)));
    }
    return true;
}

bool ScriptRunner::press(const Words& words, std::string& error)
{
    View* view = outlet(words[1], error);
    if (view == nullptr) {
        return false;
    }
    const auto combination = KeyCombination::parse(words[2]);
    if (!combination) {
        return fail(error, "not a key combination: " + words[2]);
    }
    Window& window = host_.window();
    if (!view->acceptsFirstResponder() || !window.makeFirstResponder(view)) {
        return fail(error, words[1] + " does not take the keyboard focus");
    }
    for (const Event::Type type : {Event::Type::KeyDown, Event::Type::KeyUp}) {
        window.sendEvent(Event::key(type, combination->keyCode, combination->modifierFlags,
                                    combination->characters,
                                    combination->charactersIgnoringModifiers));
    }
    return true;
}

bool ScriptRunner::clear(const Words& words, std::string& error)
{
    if (outlet(words[1], error) == nullptr) {
        return false;
    }
    auto* button = dynamic_cast<Button*>(host_.pane().accessoryOfOutletNamed(words[1]));
    if (button == nullptr) {
        return fail(error, words[1] + " has no clear button");
    }
    button->performClick();
    return true;
}

} // namespace vexto
