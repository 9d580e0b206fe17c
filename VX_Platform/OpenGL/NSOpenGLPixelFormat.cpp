// SPDX-License-Identifier: MIT
#include <VX_Platform/OpenGL/NSOpenGLPixelFormat.h>

#include <VX_Platform/AppKit/private/RunningPlatform.h>
#include <VX_Platform/Foundation/NSLog.h>
#include <VX_Platform/OpenGL/private/PixelFormatInternals.h>

namespace {

bool takesValue(std::uint32_t word) {
    switch (word) {
        case NSOpenGLPFAAuxBuffers:
        case NSOpenGLPFAColorSize:
        case NSOpenGLPFAAlphaSize:
        case NSOpenGLPFADepthSize:
        case NSOpenGLPFAStencilSize:
        case NSOpenGLPFAAccumSize:
        case NSOpenGLPFASampleBuffers:
        case NSOpenGLPFASamples:
        case NSOpenGLPFARendererID:
        case NSOpenGLPFAScreenMask:
        case NSOpenGLPFAOpenGLProfile:
        case NSOpenGLPFAVirtualScreenCount:
            return true;
        default:
            return false;
    }
}

// Takes one word with its value into the request. Returns why it cannot be served, or null.
const char* take(std::uint32_t word, std::uint32_t value, vx::GLFormatRequest& request) {
    // A size above any that exists must not turn negative on its way.
    const int bits = static_cast<int>(value > 0xFFFF ? 0xFFFF : value);
    switch (word) {
        case NSOpenGLPFAColorSize:
            request.colorBits = bits;
            return nullptr;
        case NSOpenGLPFAAlphaSize:
            request.alphaBits = bits;
            return nullptr;
        case NSOpenGLPFADepthSize:
            request.depthBits = bits;
            return nullptr;
        case NSOpenGLPFAStencilSize:
            request.stencilBits = bits;
            return nullptr;
        case NSOpenGLPFASampleBuffers:
            request.sampleBuffers = bits;
            return nullptr;
        case NSOpenGLPFASamples:
            request.samples = bits;
            if (bits > 0 && request.sampleBuffers < 0)
                request.sampleBuffers = 1;
            return nullptr;
        case NSOpenGLPFAAuxBuffers:
            return value ? "auxiliary buffers" : nullptr;
        case NSOpenGLPFAAccumSize:
            return value ? "an accumulation buffer" : nullptr;
        case NSOpenGLPFAStereo:
            return "stereo";
        case NSOpenGLPFAColorFloat:
            return "a float colour buffer";
        case NSOpenGLPFAOpenGLProfile:
            return value == NSOpenGLProfileVersionLegacy ? nullptr : "a core profile";
        case NSOpenGLPFAAllRenderers:
        case NSOpenGLPFATripleBuffer:
        case NSOpenGLPFADoubleBuffer:
        case NSOpenGLPFAMinimumPolicy:
        case NSOpenGLPFAMaximumPolicy:
        case NSOpenGLPFAOffScreen:
        case NSOpenGLPFAFullScreen:
        case NSOpenGLPFAAuxDepthStencil:
        case NSOpenGLPFAMultisample:
        case NSOpenGLPFASupersample:
        case NSOpenGLPFASampleAlpha:
        case NSOpenGLPFARendererID:
        case NSOpenGLPFASingleRenderer:
        case NSOpenGLPFANoRecovery:
        case NSOpenGLPFAAccelerated:
        case NSOpenGLPFAClosestPolicy:
        case NSOpenGLPFARobust:
        case NSOpenGLPFABackingStore:
        case NSOpenGLPFAMPSafe:
        case NSOpenGLPFAWindow:
        case NSOpenGLPFAMultiScreen:
        case NSOpenGLPFACompliant:
        case NSOpenGLPFAScreenMask:
        case NSOpenGLPFAPixelBuffer:
        case NSOpenGLPFARemotePixelBuffer:
        case NSOpenGLPFAAllowOfflineRenderers:
        case NSOpenGLPFAAcceleratedCompute:
        case NSOpenGLPFAVirtualScreenCount:
            return nullptr;
        default:
            return "an unknown attribute";
    }
}

bool readAttributes(const std::uint32_t* list, vx::GLFormatRequest& request) {
    for (const std::uint32_t* p = list; *p;) {
        const std::uint32_t word = *p++;
        const std::uint32_t value = takesValue(word) ? *p++ : 0;
        if (const char* refused = take(word, value, request)) {
            NSLog("Pixel format: %s (attribute %u, value %u) is not available", refused, word, value);
            return false;
        }
    }
    return true;
}

} // namespace

NSOpenGLPixelFormat::NSOpenGLPixelFormat() : m_Internals(std::make_unique<Internals>()) {}
NSOpenGLPixelFormat::~NSOpenGLPixelFormat() = default;

NSOpenGLPixelFormat* NSOpenGLPixelFormat::initWithAttributes(const std::uint32_t* attributes) {
    vx::GLFormatRequest request;
    if (attributes && readAttributes(attributes, request))
        m_Internals->platform = vx::runningPlatform();
    if (m_Internals->platform) {
        m_Internals->config = m_Internals->platform->gl().chooseConfig(request);
        if (m_Internals->config)
            return this;
        NSLog(
            "Pixel format: no configuration has colour %d, alpha %d, depth %d, stencil %d bits and %d "
            "samples",
            request.colorBits, request.alphaBits, request.depthBits, request.stencilBits, request.samples);
    }
    release();
    return nullptr;
}
