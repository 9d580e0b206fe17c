// SPDX-License-Identifier: MIT
#include <VX_Platform/backends/x11/ForeignWindow.h>

#include <VX_Platform/AppKit/NSWindow.h>
#include <VX_Platform/Foundation/NSLog.h>

#include <X11/Xlib.h>

#include <algorithm>

namespace vx {

namespace {

class ForeignWindow;

std::vector<ForeignWindow*>& foreignWindows() {
    static std::vector<ForeignWindow*> windows;
    return windows;
}

class ForeignWindow : public WindowBackend {
public:
    ForeignWindow(X11Connection& connection, NSWindow* owner, Window window, CGRect frame)
        : m_Connection(connection), m_Owner(owner), m_Window(window), m_Frame(frame) {
        foreignWindows().push_back(this);
    }
    ~ForeignWindow() override { std::erase(foreignWindows(), this); }

    void setTitle(const char* title) override { XStoreName(m_Connection.display(), m_Window, title); }
    void setFrame(CGRect frame) override {
        XMoveResizeWindow(m_Connection.display(), m_Window, static_cast<int>(frame.origin.x),
                          static_cast<int>(frame.origin.y), std::max(1, static_cast<int>(frame.size.width)),
                          std::max(1, static_cast<int>(frame.size.height)));
        XSync(m_Connection.display(), False);
        noteFrame();
    }
    CGRect frame() const override { return m_Frame; }
    // Whether it is shown, and how it is framed, is its owner's business.
    void show() override {}
    void hide() override {}
    void setBordered(bool) override {}
    unsigned long nativeWindow() const override { return m_Window; }

    void noteFrame() {
        if (m_Connection.frameOf(m_Window, m_Frame))
            m_Owner->backendFrameChanged(m_Frame);
    }
    void noteEnd() { m_Owner->close(); }

private:
    X11Connection& m_Connection;
    NSWindow* m_Owner;
    Window m_Window;
    CGRect m_Frame;
};

ForeignWindow* foreignWindow(Window window) {
    for (ForeignWindow* each : foreignWindows())
        if (each->nativeWindow() == window)
            return each;
    return nullptr;
}

} // namespace

std::unique_ptr<WindowBackend> makeForeignWindow(X11Connection& connection, NSWindow* owner,
                                                 unsigned long window) {
    CGRect frame;
    if (!connection.frameOf(window, frame)) {
        NSLog("There is no X11 window 0x%lx to put a view into", window);
        return nullptr;
    }
    XSelectInput(connection.display(), window, StructureNotifyMask);
    return std::make_unique<ForeignWindow>(connection, owner, window, frame);
}

void followForeignWindows(X11Connection& connection) {
    if (foreignWindows().empty())
        return;
    XEvent event;
    while (XCheckMaskEvent(connection.display(), StructureNotifyMask, &event)) {
        ForeignWindow* window = foreignWindow(event.xany.window);
        if (!window)
            continue;
        if (event.type == ConfigureNotify)
            window->noteFrame();
        else if (event.type == DestroyNotify)
            window->noteEnd();
    }
}

} // namespace vx
