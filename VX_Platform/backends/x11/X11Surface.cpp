// SPDX-License-Identifier: MIT
#include <VX_Platform/backends/x11/X11Surface.h>

#include <VX_Platform/Foundation/NSLog.h>
#include <VX_Platform/backends/x11/PresentSource.h>

#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include <algorithm>

namespace vx {

namespace {

class X11Surface : public Surface {
public:
    X11Surface(X11Connection& connection, GLDriver& gl, const WindowBackend* window)
        : m_Connection(connection), m_GL(gl), m_Backend(window) {}

    ~X11Surface() override {
        ::Display* display = m_Connection.display();
        if (m_Handle)
            m_GL.destroySurface(m_Handle);
        if (m_Window) {
            XDestroyWindow(display, m_Window);
            // The window around it keeps no picture of its own, and the last frame must not stay on the
            // screen.
            GC black = XCreateGC(display, m_Parent, 0, nullptr);
            XSetForeground(display, black, 0);
            XFillRectangle(display, m_Parent, black, x(m_Frame), y(m_Frame), width(m_Frame), height(m_Frame));
            XFreeGC(display, black);
        }
        if (m_Colormap)
            XFreeColormap(display, m_Colormap);
        XSync(display, False);
    }

    bool make(GLDriver::Handle config, CGRect frame) {
        ::Display* display = m_Connection.display();
        m_Parent = m_Backend->nativeWindow().handle;
        m_Frame = frame;
        XVisualInfo wanted{};
        wanted.visualid = m_GL.nativeVisual(config);
        int count = 0;
        XVisualInfo* visual = XGetVisualInfo(display, VisualIDMask, &wanted, &count);
        if (!visual) {
            NSLog("X11: no visual 0x%lx for the pixel format", wanted.visualid);
            return false;
        }
        m_Colormap = XCreateColormap(display, DefaultRootWindow(display), visual->visual, AllocNone);
        XSetWindowAttributes attributes{};
        attributes.colormap = m_Colormap;
        attributes.border_pixel = 0;
        attributes.background_pixmap = 0;
        // A resize keeps the last frame where it is until the next one comes.
        attributes.bit_gravity = NorthWestGravity;
        m_Window = XCreateWindow(display, m_Parent, x(frame), y(frame), width(frame), height(frame), 0,
                                 visual->depth, InputOutput, visual->visual,
                                 CWColormap | CWBorderPixel | CWBackPixmap | CWBitGravity, &attributes);
        XFree(visual);
        XMapWindow(display, m_Window);
        XSync(display, False);
        m_Handle = m_GL.createWindowSurface(config, m_Window);
        return m_Handle != nullptr;
    }

    GLDriver::Handle handle() const override { return m_Handle; }
    const WindowBackend* window() const override { return m_Backend; }

    void follow(CGRect frame) override {
        m_Frame = frame;
        XMoveResizeWindow(m_Connection.display(), m_Window, x(frame), y(frame), width(frame), height(frame));
        XSync(m_Connection.display(), False);
    }

    DisplayInfo display() const override { return m_Connection.displayOf(m_Window); }
    std::unique_ptr<RefreshSource> makeRefreshSource() const override { return makePresentSource(m_Window); }

private:
    // X11 knows no window without a pixel.
    static unsigned width(const CGRect& frame) { return std::max(1, static_cast<int>(frame.size.width)); }
    static unsigned height(const CGRect& frame) { return std::max(1, static_cast<int>(frame.size.height)); }
    static int x(const CGRect& frame) { return static_cast<int>(frame.origin.x); }
    static int y(const CGRect& frame) { return static_cast<int>(frame.origin.y); }

    X11Connection& m_Connection;
    GLDriver& m_GL;
    const WindowBackend* m_Backend;
    Window m_Parent = 0;
    Window m_Window = 0;
    CGRect m_Frame;
    Colormap m_Colormap = 0;
    GLDriver::Handle m_Handle = nullptr;
};

} // namespace

std::unique_ptr<Surface> makeX11Surface(X11Connection& connection, GLDriver& gl, GLDriver::Handle config,
                                        const WindowBackend* window, CGRect frame) {
    auto surface = std::make_unique<X11Surface>(connection, gl, window);
    if (!surface->make(config, frame))
        return nullptr;
    return surface;
}

} // namespace vx
