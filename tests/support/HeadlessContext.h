// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/AppKit/NSApplication.h>
#include <VX_Platform/OpenGL/NSOpenGLContext.h>
#include <VX_Platform/OpenGL/NSOpenGLPixelFormat.h>
#include <VX_Platform/OpenGL/NSOpenGLView.h>

#include <stdexcept>
#include <vector>

namespace vx::test {

/// A fresh context with an off-screen surface of the given size in pixels, current on the calling thread from
/// construction to destruction: colour 24 bit with 8 of alpha, depth 24.
class HeadlessContext {
public:
    HeadlessContext(int width, int height) {
        NSApplication::useHeadlessPlatform();
        const std::vector<unsigned> words({NSOpenGLPFADoubleBuffer, NSOpenGLPFAColorSize, 24,
                                           NSOpenGLPFAAlphaSize, 8, NSOpenGLPFADepthSize, 24, 0});
        auto format =
            NSRef<NSOpenGLPixelFormat>::adopt((new NSOpenGLPixelFormat)->initWithAttributes(words.data()));
        m_View = NSInit(new NSOpenGLView, CGRectMake(0, 0, width, height), format.get());
        if (!m_View->openGLContext() || !m_View->openGLContext()->makeCurrentContext())
            throw std::runtime_error("no context");
    }
    ~HeadlessContext() { m_View->clearGLContext(); }
    HeadlessContext(const HeadlessContext&) = delete;
    HeadlessContext& operator=(const HeadlessContext&) = delete;

    NSOpenGLContext* context() const { return m_View->openGLContext(); }
    NSOpenGLView* view() const { return m_View.get(); }

private:
    NSRef<NSOpenGLView> m_View;
};

} // namespace vx::test
