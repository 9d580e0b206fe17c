// SPDX-License-Identifier: MIT
#pragma once

#include <VX_OpenGL64/host/VX_GLHost.h>
#include <VX_OpenGL64/host/VX_GLSharedView.h>
#include <VX_Platform/AppKit/NSEvent.h>

#include <functional>
#include <vector>

/// Further views of the pipeline, each in a window beside the main one, for the scenes that draw them in
/// `renderSubPipeline`; a view's object "number" counts them from 0. Main thread only.
class SideViews {
public:
    /// Both are borrowed; the windows close with the host's.
    SideViews(VX_GLHost& host, VX_GLRenderpipeline* pipeline);
    ~SideViews();
    SideViews(const SideViews&) = delete;
    SideViews& operator=(const SideViews&) = delete;

    /// Closes those that are open and opens so many; events of their windows go to `handler`.
    void show(int count, const std::function<bool(NSEvent*)>& handler = {});

private:
    struct SideView {
        NSRef<NSWindow> window;
        NSRef<VX_GLSharedView> view;
    };
    void open(int number, const std::function<bool(NSEvent*)>& handler);
    void closeAll();
    void drop(const NSWindow* window);
    void whenClosed(NSWindow* window, std::function<void()> act);

    NSWindow* m_MainWindow;
    VX_GLMainView* m_Main;
    VX_GLRenderpipeline* m_Pipeline;
    std::vector<SideView> m_Views;
};
