// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/host/VX_GLRenderpipeline.h>

#include <VX_OpenGL64/host/VX_CheckGLExtensions.h>
#include <VX_OpenGL64/host/VX_GLMainView.h>
#include <VX_OpenGL64/output/VX_FinalOutputManager.h>
#include <VX_Platform/Foundation/NSTimer.h>

VX_GLRenderpipeline* VX_GLRenderpipeline::init() {
    if (!NSObject::init())
        return nullptr;
    m_IdleTimerInterval = 1.0 / 30.0;
    m_FinalOutputManager = (new VX_FinalOutputManager)->init();
    return this;
}

void VX_GLRenderpipeline::dealloc() {
    if (m_FinalOutputManager)
        m_FinalOutputManager->release();
    delete m_GLExtension;
    NSObject::dealloc();
}

void VX_GLRenderpipeline::doStopRender() {
    if (!m_PrimaryThreadTimer)
        return;
    m_PrimaryThreadTimer->invalidate();
    m_PrimaryThreadTimer->release();
    m_PrimaryThreadTimer = nullptr;
}

void VX_GLRenderpipeline::DoSuspend() {
    m_StartUpInitialized = false;
    if (m_TargetGLView)
        m_TargetGLView->SetSkipRenderThread(true);
}

void VX_GLRenderpipeline::DoResume() {
    // A fixed constant, not a time.
    m_TimeCounter = -1.0;
    m_StartUpInitialized = true;
    if (m_TargetGLView)
        m_TargetGLView->SetSkipRenderThread(false);
}
