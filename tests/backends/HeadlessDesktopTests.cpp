// SPDX-License-Identifier: MIT
#include <VX_Platform/backends/headless/HeadlessDesktop.h>

#include <gtest/gtest.h>

#include <map>
#include <sstream>

using vx::HeadlessDesktop;
using vx::HeadlessWindow;

namespace {

// Writes down what a platform tells of windows, which a test gives names, and of displays.
class EventRecorder : public vx::PlatformEvents {
public:
    std::map<const vx::WindowBackend*, std::string> names;

    std::string take() { return std::exchange(m_Told, {}); }

    void frameChanged(vx::WindowBackend& window, CGRect frame) override {
        std::ostringstream text;
        text << frame.origin.x << ',' << frame.origin.y << ' ' << frame.size.width << 'x'
             << frame.size.height;
        note(window, text.str());
    }
    void focusChanged(vx::WindowBackend& window, bool key) override { note(window, key ? "key" : "not key"); }
    void closeAsked(vx::WindowBackend& window) override { note(window, "close"); }
    void windowEnded(vx::WindowBackend& window) override { note(window, "ended"); }
    void input(vx::WindowBackend&, const vx::InputEvent&) override {}
    void displaysChanged() override { m_Told += "displays; "; }
    void serverEnded() override {}

private:
    void note(const vx::WindowBackend& window, const std::string& what) {
        m_Told += names[&window] + " " + what + "; ";
    }

    std::string m_Told;
};

struct Desktop {
    EventRecorder events;
    std::shared_ptr<HeadlessDesktop> desktop = std::make_shared<HeadlessDesktop>(events);

    std::unique_ptr<HeadlessWindow> window(const char* name, CGRect frame = {{}, {100, 100}}) {
        auto window = std::make_unique<HeadlessWindow>(desktop, frame);
        events.names[window.get()] = name;
        return window;
    }
};

} // namespace

TEST(HeadlessDesktop, OneWindowHasTheKeyboardAtATime) {
    Desktop d;
    auto a = d.window("a"), b = d.window("b"), c = d.window("c");
    a->show(true);
    b->show(true);
    b->show(true);
    EXPECT_EQ(d.events.take(), "a key; a not key; b key; ");
    c->hide();
    EXPECT_EQ(d.events.take(), "") << "it was never shown";
    b->hide();
    EXPECT_EQ(d.events.take(), "b not key; a key; ");
    b->show(true);
    d.events.take();
    b.reset();
    EXPECT_EQ(d.events.take(), "a key; ") << "one that has ended hears nothing";
    a->hide();
    EXPECT_EQ(d.events.take(), "a not key; ") << "c is not shown";
}

TEST(HeadlessDesktop, AWindowIsOnTheDisplayThatShowsMostOfIt) {
    Desktop d;
    EXPECT_EQ(d.desktop->displayOf(nullptr).refreshRate, 60.0) << "without any display";
    ASSERT_TRUE(d.desktop->plug("left", CGRectMake(0, 0, 1000, 500), 60.0));
    ASSERT_TRUE(d.desktop->plug("right", CGRectMake(1000, 0, 1000, 500), 75.0));
    auto window = d.window("w");
    struct {
        double x, y;
        const char* display;
    } const rows[] = {
        {0, 0, "left"}, {949, 0, "left"}, {951, 0, "right"}, {1900, 450, "right"}, {5000, 0, "left"}};
    for (const auto& row : rows) {
        window->setFrame(CGRectMake(row.x, row.y, 100, 100));
        EXPECT_EQ(d.desktop->displayOf(window.get()).name, row.display) << row.x;
    }
}

TEST(HeadlessDesktop, DisplaysComeChangeAndGoAndKeepTheirIds) {
    Desktop d;
    d.desktop->plug("one", CGRectMake(0, 0, 10, 10), 60.0);
    d.desktop->plug("two", CGRectMake(10, 0, 10, 10), 60.0);
    const std::uint32_t one = d.desktop->displays()[0].id;
    EXPECT_TRUE(one != 0 && one != d.desktop->displays()[1].id);
    d.desktop->plug("one", CGRectMake(0, 0, 10, 10), 50.0);
    EXPECT_EQ(d.desktop->displays()[0].refreshRate, 50.0);
    EXPECT_TRUE(d.desktop->unplug("one"));
    EXPECT_FALSE(d.desktop->unplug("one"));
    EXPECT_FALSE(d.desktop->plug("", CGRectMake(0, 0, 10, 10), 60.0));
    d.desktop->plug("one", CGRectMake(0, 0, 10, 10), 60.0);
    EXPECT_EQ(d.desktop->displays()[1].id, one);
    EXPECT_EQ(d.events.take(), "displays; displays; displays; displays; displays; ");
}

TEST(HeadlessDesktop, AWindowFillsANamedDisplayAndLeavesItAgain) {
    Desktop d;
    d.desktop->plug("left", CGRectMake(0, 0, 1000, 500), 60.0);
    d.desktop->plug("right", CGRectMake(1000, 0, 800, 400), 75.0);
    auto window = d.window("w", CGRectMake(20, 30, 100, 50));
    EXPECT_FALSE(window->fillDisplay("none"));
    window->leaveDisplay();
    EXPECT_EQ(d.events.take(), "displays; displays; ") << "nothing moved";
    EXPECT_TRUE(window->fillDisplay("right"));
    EXPECT_TRUE(window->fillDisplay("left"));
    window->leaveDisplay();
    window->leaveDisplay();
    EXPECT_EQ(d.events.take(), "w 1000,0 800x400; w 0,0 1000x500; w 20,30 100x50; ");
}
