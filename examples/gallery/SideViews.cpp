// SPDX-License-Identifier: MIT
#include <examples/gallery/SideViews.h>

#include <VX_Platform/Foundation/NSNotificationCenter.h>
#include <VX_Platform/Foundation/NSNumber.h>
#include <VX_Platform/Foundation/NSString.h>

#include <algorithm>
#include <string>
#include <utility>

namespace {

// The keys stay with the main window.
class SideWindow : public NSWindow {
public:
    VX_RETURNS_OWN_TYPE(SideWindow)
    bool canBecomeKeyWindow() override { return false; }
};

} // namespace

SideViews::SideViews(VX_GLHost& host, VX_GLRenderpipeline* pipeline)
    : m_MainWindow(host.window()), m_Main(host.view()), m_Pipeline(pipeline) {
    whenClosed(m_MainWindow, [this] { closeAll(); });
}

SideViews::~SideViews() {
    NSNotificationCenter::defaultCenter()->removeObserver(this);
}

void SideViews::whenClosed(NSWindow* window, std::function<void()> act) {
    NSNotificationCenter::defaultCenter()->addObserver(
        this, [act = std::move(act)](NSNotification*) { act(); }, NSWindowWillCloseNotification, window);
}

void SideViews::show(int count, const std::function<bool(NSEvent*)>& handler) {
    if (count == 0 && m_Views.empty())
        return;
    closeAll();
    for (int i = 0; i < count; ++i)
        open(i, handler);
    m_MainWindow->makeKeyAndOrderFront(); // the keyboard is its again
}

void SideViews::closeAll() {
    const std::vector<SideView> former = std::exchange(m_Views, {});
    m_Main->RenderThreadLock();
    m_Main->removeAllChildSharedViews();
    for (const SideView& each : former)
        each.view->releaseResources();
    m_Main->RenderThreadUnLock();
    for (const SideView& each : former)
        each.window->close();
}

// As squares in a column.
void SideViews::open(int number, const std::function<bool(NSEvent*)>& handler) {
    const CGRect main = m_MainWindow->frame();
    const double side = std::max(0.44 * std::min(main.size.width, main.size.height), 1.0);
    const CGRect frame = CGRectMake(main.origin.x + main.size.width + 20.0,
                                    main.origin.y + number * (side + 40.0), side, side);
    const auto window =
        NSInit(new SideWindow, frame, NSTitledWindowMask | NSClosableWindowMask | NSResizableWindowMask);
    const auto view = NSInit(new VX_GLSharedView, frame, nullptr);
    view->setRenderpipeline(m_Pipeline);
    view->SetFollowsSize(true);
    view->setObject(NSNumber::numberWithInt(number), NSString::stringWithUTF8String("number"));
    window->setTitle(("View " + std::to_string(number + 2)).c_str());
    window->setContentView(view.get());
    if (handler)
        window->setEventHandler(handler);
    whenClosed(window.get(), [this, closed = window.get()] { drop(closed); });
    m_Views.push_back({window, view});
    window->makeKeyAndOrderFront();
    // The list of views changes between two frames, under the lock.
    m_Main->RenderThreadLock();
    m_Main->addChildSharedView(view.get());
    if (m_Main->width() > 0.0f) // else it sets its children up when it is prepared itself
        view->initialization(m_Main);
    m_Main->RenderThreadUnLock();
}

void SideViews::drop(const NSWindow* window) {
    m_Main->RenderThreadLock();
    m_Main->removeAllChildSharedViews();
    for (const SideView& each : m_Views)
        if (each.window.get() == window)
            each.view->releaseResources();
        else if (!each.window->isClosed())
            m_Main->addChildSharedView(each.view.get());
    m_Main->RenderThreadUnLock();
}
