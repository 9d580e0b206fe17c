// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/VX_Export.h>

class NSMutableArray;

/// One ability that a host requires; it fills in name and version.
struct glExtension {
    /// As GL reports it: "GL_EXT_framebuffer_blit". Null closes a table of unknown length.
    const char* Name;
    /// GL version whose core has the ability; 0 if only the extension will do.
    float Version;
    /// What the check found out.
    bool Supported;
};

/// What a driver can do: its numbers, and a check of what the host requires. A pipeline's subclass makes one
/// in `attachGLContext` or `doStartRender` and puts it into `m_GLExtension`; the pipeline deletes it. Missing
/// abilities are only told: what to do about them is the host's.
///
/// Constructor and check need a context current on the calling thread, of which they change nothing.
class VX_EXPORT VX_CheckGLExtensions {
public:
    /// Reads the numbers and logs them in four lines: renderer and version, "SHADING_LANGUAGE_VERSION: %d",
    /// "GL_MAX_SAMPLES_EXT: %d", "GL_MAX_COLOR_ATTACHMENTS: %d". GL: glGetString, glGetIntegerv.
    VX_CheckGLExtensions();
    virtual ~VX_CheckGLExtensions() = default;

    /// Writes `Supported` of each record: the extension is reported, or the version is in the core. `count`
    /// is the number of records; a negative one means all up to the first without a name. In a counted table
    /// a record without a name goes by its version alone. The table is borrowed, and null is an empty one.
    ///
    /// `messages`, borrowed, null for none, is emptied and then holds the line of renderer and version, and
    /// "%@ is not supported." for each record that is not, in their order. Returns whether all are.
    /// `m_GLVersion` is read afresh. GL: glGetString, glGetStringi, glGetIntegerv.
    bool CheckGLExtensions(int count, glExtension* table, NSMutableArray* messages);

    /// The number that GL_VERSION begins with: 2.1 of "2.1.2 ...".
    float m_GLVersion = 0.0f;
    /// Never used; it keeps its place.
    float m_Reserved = 0.0f;
    /// GL_MAX_SAMPLES_EXT; 0 where GL has no multisampled renderbuffers.
    int m_MaxSamples = 0;
    /// Version of the shading language times 100: 120 of "1.20"; the product is cut, which gives 419 of
    /// "4.20".
    int m_ShadingLanguageVersion = 0;
};
