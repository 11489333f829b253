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

bool expectWords(const std::vector<std::string>& words, std::size_t count, std::string& error)
{
    if (words.size() != count) {
        return fail(error, "\"" + words[0] + "\" takes " + std::to_string(count - 1) + " argument" +
                               (count == 2 ? "" : "s"));
    }
    return true;
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

View* ScriptRunner::outlet(const Words& words, std::size_t index, std::string& error) const
{
    if (index >= words.size()) {
        fail(error, "\"" + words[0] + "\" needs an outlet");
        return nullptr;
    }
    View* view = host_.pane().outletNamed(words[index]);
    if (view == nullptr) {
        fail(error, "no outlet named " + words[index]);
    }
    return view;
}

bool ScriptRunner::runCommand(const Words& words, std::string& error)
{
    const std::string& command = words[0];
    PreferencePane& pane = host_.pane();
    if (command == "quit") {
        quit_ = true;
        return expectWords(words, 1, error);
    }
    if (command == "select" || command == "unselect") {
        if (!expectWords(words, 1, error)) {
            return false;
        }
        command == "select" ? host_.select() : host_.unselect();
        return true;
    }
    if (command == "revert") {
        return expectWords(words, 1, error) && pane.performActionNamed("revert:");
    }
    if (command == "select-tab") {
        if (!expectWords(words, 2, error)) {
            return false;
        }
        TabView* tabs = host_.settingsTabView();
        return (tabs != nullptr && tabs->selectTabViewItemWithIdentifier(words[1])) ||
               fail(error, "no tab with the identifier " + words[1]);
    }
    if (command == "click") {
        View* view = outlet(words, 1, error);
        if (view == nullptr || !expectWords(words, 2, error)) {
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
    if (command == "hover") {
        View* view = outlet(words, 1, error);
        if (view == nullptr || !expectWords(words, 2, error)) {
            return false;
        }
        const auto centre = view->centreOfTrackedButton();
        if (!centre) {
            return fail(error, words[1] + " tracks no mouse");
        }
        host_.window().sendEvent(Event::mouse(Event::Type::MouseMoved, *centre));
        return true;
    }
    if (command == "set-state") {
        auto* button = dynamic_cast<Button*>(outlet(words, 1, error));
        const auto state = words.size() == 3 ? NumericText::wholeReal(words[2]) : std::nullopt;
        if (button == nullptr || !state) {
            return error.empty() ? fail(error, "set-state takes a button and -1, 0 or 1") : false;
        }
        button->setState(static_cast<int>(*state));
        button->sendAction();
        return true;
    }
    if (command == "choose") {
        return choose(words, error);
    }
    if (command == "choose-submenu") {
        return chooseSubmenu(words, error);
    }
    if (command == "slide") {
        return slide(words, error);
    }
    if (command == "gradient") {
        return setGradient(words, error);
    }
    if (command == "click-strip") {
        return clickStrip(words, error);
    }
    if (command == "print-color-panel") {
        if (!expectWords(words, 1, error)) {
            return false;
        }
        printLine(JsonDescriptions::colorPanel(ColorPanel::shared()));
        return true;
    }
    if (command == "type") {
        return type(words, error);
    }
    if (command == "key") {
        return press(words, error);
    }
    if (command == "clear") {
        return clear(words, error);
    }
    if (command == "answer") {
        if (!expectWords(words, 2, error)) {
            return false;
        }
        const std::string& answer = words[1];
        if (answer != "default" && answer != "alternate" && answer != "other") {
            return fail(error, "answer takes default, alternate or other");
        }
        alerts_.queueAnswer(answer == "default"     ? Alerts::defaultReturn
                            : answer == "alternate" ? Alerts::alternateReturn
                                                    : Alerts::otherReturn);
        return true;
    }
    if (command == "answer-file") {
        if (!expectWords(words, 2, error)) {
            return false;
        }
        // "~/..." is the home the pane runs in, so that a script can name files there.
        alerts_.queueFileAnswer(words[1] == "cancel" ? std::nullopt
                                                     : std::optional<std::string>(
                                                           HomeDirectory::expandTilde(words[1])));
        return true;
    }
    if (command == "wait") {
        const auto seconds = words.size() == 2 ? NumericText::wholeReal(words[1]) : std::nullopt;
        if (!seconds || *seconds < 0) {
            return fail(error, "wait takes a number of seconds");
        }
        runLoop_.runFor(*seconds);
        return true;
    }
    if (command == "print-setting" || command == "print-saved-setting") {
        if (!expectWords(words, 2, error)) {
            return false;
        }
        if (command == "print-setting") {
            printLine(JsonDescriptions::setting(words[1], pane.valueForSettingKey(words[1])));
        } else {
            printSavedSetting(words[1]);
        }
        return true;
    }
    if (command == "print-control") {
        View* view = outlet(words, 1, error);
        if (view == nullptr || !expectWords(words, 2, error)) {
            return false;
        }
        // A menu built on demand is listed as it would be on opening.
        if (auto* popUp = dynamic_cast<PopUpButton*>(view)) {
            popUp->willOpenMenu();
        }
        printLine(JsonDescriptions::control(words[1], *view, pane.linkOfOutletNamed(words[1])));
        return true;
    }
    if (command == "print-window") {
        if (!expectWords(words, 1, error)) {
            return false;
        }
        printLine(JsonDescriptions::window(host_.window(), host_.settingsTabView()));
        return true;
    }
    return fail(error, "unknown command \"" + command + "\"");
}

bool ScriptRunner::choose(const Words& words, std::string& error)
{
    auto* popUp = dynamic_cast<PopUpButton*>(outlet(words, 1, error));
    if (popUp == nullptr || words.size() != 3) {
        return error.empty()
                   ? fail(error, "choose takes a pop-up and index=N, tag=N or title=\"T\"")
                   : false;
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
    auto* popUp = dynamic_cast<PopUpButton*>(outlet(words, 1, error));
    if (popUp == nullptr || words.size() != 4) {
        return error.empty() ? fail(error, "choose-submenu takes a pop-up, an item and a subitem")
                             : false;
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
    auto* slider = dynamic_cast<Slider*>(outlet(words, 1, error));
    const auto value = words.size() == 3 ? NumericText::wholeReal(words[2]) : std::nullopt;
    if (slider == nullptr || !value) {
        return error.empty() ? fail(error, "slide takes a slider and a value") : false;
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
    auto* well = dynamic_cast<ColorWell*>(outlet(words, 1, error));
    const auto value = words.size() == 3 ? NumericText::wholeReal(words[2]) : std::nullopt;
    if (well == nullptr || !value) {
        return error.empty() ? fail(error, "gradient takes a colour well and a value") : false;
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
    const std::string where = words.size() == 2 ? words[1] : std::string();
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
    auto* field = dynamic_cast<TextField*>(outlet(words, 1, error));
    if (field == nullptr || words.size() != 3) {
        return error.empty() ? fail(error, "type takes a text field and a text") : false;
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
    View* view = outlet(words, 1, error);
    if (view == nullptr || !expectWords(words, 3, error)) {
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
    if (outlet(words, 1, error) == nullptr || !expectWords(words, 2, error)) {
        return false;
    }
    auto* button = dynamic_cast<Button*>(host_.pane().accessoryOfOutletNamed(words[1]));
    if (button == nullptr) {
        return fail(error, words[1] + " has no clear button");
    }
    button->performClick();
    return true;
}

void ScriptRunner::printSavedSetting(const std::string& key)
{
    const auto saved = deeplyMutableDictionaryWithContentsOfFile(host_.pane().settingsFilePath());
    printLine(JsonDescriptions::setting(key, saved ? objectForKey(*saved, key) : nullptr));
}

} // namespace vexto
