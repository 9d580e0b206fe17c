// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/VX_Export.h>

#include <memory>
#include <string>
#include <vector>

namespace vx {
class LiveShaders;
}
class VX_FragmentShader;
class VX_GLFilterManager;
class VX_GLRenderTarget;
class VX_GeometryShader;
class VX_Program;
class VX_VertexShader;

/// Row of the table of a filter's programs: shader file names. A row with a null name closes the table.
struct VX_GLShaderInformation {
    /// Names of the files, looked for in the manager's resource paths.
    const char* vertexShader;
    const char* fragmentShader;
};

/// Row of the table of a filter's programs with a geometry stage: shader file names and the arguments of
/// `VX_Program::attachGeometryShader`. A row with a null name closes the table.
struct VX_GLGeometryShaderInformation {
    /// Names of the files, looked for in the manager's resource paths.
    const char* vertexShader;
    const char* fragmentShader;
    const char* geometryShader;
    /// GL primitive types that the stage takes and gives, and how many vertices it emits at the most.
    int inputType;
    int outputType;
    int verticesOut;
};

/// Base class of post-processing filters: owns one render target and a list of programs, and draws
/// full-screen passes between them. It holds no effect of its own: a subclass declares what it needs through
/// the virtual operations, `VX_GLFilterManager::SetupFilter` builds it, and the subclass draws with it.
///
/// The constructor of a subclass with a frame buffer puts a `new` render target into `m_RenderTarget`.
/// Operations that forward to the render target end the process with a message when there is none. Everything
/// but the constructor and the declarations needs a GL context current on the calling thread, the destructor
/// included; GL calls and state are those of the `VX_GLRenderTarget` and `VX_Program` operations that are
/// named.
class VX_EXPORT VX_GLFilter {
public:
    /// Stores the manager, which is not owned and may be null; makes no GL call.
    explicit VX_GLFilter(VX_GLFilterManager* manager);
    /// Deletes the programs in order, then the render target. The shaders stay in the manager's caches.
    virtual ~VX_GLFilter();
    VX_GLFilter(const VX_GLFilter&) = delete;
    VX_GLFilter& operator=(const VX_GLFilter&) = delete;

    /// Programs to be made, one a row; the table stays the filter's and outlives the call. Null for none.
    virtual const VX_GLShaderInformation* ShadersInformation();
    /// Programs with a geometry stage; they follow the others in `m_Programs`. Null for none.
    virtual const VX_GLGeometryShaderInformation* GeometryShadersInformation();
    /// Whether there is a render target to size and to give textures; true here. A filter that says false may
    /// leave `m_RenderTarget` null, and then must not call what forwards to it.
    virtual bool NeedFrameBuffer();
    /// Number of colour textures, at attachments 0, 1, 2 and so on; 1 here. 0 with a
    /// `VX_GLMultiSampleRenderTarget`, which has made its attachments by then: a plain texture in the place
    /// of one leaves the framebuffer incomplete.
    virtual int GetMinRTCount();
    /// Whether the next texture is a 2D texture and not a rectangle texture; asked for each, false here.
    virtual bool IsRT2D();
    /// Sizes the render target in pixels and creates its framebuffer anew, also when the size stays, so that
    /// all textures are gone: outside `SetupFilter` call `CreateRT` or `Create2DRT` again. What a filter does
    /// when the picture's size changes, with the programs it has:
    ///
    ///     filter->SetResolution(width, height);
    ///     for (int i = 0; i < filter->GetMinRTCount(); ++i)
    ///         filter->CreateRT(GL_RGBA8, GL_UNSIGNED_BYTE, -1, -1);
    ///
    /// Returns the framebuffer status.
    virtual unsigned int SetResolution(int width, int height);
    /// Called at the end of `SetupFilter`, with the programs made; false makes it fail. True here.
    virtual bool Setup();
    /// For updates per frame; the toolkit never calls it, and what the number means is up to the host.
    virtual void FrameMove(double time);

    /// Links `program` (not null) of the shaders, each of which may be null; the integers are the input
    /// primitive type, output primitive type and most emitted vertices, and used only with a geometry shader.
    /// False, with a line in the log, when it does not link; the filter is not touched.
    bool AttachProgram(VX_Program* program, VX_VertexShader* vertex, VX_FragmentShader* fragment,
                       VX_GeometryShader* geometry, int inputType, int outputType, int verticesOut);
    /// Makes a program with `AttachProgram` and appends it to `m_Programs`. Returns it, owned by the filter,
    /// or null, with the list unchanged.
    VX_Program* CreateProgram(VX_VertexShader* vertex, VX_FragmentShader* fragment,
                              VX_GeometryShader* geometry, int inputType, int outputType, int verticesOut);

    /// The driver's words on the last `CreateProgram` that gave null. Makes no GL call.
    const std::string& failure() const { return m_Failure; }

    /// `AddTextureBuffer` of the render target.
    unsigned int CreateRT(unsigned int internalFormat, unsigned int type, int width, int height);
    /// `AddTexture2DBuffer` of the render target.
    unsigned int Create2DRT(unsigned int internalFormat, unsigned int type, int width, int height);
    /// `Bind` of the render target.
    void Bind(int index);
    /// `Binds` of the render target.
    void Binds(int count, unsigned int* buffers);
    /// `Unbind` of the render target.
    void Unbind();
    /// `DrawFullScreen` of the render target.
    void DrawFullScreen(int index);
    /// `DrawFullScreen2D` of the render target.
    void DrawFullScreen2D(int index);
    /// Name of colour texture `index`, owned by the render target; 0 when there is none. Makes no GL call.
    unsigned int GetRTexture(int index);

    /// Not owned; the base class never reads it.
    VX_GLFilterManager* m_Manager;
    /// In order of creation, owned. A program that failed has no place here, so an index equals its row in
    /// the tables only while no earlier row failed.
    std::vector<VX_Program*> m_Programs;
    /// Owned; null until the subclass creates it.
    VX_GLRenderTarget* m_RenderTarget = nullptr;

private:
    friend class vx::LiveShaders;
    VX_GLRenderTarget& renderTarget(const char* caller) const;

    std::string m_Failure;
    /// The filter, for who may outlive it.
    std::shared_ptr<VX_GLFilter*> m_Self;
};
