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

#define GL_ROW(entry, extension) \
    { Hook<epoxy_gl##entry>::install, Hook<epoxy_gl##entry>::remove, "gl" #entry, extension }

const Row kRows[] = {GL_ROW(CreateShader, nullptr),   GL_ROW(DeleteShader, nullptr),
                     GL_ROW(CreateProgram, nullptr),  GL_ROW(LinkProgram, nullptr),
                     GL_ROW(DeleteProgram, nullptr),  GL_ROW(ProgramParameteriEXT, "GL_EXT_geometry_shader4"),
                     GL_ROW(DeleteTextures, nullptr), GL_ROW(DrawArrays, nullptr),
                     GL_ROW(DrawElements, nullptr)};

} // namespace

GLRecorder::GLRecorder() {
    s_Recorder = this;
    for (const Row& row : kRows)
        row.install(row.name, !row.extension || epoxy_has_gl_extension(row.extension));
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
