// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/AppKit/NSWindow.h>

#include <cstdint>

class VX_GLMainView;
class VX_GLRenderpipeline;

/// A window that takes a main view over while its picture is to fill a display, and gives it back to its
/// former place.
///
/// A host makes it without a border and with the frame of an `NSScreen`, attaches the view and shows the
/// window. A window whose frame is exactly a display's covers that display entirely, a window manager's
/// panels too (`NSWindow::fillDisplay`), and waits for it where it is switched off.
///
/// Each move ends the view's context and makes a new one: the pipeline gets `onNotify_StopRenderThread`,
/// `doStopRender` and its detaching `attachGLContext` with the old context current, and is started anew once
/// the view is prepared in its new place. Drawing is stopped for the move.
///
/// An attachment retains nothing of its own: with it the host hands its reference to the view over, and
/// `releaseResources`, or the window's end, releases it. Host's thread.
class VX_EXPORT VX_GLFilledScreenWindow : public NSWindow {
public:
    VX_RETURNS_OWN_TYPE(VX_GLFilledScreenWindow)

    VX_GLFilledScreenWindow();
    /// Ends the view that the window has had, also one that has been given back since.
    void dealloc() override;

    /// Takes the view over: it leaves its parent, or the window whose content it is, becomes this window's
    /// content, and prepares itself with the attributes, a list closed by 0, and the pipeline, which it
    /// retains. Its parent and frame are kept for the way back, the parent without a reference. Null for a
    /// view only empties the window.
    void attachGLViewWithPixelFormat(VX_GLMainView* view, const std::uint32_t* attributes,
                                     VX_GLRenderpipeline* pipeline);
    /// Closes the window and puts the view back to where it was, with its frame of then and its pipeline.
    /// Where the former place has ended, the view is in no window. The window still knows the view, and can
    /// be attached to and shown again.
    void detachGLViewWithPixelFormat(const std::uint32_t* attributes);
    /// Stops the view and tears it down wherever it is, and releases it. The view's reference to its pipeline
    /// is left to the host, as by `VX_GLMainView::detachRenderpipeline`. Harmless when repeated.
    void releaseResources();

    bool canBecomeKeyWindow() override { return true; }
    /// The view that was attached last, borrowed; null before, and once it has ended.
    VX_GLMainView* MainGLView() const;

protected:
    ~VX_GLFilledScreenWindow() override;

private:
    void keepPlaceOf(VX_GLMainView* view);
    void putBack(VX_GLMainView* view);
    void coverDisplayUnder();

    // None of them is retained.
    std::weak_ptr<NSResponder> m_TargetGLView;
    std::weak_ptr<NSResponder> m_PrevSuperView;
    std::weak_ptr<NSResponder> m_PrevWindow;
    CGRect m_PrevBounds;
};
