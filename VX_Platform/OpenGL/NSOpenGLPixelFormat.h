// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/Foundation/NSObject.h>
#include <VX_Platform/OpenGL/CGL.h>

#include <cstdint>
#include <memory>

/// Words of a pixel format's attribute list. Those marked with a value are followed by one.
enum NSOpenGLPixelFormatAttributes : std::uint32_t {
    NSOpenGLPFAAllRenderers = 1,
    NSOpenGLPFATripleBuffer = 3,
    NSOpenGLPFADoubleBuffer = 5,
    NSOpenGLPFAStereo = 6,
    NSOpenGLPFAAuxBuffers = 7,   ///< value: number of auxiliary buffers
    NSOpenGLPFAColorSize = 8,    ///< value: bits
    NSOpenGLPFAAlphaSize = 11,   ///< value: bits
    NSOpenGLPFADepthSize = 12,   ///< value: bits
    NSOpenGLPFAStencilSize = 13, ///< value: bits
    NSOpenGLPFAAccumSize = 14,   ///< value: bits
    NSOpenGLPFAMinimumPolicy = 51,
    NSOpenGLPFAMaximumPolicy = 52,
    NSOpenGLPFAOffScreen = 53,
    NSOpenGLPFAFullScreen = 54,
    NSOpenGLPFASampleBuffers = 55, ///< value: 0 or 1
    NSOpenGLPFASamples = 56,       ///< value: samples for each pixel
    NSOpenGLPFAAuxDepthStencil = 57,
    NSOpenGLPFAColorFloat = 58,
    NSOpenGLPFAMultisample = 59,
    NSOpenGLPFASupersample = 60,
    NSOpenGLPFASampleAlpha = 61,
    NSOpenGLPFARendererID = 70, ///< value: renderer
    NSOpenGLPFASingleRenderer = 71,
    NSOpenGLPFANoRecovery = 72,
    NSOpenGLPFAAccelerated = 73,
    NSOpenGLPFAClosestPolicy = 74,
    NSOpenGLPFARobust = 75,
    NSOpenGLPFABackingStore = 76,
    NSOpenGLPFAMPSafe = 78,
    NSOpenGLPFAWindow = 80,
    NSOpenGLPFAMultiScreen = 81,
    NSOpenGLPFACompliant = 83,
    NSOpenGLPFAScreenMask = 84, ///< value: bit mask of displays
    NSOpenGLPFAPixelBuffer = 90,
    NSOpenGLPFARemotePixelBuffer = 91,
    NSOpenGLPFAAllowOfflineRenderers = 96,
    NSOpenGLPFAAcceleratedCompute = 97,
    NSOpenGLPFAOpenGLProfile = 99,      ///< value: one of the profiles below
    NSOpenGLPFAVirtualScreenCount = 128 ///< value: number of virtual screens
};

/// Values of `NSOpenGLPFAOpenGLProfile`. The toolkit draws with the compatibility profile, so only the first
/// is served.
enum NSOpenGLProfile : std::uint32_t {
    NSOpenGLProfileVersionLegacy = 0x1000,
    NSOpenGLProfileVersion3_2Core = 0x3200,
    NSOpenGLProfileVersion4_1Core = 0x4100
};

/// What a context and its surface are to be like.
class VX_EXPORT NSOpenGLPixelFormat : public NSObject {
public:
    VX_RETURNS_OWN_TYPE(NSOpenGLPixelFormat)

    NSOpenGLPixelFormat();

    /// Chooses from a list of words closed by 0. Sizes are taken as minima; words about renderers, policies
    /// and kinds of drawable are accepted and choose nothing, since a machine here has one driver. Starts the
    /// platform if need be. Any thread, no context needed.
    ///
    /// Returns the object, or releases it and returns null, with one line in the log, when the list is null,
    /// holds an unknown word, asks for what no configuration has (stereo, auxiliary, accumulation or float
    /// buffers, a core profile) or when the platform cannot start.
    NSOpenGLPixelFormat* initWithAttributes(const std::uint32_t* attributes);

    /// The object itself, under CGL's name for it.
    NSOpenGLPixelFormat* CGLPixelFormatObj() { return this; }

    /// The library's own side of a format.
    struct VX_HIDDEN Internals;

protected:
    ~NSOpenGLPixelFormat() override;

private:
    std::unique_ptr<Internals> m_Internals;
};
