// SPDX-License-Identifier: MIT
#include <bench/RunningView.h>

#include <VX_Platform/AppKit/NSApplication.h>
#include <VX_Platform/OpenGL/NSOpenGLContext.h>
#include <VX_Platform/OpenGL/NSOpenGLPixelFormat.h>

namespace vx::bench {

RunningView::RunningView(int width, int height, VX_GLRenderpipeline* pipeline) {
    NSApplication* application = NSApplication::sharedApplication();
    const CGRect frame = CGRectMake(0, 0, width, height);
    m_Window = NSRef<NSWindow>::adopt((new NSWindow)->initWithContentRect(frame, NSTitledWindowMask));
    if (!m_Window)
        return;
    m_View = NSRef<VX_GLMainView>::adopt((new VX_GLMainView)->initWithFrame(frame, nullptr));
    m_View->AddPixelFormatAttribute(NSOpenGLPFADoubleBuffer);
    m_View->AddPixelFormatAttribute(NSOpenGLPFAColorSize, 24);
    m_View->AddPixelFormatAttribute(NSOpenGLPFADepthSize, 24);
    m_Window->setContentView(m_View.get());
    m_Window->makeKeyAndOrderFront();
    m_Ok = m_View->initializationWithPixelFormat(pipeline, m_View->GetPixelFormatAttributes());
    for (int step = 0; m_Ok && !m_View->displayLink() && step < 50; ++step)
        application->runStep(0.02);
    m_Ok = m_Ok && m_View->displayLink();
}

RunningView::~RunningView() {
    if (!m_View)
        return;
    m_View->stopRender();
    m_View->releaseResources();
    m_Window->close();
}

void RunningView::stepByHand() {
    m_View->stopRenderThread();
    NSOpenGLContext::clearCurrentContext();
    m_Record = {m_View->existingOpenGLContext(), m_View.get(), 0.0, 0};
}

void RunningView::refresh() {
    const CVTimeStamp now{};
    Heartbeat(nullptr, &now, &now, 0, nullptr, &m_Record);
}

} // namespace vx::bench
