// SPDX-License-Identifier: MIT
#pragma once

#include <epoxy/gl.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

namespace vx::test {

/// Stands in for the GL calls of client arrays and for `glDeleteTextures` while it lives, one at a time. What
/// the pointers name is copied when it is drawn. No context is needed.
class ClientArrayRecorder {
public:
    ClientArrayRecorder() {
        s_Recorder = this;
        swapAll();
    }
    ~ClientArrayRecorder() {
        swapAll();
        s_Recorder = nullptr;
    }

    /// One line a call, "name(arguments)" with GL's numbers in hexadecimal.
    std::vector<std::string> calls;
    /// What the last draw found behind the vertex and texture pointers.
    std::vector<float> vertices, texCoords;

private:
    struct Array {
        int components = 0;
        const float* data = nullptr;

        std::vector<float> copy(int count) const {
            return data ? std::vector<float>(data, data + components * count) : std::vector<float>();
        }
    };

    static void note(const char* name, std::vector<unsigned> arguments) {
        std::string text = name;
        for (std::size_t i = 0; i < arguments.size(); ++i) {
            char number[16];
            std::snprintf(number, sizeof number, "%s%x", i ? " " : "(", arguments[i]);
            text += number;
        }
        s_Recorder->calls.push_back(text + ")");
    }
    static void GLAPIENTRY enable(GLenum array) { note("enable", {array}); }
    static void GLAPIENTRY disable(GLenum array) { note("disable", {array}); }
    static void GLAPIENTRY vertexPointer(GLint size, GLenum type, GLsizei stride, const void* data) {
        note("vertex", {unsigned(size), type, unsigned(stride)});
        s_Recorder->m_Vertex = {size, static_cast<const float*>(data)};
    }
    static void GLAPIENTRY texCoordPointer(GLint size, GLenum type, GLsizei stride, const void* data) {
        note("texcoord", {unsigned(size), type, unsigned(stride)});
        s_Recorder->m_TexCoord = {size, static_cast<const float*>(data)};
    }
    static void GLAPIENTRY draw(GLenum mode, GLint first, GLsizei count) {
        note("draw", {mode, unsigned(first), unsigned(count)});
        s_Recorder->vertices = s_Recorder->m_Vertex.copy(count);
        s_Recorder->texCoords = s_Recorder->m_TexCoord.copy(count);
    }
    static void GLAPIENTRY deleteTextures(GLsizei count, const GLuint* names) {
        note("delete", {unsigned(count), *names});
    }

    void swapAll() {
        std::swap(epoxy_glEnableClientState, m_Enable);
        std::swap(epoxy_glDisableClientState, m_Disable);
        std::swap(epoxy_glVertexPointer, m_VertexPointer);
        std::swap(epoxy_glTexCoordPointer, m_TexCoordPointer);
        std::swap(epoxy_glDrawArrays, m_Draw);
        std::swap(epoxy_glDeleteTextures, m_DeleteTextures);
    }

    static inline ClientArrayRecorder* s_Recorder = nullptr;
    Array m_Vertex, m_TexCoord;
    decltype(epoxy_glEnableClientState) m_Enable = enable;
    decltype(epoxy_glDisableClientState) m_Disable = disable;
    decltype(epoxy_glVertexPointer) m_VertexPointer = vertexPointer;
    decltype(epoxy_glTexCoordPointer) m_TexCoordPointer = texCoordPointer;
    decltype(epoxy_glDrawArrays) m_Draw = draw;
    decltype(epoxy_glDeleteTextures) m_DeleteTextures = deleteTextures;
};

} // namespace vx::test
