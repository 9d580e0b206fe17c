// SPDX-License-Identifier: MIT
#include <tests/support/GLRecorder.h>

#include <epoxy/gl.h>

#include <EGL/egl.h>

#include <algorithm>

namespace vx::test {

namespace {

GLRecorder* s_Recorder = nullptr;

template <class Value>
std::string argument(Value value) {
    // Memory that GL writes into is not looked at; what it reads is a text or an address.
    if constexpr (std::is_pointer_v<Value> && !std::is_const_v<std::remove_pointer_t<Value>> &&
                  !std::is_void_v<std::remove_pointer_t<Value>>)
        return value ? text(out) : text(nullptr);
    else
        return text(value);
}

template <class... Arguments>
std::string arguments(Arguments... values) {
    std::string line;
    ((line += (line.empty() ? "" : ", ") + argument(values)), ...);
    return line;
}

// Lists of names and of buffers to draw into.
std::string arguments(GLsizei count, const GLuint* names) {
    return text(count) + ", " + text(std::vector<unsigned>(names, names + std::max(count, 0)));
}

std::string arguments(GLuint shader, GLsizei count, const GLchar* const* texts, const GLint* lengths) {
    return text(shader) + ", " + text(count) + ", " + text(*texts) + ", " + text((const void*)lengths);
}

struct Row {
    void (*install)(const char* name, bool forwarded);
    void (*remove)();
    const char* name;
    const char* extension;
};

// What stands in for one of libepoxy's function pointers.
template <auto& Entry, class Function = std::remove_reference_t<decltype(Entry)>>
struct Hook;

template <auto& Entry, class Result, class... Arguments>
struct Hook<Entry, Result (*)(Arguments...)> {
    using Function = Result (*)(Arguments...);
    static inline const char* name;
    static inline Function driver, former;

    static Result record(Arguments... values) {
        s_Recorder->note(std::string(name) + "(" + arguments(values...) + ")");
        return driver ? driver(values...) : Result();
    }
    // The driver's own function: libepoxy's first value replaces itself when it is called.
    static void install(const char* entry, bool forwarded) {
        name = entry;
        driver = forwarded ? reinterpret_cast<Function>(eglGetProcAddress(entry)) : nullptr;
        former = std::exchange(Entry, &record);
    }
    static void remove() { Entry = former; }
};

#define GL_ROW(entry) \
    { Hook<epoxy_gl##entry>::install, Hook<epoxy_gl##entry>::remove, "gl" #entry, nullptr }
#define GL_ROW_OF(extension, entry) \
    { Hook<epoxy_gl##entry>::install, Hook<epoxy_gl##entry>::remove, "gl" #entry, extension }

const Row rows[] = {
    // textures
    GL_ROW(ActiveTexture), GL_ROW(BindTexture), GL_ROW(DeleteTextures), GL_ROW(GenTextures),
    GL_ROW(TexImage2D), GL_ROW(TexParameterf), GL_ROW(TexParameteri), GL_ROW(GenerateMipmapEXT),
    // framebuffers
    GL_ROW(BindFramebufferEXT), GL_ROW(BindRenderbufferEXT), GL_ROW(BlitFramebufferEXT),
    GL_ROW(CheckFramebufferStatusEXT), GL_ROW(DeleteFramebuffersEXT), GL_ROW(DeleteRenderbuffersEXT),
    GL_ROW(FramebufferRenderbufferEXT), GL_ROW(FramebufferTexture2DEXT), GL_ROW(GenFramebuffersEXT),
    GL_ROW(GenRenderbuffersEXT), GL_ROW(GetRenderbufferParameterivEXT), GL_ROW(RenderbufferStorageEXT),
    GL_ROW(RenderbufferStorageMultisampleEXT), GL_ROW(DrawBuffer), GL_ROW(DrawBuffers), GL_ROW(ReadBuffer),
    // state and matrices
    GL_ROW(Enable), GL_ROW(Disable), GL_ROW(Viewport), GL_ROW(GetError), GL_ROW(MatrixMode),
    GL_ROW(LoadIdentity), GL_ROW(Ortho), GL_ROW(Lightfv),
    // immediate mode
    GL_ROW(Begin), GL_ROW(End), GL_ROW(TexCoord2f), GL_ROW(Vertex2f),
    // arrays
    GL_ROW(EnableClientState), GL_ROW(DisableClientState), GL_ROW(VertexPointer), GL_ROW(ColorPointer),
    GL_ROW(NormalPointer), GL_ROW(TexCoordPointer), GL_ROW(DrawArrays), GL_ROW(DrawElements),
    GL_ROW(DrawArraysInstancedARB), GL_ROW(EnableVertexAttribArray), GL_ROW(EnableVertexAttribArrayARB),
    GL_ROW(DisableVertexAttribArray), GL_ROW(DisableVertexAttribArrayARB), GL_ROW(VertexAttribPointer),
    GL_ROW(VertexAttribPointerARB),
    // buffers
    GL_ROW(BindBuffer), GL_ROW(BufferData), GL_ROW(BufferSubData), GL_ROW(DeleteBuffers), GL_ROW(GenBuffers),
    GL_ROW(MapBuffer), GL_ROW(UnmapBuffer),
    // shaders and programs
    GL_ROW(AttachShader), GL_ROW(CompileShader), GL_ROW(CreateProgram), GL_ROW(CreateShader),
    GL_ROW(DeleteProgram), GL_ROW(DeleteShader), GL_ROW(DetachShader), GL_ROW(GetProgramInfoLog),
    GL_ROW(GetProgramiv), GL_ROW(GetShaderInfoLog), GL_ROW(GetShaderiv), GL_ROW(LinkProgram),
    GL_ROW(ShaderSource), GL_ROW(UseProgram), GL_ROW(GetAttribLocation), GL_ROW(GetUniformLocation),
    GL_ROW(VertexAttrib3fv), GL_ROW(Uniform1f), GL_ROW(Uniform1fv), GL_ROW(Uniform1i), GL_ROW(Uniform2f),
    GL_ROW(Uniform2fv), GL_ROW(Uniform3f), GL_ROW(Uniform3fv), GL_ROW(Uniform4f), GL_ROW(Uniform4fv),
    GL_ROW(UniformMatrix3fv), GL_ROW(UniformMatrix4fv),
    GL_ROW_OF("GL_EXT_geometry_shader4", ProgramParameteriEXT)};

} // namespace

GLRecorder::GLRecorder() {
    s_Recorder = this;
    for (const Row& row : rows)
        row.install(row.name, !row.extension || epoxy_has_gl_extension(row.extension));
}

GLRecorder::~GLRecorder() {
    for (const Row& row : rows)
        row.remove();
    s_Recorder = nullptr;
}

int countOf(const GLRecorder::Lines& lines, const std::string& name) {
    return static_cast<int>(std::count_if(lines.begin(), lines.end(), [&](const std::string& line) {
        return line.compare(0, name.size() + 1, name + "(") == 0;
    }));
}

} // namespace vx::test
