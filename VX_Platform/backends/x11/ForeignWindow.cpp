// SPDX-License-Identifier: MIT
#include <VX_Platform/backends/x11/ForeignWindow.h>

#include <VX_Platform/Foundation/NSLog.h>

#include <X11/Xlib.h>

#include <algorithm>

namespace vx {

class ForeignWindows::Window : public WindowBackend {
public:
    Window(ForeignWindows& all, ::Window window, CGRect frame)
        : m_All(all), m_Window(window), m_Frame(frame) {
        all.m_Windows.push_back(this);
    }
    ~Window() override { std::erase(m_All.m_Windows, this); }

    void setTitle(const char* title) override { XStoreName(m_All.m_Connection.display(), m_Window, title); }
    void setFrame(CGRect frame) override {
        ::Display* display = m_All.m_Connection.display();
        XMoveResizeWindow(display, m_Window, static_cast<int>(frame.origin.x),
                          static_cast<int>(frame.origin.y), std::max(1, static_cast<int>(frame.size.width)),
                          std::max(1, static_cast<int>(frame.size.height)));
        XSync(display, False);
        noteFrame();
    }
    CGRect frame() const override { return m_Frame; }
    // Whether it is shown, and how it is framed, is its owner's business.
    bool show(bool) override { return true; }
    void hide() override {}
    void setStyle(WindowStyle) override {}
    bool fillDisplay(const std::string&) override { return false; }
    void leaveDisplay() override {}
    NativeWindow nativeWindow() const override { return NativeWindow::x11(m_Window); }

    ::Window id() const { return m_Window; }
    void noteFrame() {
        if (m_All.m_Connection.frameOf(m_Window, m_Frame))
            m_All.m_Events.frameChanged(*this, m_Frame);
    }

private:
    ForeignWindows& m_All;
    ::Window m_Window;
    CGRect m_Frame;
};

std::unique_ptr<WindowBackend> ForeignWindows::adopt(unsigned long window) {
    // Ahead of the look at it, so that no change in between is lost.
    XSelectInput(m_Connection.display(), window, StructureNotifyMask);
    CGRect frame;
    if (!m_Connection.frameOf(window, frame)) {
        NSLog("There is no X11 window 0x%lx to put a view into", window);
        return nullptr;
    }
    return std::make_unique<Window>(*this, window, frame);
}

ForeignWindows::Window* ForeignWindows::find(unsigned long window) const {
    const auto found = std::ranges::find(m_Windows, window, &Window::id);
    return found == m_Windows.end() ? nullptr : *found;
}

void ForeignWindows::follow(const XEvent& event) {
    Window* window = find(event.xany.window);
    if (!window)
        return;
    if (event.type == ConfigureNotify)
        window->noteFrame();
    else if (event.type == DestroyNotify)
        m_Events.windowEnded(*window);
}

} // namespace vx
