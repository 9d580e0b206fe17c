// SPDX-License-Identifier: MIT
#pragma once

#include <VX_OpenGL64/host/VX_GLMainView.h>
#include <VX_OpenGL64/host/VX_GLRenderpipeline.h>
#include <VX_Platform/AppKit/NSWindow.h>

namespace vx::bench {

/// A drawing view in a window of the platform chosen before, with a pipeline of the caller's, for the life of
/// this object. Frames come from the display link until `stepByHand`.
class RunningView {
public:
    /// The size in pixels; the pipeline is retained. `ok` is false when there is no view to be had.
    RunningView(int width, int height, VX_GLRenderpipeline* pipeline);
    ~RunningView();
    RunningView(const RunningView&) = delete;
    RunningView& operator=(const RunningView&) = delete;

    bool ok() const { return m_Ok; }
    VX_GLMainView* view() const { return m_View.get(); }
    /// Ends the display link: from now on `refresh` draws the frames.
    void stepByHand();
    void refresh();

private:
    NSRef<NSWindow> m_Window;
    NSRef<VX_GLMainView> m_View;
    _VX_GLMainViewCallbackContext m_Record{};
    bool m_Ok = false;
};

} // namespace vx::bench
