// SPDX-License-Identifier: MIT
#pragma once

#include <VX_OpenGL64/host/VX_GLMainView.h>
#include <VX_OpenGL64/host/VX_GLRenderpipeline.h>
#include <VX_Platform/AppKit/NSWindow.h>
#include <VX_Platform/CoreGraphics/NativeWindow.h>

#include <cstdint>
#include <memory>

/// Pixels along the edges of a window that a view leaves free.
struct VX_GLHostMargins {
    int left = 0;   ///< from 0 on, as the others
    int top = 0;    ///< along the upper edge
    int right = 0;  ///< along the right edge
    int bottom = 0; ///< along the lower edge
};

/// What `VX_GLHost::open` makes. Every field has a default.
struct VX_GLHostOptions {
    /// Borrowed for the call.
    const char* title = "VX_OpenGL64";
    /// Size of the picture in pixels, and its place on the desktop.
    int width = 640;
    int height = 360;
    int x = 100;
    int y = 100;
    /// A window of another toolkit to put the view into, instead of a window of its own: its title, size and
    /// input stay that toolkit's, and it is not closed at the end.
    vx::NativeWindow inside = {};
    /// What of the window stays the host's own to draw; the view fills the rest and follows its size.
    VX_GLHostMargins margins = {};
    /// Whether the user can change the window's size; the picture follows (`VX_GLMainView::SetFollowsSize`).
    bool resizable = true;
    /// Whether Escape closes the window.
    bool closesOnEscape = true;
    /// Name of the platform as for `NSApplication::usePlatform`; null for the window system that is there.
    const char* platform = nullptr;
    /// Short for the platform "headless": no display is needed.
    bool headless = false;
    /// Whether frames come by hand alone (`VX_GLHost::record`, `VX_GLMainView::StepFrame`).
    bool stepped = false;
    /// Bits of colour and depth, and samples for each pixel (0: no multisampling).
    int colorSize = 24;
    int depthSize = 24;
    int samples = 0;
    /// Words of a pixel format closed by 0, borrowed for the call, in the place of the three above; or null.
    const std::uint32_t* pixelFormat = nullptr;
};

/// A window with a view that draws a pipeline: what most hosts begin with, in one call. Its destructor stops
/// the drawing, which gives the pipeline its `doStopRender`, and closes the window.
///
/// Who wants a window class of their own or several views takes the steps by hand; docs/getting-started.md
/// shows them. Main thread only.
class VX_EXPORT VX_GLHost {
public:
    /// Opens the window and attaches the pipeline, which is retained and gets the view as its target. Drawing
    /// begins in the next step of the run loop. Null, with one line in the log, when the platform cannot
    /// start, there is no such pixel format or no window to be inside of, or `pipeline` is null. Main
    /// thread. The EGL context that was current on it, or none, is so again; a GLX context must not be
    /// current there.
    static std::unique_ptr<VX_GLHost> open(VX_GLRenderpipeline* pipeline,
                                           const VX_GLHostOptions& options = {});
    ~VX_GLHost();
    VX_GLHost(const VX_GLHost&) = delete;
    VX_GLHost& operator=(const VX_GLHost&) = delete;

    /// Runs the application's loop until the window is closed or `NSApplication::stop`. Returns 0, for
    /// `main`.
    int run();

    /// Draws the frames `first` to `last` by hand, frame i for the time i / `framesPerSecond`, and writes
    /// each to `folder`/frame_00000.png and so on. Needs `stepped`. False, with one line in the log, at the
    /// first frame that cannot be drawn or written.
    bool record(const char* folder, int first, int last, double framesPerSecond);

    /// Borrowed.
    NSWindow* window() const { return m_Window.get(); }
    VX_GLMainView* view() const { return m_View.get(); }

private:
    VX_GLHost() = default;
    bool makeWindow(const VX_GLHostOptions& options);
    bool start(VX_GLRenderpipeline* pipeline, const VX_GLHostOptions& options);
    void placeView(const VX_GLHostMargins& margins);
    bool attach(VX_GLRenderpipeline* pipeline, const VX_GLHostOptions& options);

    NSRef<NSWindow> m_Window;
    NSRef<VX_GLMainView> m_View;
};
