// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/VX_Export.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace vx {
class LiveShaders;
}
class VX_FragmentShader;
class VX_GLFilter;
class VX_GeometryShader;
class VX_Program;
class VX_VertexShader;
struct VX_GLGeometryShaderInformation;

/// Turns what a filter declares into live GL objects. Holds the directories in which shader files are looked
/// for, a default resolution, and caches of compiled shaders by file name, so that a file is compiled once
/// however many filters use it.
///
/// Shader files are plain UTF-8 text and go to GL exactly as they stand; there is no preprocessing, and a
/// file's extension means nothing. The one exception are geometry shaders without a layout of their own, on
/// drivers without GL_EXT_geometry_shader4: `VX_GeometryShader` tells what becomes of them. File names are
/// the keys of the caches as the filter's table gives them, without directory and byte by byte. A file that
/// changes on disk is not read again, unless `WatchShaderFiles` asks for that; a shader that failed is not
/// cached and is tried again by the next filter that names it.
///
/// Order of use: `AddResourcePath` and `SetResolution`, then `SetupFilter` for each filter. What makes or
/// deletes a shader needs a GL 2.0 context current on the calling thread, the destructor included: always one
/// of the same share group, since the cached shaders are nothing, or other objects, in another. So there is a
/// manager for each share group. Not for several threads at once.
class VX_EXPORT VX_GLFilterManager {
public:
    /// Without directories, 0 x 0; makes no GL call.
    VX_GLFilterManager();
    /// Deletes the cached vertex shaders, then the fragment shaders, each in the order of their names. The
    /// geometry shaders in the cache are not deleted. GL: glDeleteShader.
    virtual ~VX_GLFilterManager();
    VX_GLFilterManager(const VX_GLFilterManager&) = delete;
    VX_GLFilterManager& operator=(const VX_GLFilterManager&) = delete;

    /// Default width and height in pixels for later calls of `SetupFilter`. Always true.
    bool SetResolution(int width, int height);
    /// Adds a directory (UTF-8, copied) to those searched; it need not exist, and one added twice is searched
    /// twice. A "/" is appended in any case.
    void AddResourcePath(const char* directory);

    /// Full path of the file in the first directory, in the order of addition, that has it. When none has, an
    /// alert blocks the calling thread until it is dismissed, and the result is empty. No other place is
    /// searched: an absolute name too is put behind each directory.
    std::string QueryShaderPath(std::string fileName);
    /// Text of the file that `QueryShaderPath` finds, up to its first NUL. A file that is missing, cannot be
    /// read or is not UTF-8 ends the process with a message, after the alert where there was one; that of a
    /// missing one names the directories.
    std::string LoadShaderFileToString(const char* fileName);

    /// A new shader compiled from source text (NUL-terminated, not null), the caller's to delete, or null
    /// when it does not compile, with the report of its `loadAndCompile`. Nothing is cached.
    VX_VertexShader* CreateVShader(const char* source);
    VX_FragmentShader* CreatePShader(const char* source);
    VX_GeometryShader* CreateGShader(const char* source);

    /// The cached shader of that file name, owned by the manager, or null. Makes no GL call.
    VX_VertexShader* QueryVShader(const char* fileName);
    VX_FragmentShader* QueryPShader(const char* fileName);
    VX_GeometryShader* QueryGShader(const char* fileName);

    /// Puts a shader into the cache, which takes it over. Where the name is taken the cached one stays, and
    /// the new one stays the caller's.
    void RegisterVShader(const char* fileName, VX_VertexShader* shader);
    void RegisterPShader(const char* fileName, VX_FragmentShader* shader);
    void RegisterGShader(const char* fileName, VX_GeometryShader* shader);

