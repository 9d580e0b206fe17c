// SPDX-License-Identifier: MIT
#include <tests/support/GLRecorder.h>

#include <epoxy/gl.h>

#include <EGL/egl.h>

#include <algorithm>

namespace vx::test {

namespace {

GLRecorder* s_Recorder = nullptr;

struct Row {
    void (*install)(const char* name, bool forwarded);
    void (*remove)();
    const char* name;
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
        s_Recorder->note(call(name, values...));
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
    { Hook<epoxy_gl##entry>::install, Hook<epoxy_gl##entry>::remove, "gl" #entry }

const Row kRows[] = {GL_ROW(CreateShader),   GL_ROW(DeleteShader),  GL_ROW(CreateProgram),
                     GL_ROW(LinkProgram),    GL_ROW(DeleteProgram), GL_ROW(ProgramParameteriEXT),
                     GL_ROW(DeleteTextures), GL_ROW(DrawArrays),    GL_ROW(DrawElements)};

} // namespace

GLRecorder::GLRecorder() {
    s_Recorder = this;
    const bool shaders4 = epoxy_has_gl_extension("GL_EXT_geometry_shader4");
    for (const Row& row : kRows)
        row.install(row.name, shaders4 || !std::string_view(row.name).ends_with("EXT"));
}

GLRecorder::~GLRecorder() {
    for (const Row& row : kRows)
        row.remove();
    s_Recorder = nullptr;
}

int GLRecorder::count(const std::string& name) const {
    return static_cast<int>(std::count_if(m_Lines.begin(), m_Lines.end(), [&](const std::string& line) {
        return line.starts_with(name + "(");
    }));
}

} // namespace vx::test
