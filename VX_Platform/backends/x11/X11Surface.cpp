// SPDX-License-Identifier: MIT
#include <VX_Platform/backends/x11/X11Surface.h>

#include <VX_Platform/Foundation/NSLog.h>
#include <VX_Platform/backends/x11/PresentSource.h>

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/shape.h>

#include <algorithm>

namespace vx {

namespace {

class X11Surface : public Surface {
public:
    X11Surface(X11Connection& connection, GLDriver& gl, const WindowBackend* window)
        : m_Connection(connection), m_GL(gl), m_Backend(window) {}

    ~X11Surface() override {
        ::Display* display = m_Connection.display();
        const ConnectionGuard::Quiet quiet(m_Connection.guard());
        if (m_Handle)
            m_GL.destroySurface(m_Handle);
        if (m_Connection.hasEnded())
            return;
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

    bool make(GLDriver::Handle config, CGRect wanted) {
        ::Display* display = m_Connection.display();
        m_Parent = m_Backend->nativeWindow().handle;
        m_Frame = bounded(wanted);
        XVisualInfo sought{};
        sought.visualid = m_GL.nativeVisual(config);
        int count = 0;
        XVisualInfo* visual = XGetVisualInfo(display, VisualIDMask, &sought, &count);
        if (!visual) {
            NSLog("X11: no visual 0x%lx for the pixel format", sought.visualid);
            return false;
        }
        m_Colormap = XCreateColormap(display, DefaultRootWindow(display), visual->visual, AllocNone);
        XSetWindowAttributes attributes{};
        attributes.colormap = m_Colormap;
        attributes.border_pixel = 0;
        attributes.background_pixmap = 0;
        // A resize keeps the last frame where it is until the next one comes.
        attributes.bit_gravity = NorthWestGravity;
        // On the root at first: another client may end the parent at any time, and the driver ends the
        // process for a window that is not there.
        m_Window = XCreateWindow(display, DefaultRootWindow(display), 0, 0, width(m_Frame), height(m_Frame),
                                 0, visual->depth, InputOutput, visual->visual,
                                 CWColormap | CWBorderPixel | CWBackPixmap | CWBitGravity, &attributes);
        XFree(visual);
        // The pointer goes through to the window around it, whose grab would end at a window in its way.
        XShapeCombineRectangles(display, m_Window, ShapeInput, 0, 0, nullptr, 0, ShapeSet, YXBanded);
        m_Handle = m_GL.createWindowSurface(config, m_Window);
        return m_Handle && moveIntoParent();
    }

    GLDriver::Handle handle() const override { return m_Handle; }
    bool takesFrame() override { return !m_Connection.hasEnded(); }
    const WindowBackend* window() const override { return m_Backend; }

    void follow(CGRect frame) override {
        m_Frame = bounded(frame);
        if (m_Connection.hasEnded())
            return;
        XMoveResizeWindow(m_Connection.display(), m_Window, x(m_Frame), y(m_Frame), width(m_Frame),
                          height(m_Frame));
        XSync(m_Connection.display(), False);
    }

    DisplayInfo display() const override { return m_Connection.displayOf(m_Window); }
    std::unique_ptr<RefreshSource> makeRefreshSource() const override { return makePresentSource(m_Window); }

private:
    bool moveIntoParent() {
        ::Display* display = m_Connection.display();
        const ConnectionGuard::Quiet quiet(m_Connection.guard());
        XReparentWindow(display, m_Window, m_Parent, x(m_Frame), y(m_Frame));
        Window root = 0, parent = 0, *children = nullptr;
        unsigned count = 0;
        if (!XQueryTree(display, m_Window, &root, &parent, &children, &count))
            return false;
        XFree(children);
        if (parent == m_Parent)
            XMapWindow(display, m_Window);
        else
            NSLog("X11: window 0x%lx is gone; its view has nothing to draw to", m_Parent);
        XSync(display, False);
        return parent == m_Parent;
    }

    // Servers and drivers fail beyond it in their own ways, some with all that they show.
    static CGRect bounded(CGRect frame) {
        constexpr double longest = 16384.0;
        if (frame.size.width > longest || frame.size.height > longest) {
            NSLog("X11: a view of %.0f x %.0f is drawn as far as %.0f", frame.size.width, frame.size.height,
                  longest);
            frame.size = {std::min(frame.size.width, longest), std::min(frame.size.height, longest)};
        }
        return frame;
    }

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