    /// Gives the filter (not null, not taken over) what it declares, in this order: if `NeedFrameBuffer`, its
    /// `SetResolution` with width and height in pixels, or with both of the manager's where either is below
    /// 1, and `GetMinRTCount` textures of the internal format and pixel type in the target's size; a program
    /// for each row of `ShadersInformation`, then of `GeometryShadersInformation`; then its `Setup`. Returns
    /// the filter, or null when `Setup` said false; the filter keeps what it has. Shaders and programs that
    /// fail are logged and do not fail the setup. A program is made without a shader that does not compile:
    /// one of a failed fragment shader has the vertex shader alone and draws by the fixed functions, and a
    /// geometry shader that fails makes no line of its own in the log. A row whose program does not link has
    /// no program. A filter set up twice has each program twice. GL: as `VX_GLRenderTarget`, the shader
    /// classes and `VX_Program`, with what they leave bound.
    VX_GLFilter* SetupFilter(VX_GLFilter* filter, int width, int height, unsigned int internalFormat,
                             unsigned int type);
    /// What failed in the last `SetupFilter`, one line each, as diagnostics log it: "file:line: message" with
    /// that line of the shader, the files of a program that does not link, a share group that is not the one
    /// of the cached shaders. Makes no GL call.
    const std::vector<std::string>& Failures() const { return m_Failures; }

    /// Follows the files of the filters that are set up from now on, or ends that; off at first. A thread of
    /// its own looks for changes ten times a second, so that nothing is read between two frames: files may be
    /// replaced by renaming, be gone for a while or appear in a directory that is searched earlier. True when
    /// they are followed; false, with a line in the log, when there is no thread to be had. Makes no GL call.
    bool WatchShaderFiles(bool watch);
    /// Builds the programs of changed files anew, for a host to call between two frames:
    ///
    ///     void renderPipeline(CGRect* bounds) override {
    ///         m_Manager->RebuildChangedPrograms();
    ///
    /// The `VX_Program`s stay the objects they are and get another `m_Program`, with the attribute locations
    /// and the values of uniforms that the host has set in the former one; those that it left alone begin
    /// with the values in the new text. A row that had failed gets its program at its place in `m_Programs`.
    /// One that fails now keeps its last good program, also in filters that are set up later. `Setup` is not
    /// called again. True when a file has changed, for better or worse. Needs the context, and
    /// `WatchShaderFiles`; while nothing has changed it makes no GL call and costs some nanoseconds.
    /// GL: as the shader classes and `VX_Program`, glGetActiveUniform, glGetUniform*, glBindAttribLocation,
    /// glUniform*, glUseProgram. The current program stays, but for one that was replaced: it is on its way
    /// out, and the next `activeProgram` takes the new one.
    bool RebuildChangedPrograms();
    /// What fails as the watched files are now, one line each like `Failures`, for a host that shows them
    /// over the picture; empty when all is well. Makes no GL call.
    const std::vector<std::string>& RebuildFailures() const;

    /// A program for the filter, owned by it, made of two source texts outside the caches and files; null on
    /// failure. The two shaders live on with nobody to free them.
    VX_Program* MakeProgramForFilter(VX_GLFilter* filter, const char* vertexSource,
                                     const char* fragmentSource);

    /// What `SetResolution` was given, in pixels.
    int m_Width = 0;
    int m_Height = 0;
    /// Directories, each ending in "/", in the order of addition.
    std::vector<std::string> m_ResourcePaths;
    /// Owned, by file name.
    std::map<std::string, VX_VertexShader*, std::less<>> m_VShaders;
    std::map<std::string, VX_FragmentShader*, std::less<>> m_PShaders;
    /// By file name; never deleted.
    std::map<std::string, VX_GeometryShader*, std::less<>> m_GShaders;

private:
    void setUpRenderTarget(VX_GLFilter& filter, int width, int height, unsigned int internalFormat,
                           unsigned int type);
    std::string foundPath(const std::string& fileName) const;
    template <class Shader>
    VX_HIDDEN Shader* shaderOf(std::map<std::string, Shader*, std::less<>>& cache, const char* fileName,
                               const char* kind);
    void makeProgram(VX_GLFilter& filter, const VX_GLGeometryShaderInformation& row);
    void checkShareGroup();
    void fail(const std::string& line);

    std::vector<std::string> m_Failures;
    /// Null while files are not watched.
    std::unique_ptr<vx::LiveShaders> m_Live;
    /// That of the contexts that the cached shaders belong to; null while it is not known.
    const void* m_ShareGroup = nullptr;
};
