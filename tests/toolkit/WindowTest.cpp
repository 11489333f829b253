#include "toolkit/Window.hpp"

#include "toolkit/Application.hpp"
#include "toolkit/NotificationCenter.hpp"
#include "toolkit/TextView.hpp"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace vexto {
namespace {

// A focusable view that can be told to refuse giving up or taking the focus.
class Field : public View {
public:
    using View::View;
    bool refuseResign = false;
    bool refuseBecome = false;
    std::vector<std::string> log;

    bool acceptsFirstResponder() const override { return true; }
    bool becomeFirstResponder() override
    {
        log.push_back("become");
        return !refuseBecome;
    }
    bool resignFirstResponder() override
    {
        log.push_back("resign");
        return !refuseResign;
    }
    void keyDown(const Event& event) override
    {
        log.push_back("key " + std::to_string(event.keyCode()));
    }
    bool performKeyEquivalent(const Event& event) override
    {
        if (isFirstResponder()) {
            log.push_back("equivalent " + std::to_string(event.keyCode()));
            return true;
        }
        return false;
    }
    void mouseEntered(const Event& event) override
    {
        log.push_back("entered " + std::to_string(event.trackingArea()->userInfo()));
    }
    void mouseExited(const Event&) override { log.push_back("exited"); }
};

class WindowTest : public ::testing::Test {
protected:
    WindowTest()
    {
        Application::resetForTesting();
        first = std::make_shared<Field>(Rect(10, 10, 100, 20));
        second = std::make_shared<Field>(Rect(10, 40, 100, 20));
        window.contentView()->addSubview(first);
        window.contentView()->addSubview(second);
    }
    ~WindowTest() override { Application::resetForTesting(); }

    Window window{Rect(0, 0, 400, 300)};
    std::shared_ptr<Field> first;
    std::shared_ptr<Field> second;
};

TEST_F(WindowTest, ARefusedResignKeepsTheFocusWhereItWas)
{
    EXPECT_TRUE(window.makeFirstResponder(first.get()));
    first->refuseResign = true;
    EXPECT_FALSE(window.makeFirstResponder(second.get()));
    EXPECT_EQ(window.firstResponder(), first.get());
    EXPECT_TRUE(second->log.empty()) << "the new view is not asked when the old one refuses";
    first->refuseResign = false;
    second->refuseBecome = true;
    EXPECT_FALSE(window.makeFirstResponder(second.get()));
    EXPECT_EQ(window.firstResponder(), nullptr) << "the window itself takes the focus";
    EXPECT_TRUE(window.makeFirstResponder(nullptr));
}

TEST_F(WindowTest, KeysGoToTheFocusAndCommandKeysAreOfferedAsEquivalentsFirst)
{
    window.makeFirstResponder(first.get());
    window.sendEvent(Event::key(Event::Type::KeyDown, 0, 0, "a", "a"));
    window.sendEvent(Event::key(Event::Type::KeyDown, 48, Event::commandKeyMask, "\t", "\t"));
    EXPECT_EQ(first->log, (std::vector<std::string>{"become", "key 0", "equivalent 48"}));
    ASSERT_NE(Application::shared().currentEvent(), nullptr);
    EXPECT_EQ(Application::shared().currentEvent()->keyCode(), 48);
}

TEST_F(WindowTest, TabMovesTheFocusAlongTheKeyViewsUnlessAViewKeepsIt)
{
    auto text = std::make_shared<TextView>(Rect(10, 70, 100, 20));
    window.contentView()->addSubview(text);
    text->setEditable(false);
    window.makeFirstResponder(first.get());
    window.keyDown(Event::key(Event::Type::KeyDown, 48, 0, "\t", "\t"));
    EXPECT_EQ(window.firstResponder(), second.get());
    window.keyDown(Event::key(Event::Type::KeyDown, 48, Event::shiftKeyMask, "\t", "\t"));
    EXPECT_EQ(window.firstResponder(), first.get());
    window.makeFirstResponder(text.get());
    window.sendEvent(Event::key(Event::Type::KeyDown, 48, 0, "\t", "\t"));
    EXPECT_EQ(window.firstResponder(), first.get())
        << "a text view that is not editable passes Tab on";
}

TEST_F(WindowTest, ClicksFocusTheViewUnderTheMouse)
{
    window.sendEvent(Event::mouse(Event::Type::LeftMouseDown, Point{20, 45}));
    EXPECT_EQ(window.firstResponder(), second.get());
    second->removeFromSuperview();
    EXPECT_EQ(window.firstResponder(), nullptr) << "a removed view cannot keep the focus";
}

TEST_F(WindowTest, TrackingAreasHearTheMouseEnterAndLeave)
{
    first->addTrackingArea(std::make_shared<TrackingArea>(Rect(80, 0, 20, 20), first.get(), 7));
    const auto move = [&](double x, double y) {
        window.sendEvent(Event::mouse(Event::Type::MouseMoved, Point{x, y}));
    };
    move(5, 5);
    move(95, 15);
    move(96, 16);
    move(50, 15);
    move(95, 15);
    EXPECT_EQ(first->log, (std::vector<std::string>{"entered 7", "exited", "entered 7"}));
}

TEST_F(WindowTest, TrackingLoopsTakeQueuedEventsByMask)
{
    window.postEvent(Event::mouse(Event::Type::MouseMoved, Point{1, 1}));
    window.postEvent(Event::mouse(Event::Type::LeftMouseDragged, Point{2, 2}));
    window.postEvent(Event::mouse(Event::Type::LeftMouseUp, Point{3, 3}));
    window.postEvent(Event::mouse(Event::Type::LeftMouseDragged, Point{0, 0}), true);
    const std::uint64_t mask =
        Event::maskFor(Event::Type::LeftMouseDragged) | Event::maskFor(Event::Type::LeftMouseUp);
    std::vector<double> xs;
    while (auto event = window.nextEventMatchingMask(mask)) {
        xs.push_back(event->locationInWindow().x);
        EXPECT_EQ(event->window(), &window);
    }
    EXPECT_EQ(xs, (std::vector<double>{0, 2, 3}));
    EXPECT_EQ(window.queuedEventCount(), 1u) << "the mouse move was not asked for";
}

TEST_F(WindowTest, MainAndKeyChangesArePostedForEachWindow)
{
    std::vector<std::string> heard;
    const int observer = 0;
    auto& center = NotificationCenter::defaultCenter();
    for (const char* name :
         {Window::didBecomeMainNotification, Window::didResignMainNotification}) {
        center.addObserver(
            &observer, name, nullptr, [&](const NotificationCenter::Notification& n) {
                heard.push_back(n.name + (n.object == &window ? " first" : " second"));
            });
    }
    Window other(Rect(0, 0, 100, 100));
    window.makeKeyAndOrderFront();
    other.makeKeyAndOrderFront();
    center.removeObserver(&observer);
    EXPECT_EQ(heard, (std::vector<std::string>{"NSWindowDidBecomeMainNotification first",
                                               "NSWindowDidResignMainNotification first",
                                               "NSWindowDidBecomeMainNotification second"}));
    EXPECT_TRUE(other.isKeyWindow());
    EXPECT_FALSE(window.isMainWindow());
}

} // namespace
} // namespace vexto
