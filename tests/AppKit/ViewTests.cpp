// SPDX-License-Identifier: MIT
#include <VX_Platform/AppKit/NSApplication.h>
#include <VX_Platform/AppKit/NSView.h>
#include <VX_Platform/AppKit/NSWindow.h>
#include <VX_Platform/Foundation/NSAutoreleasePool.h>

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>

namespace {

std::string calls;

std::string taken() {
    return std::exchange(calls, {});
}

// Notes its hooks under its name; `onDraw` runs in the drawing.
class Noting : public NSView {
public:
    VX_RETURNS_OWN_TYPE(Noting)

    static NSRef<Noting> make(const char* name, CGRect frame) {
        auto view = NSInit(new Noting, frame);
        view->name = name;
        view->setNeedsDisplay(false);
        return view;
    }
    void note(const char* what) { calls += std::string(calls.empty() ? "" : " ") + name + what; }
    void drawRect(CGRect) override {
        note(":draw");
        if (onDraw)
            onDraw();
    }
    void viewDidMoveToWindow() override { note(window() ? ":in" : ":out"); }
    void frameDidChange() override { note(":frame"); }

    std::string name;
    std::function<void()> onDraw;
};

// A window with a view A in its content, B inside A, and C and D over one another inside B.
class ViewTest : public testing::Test {
protected:
    ViewTest() {
        NSApplication::useHeadlessPlatform();
        window = NSInit(new NSWindow, CGRectMake(0, 0, 400, 300), NSTitledWindowMask);
        window->setContentView(content.get());
        a->addSubview(b.get());
        content->addSubview(a.get());
        b->addSubview(c.get());
        b->addSubview(d.get());
        taken();
    }
    ~ViewTest() override { window->close(); }
    std::string hitAt(double x, double y) {
        auto* hit = dynamic_cast<Noting*>(content->hitTest({x, y}));
        return hit ? hit->name : "none";
    }

    const NSRef<NSAutoreleasePool> pool = NSInit(new NSAutoreleasePool);
    NSRef<NSWindow> window;
    NSRef<Noting> content = Noting::make("content", CGRectMake(0, 0, 400, 300));
    NSRef<Noting> a = Noting::make("A", CGRectMake(100, 50, 200, 200));
    NSRef<Noting> b = Noting::make("B", CGRectMake(20, 30, 100, 100));
    NSRef<Noting> c = Noting::make("C", CGRectMake(1, 2, 40, 40));
    NSRef<Noting> d = Noting::make("D", CGRectMake(31, 2, 40, 90));
};

} // namespace

TEST_F(ViewTest, IsHitWhereItsParentsPlaceIt) {
    const CGRect frame = c->frameInWindow();
    EXPECT_TRUE(frame.origin.x == 121 && frame.origin.y == 82 && frame.size.width == 40);
    EXPECT_EQ(hitAt(122, 83), "C");
    EXPECT_EQ(hitAt(155, 90), "D") << "the topmost of two";
    EXPECT_EQ(hitAt(400, 5), "none");
    b->setFrame(CGRectMake(0, 0, 100, 10)); // C and D reach out of it
    EXPECT_EQ(taken(), "B:frame C:frame D:frame");
    EXPECT_EQ(hitAt(104, 58), "C");
}

TEST_F(ViewTest, ChangesItsPlaceWithAllInsideIt) {
    EXPECT_EQ(c->window(), window.get());
    content->addSubview(b.get());
    EXPECT_EQ(taken(), "B:out C:out D:out B:in C:in D:in");
    EXPECT_TRUE(a->subviews().empty());
    EXPECT_EQ(b->nextResponder(), content.get());
    EXPECT_EQ(content->nextResponder(), window.get());
    b->removeFromSuperview();
    EXPECT_EQ(taken(), "B:out C:out D:out");
    EXPECT_EQ(b->retainCount(), 1);
    b = nullptr;
    EXPECT_EQ(d->superview(), nullptr) << "an ended parent";
}

TEST_F(ViewTest, IsDisplayedOnceForEachRequest) {
    content->displayIfNeeded();
    EXPECT_EQ(taken(), "");
    for (Noting* view : {d.get(), c.get(), a.get()})
        view->setNeedsDisplay(true);
    // A view may leave, and end, while it is displayed; another may come.
    c->onDraw = [view = c.get()] { view->removeFromSuperview(); };
    c = nullptr;
    d->onDraw = [this] { b->addSubview(Noting::make("E", CGRectMake(0, 0, 1, 1)).get()); };
    content->displayIfNeeded();
    EXPECT_EQ(taken(), "A:draw C:draw C:out D:draw E:in");
    content->displayIfNeeded();
    EXPECT_EQ(taken(), "");
    d->onDraw = [this] { b->subviews().back()->removeFromSuperview(); };
    for (const NSRef<NSView>& view : b->subviews())
        view->setNeedsDisplay(true);
    content->displayIfNeeded();
    EXPECT_EQ(taken(), "D:draw E:out") << "what has left is not displayed";
}
