// SPDX-License-Identifier: MIT
// Drawing through the toolkit's classes beside the same calls by hand.
#include <bench/RatioTable.h>

#include <VX_OpenGL64/meshes/VX_GLMeshDataRenderer.h>
#include <VX_OpenGL64/meshes/VX_GLVertex.h>
#include <VX_OpenGL64/meshes/shapes/VX_GLGeometryCube.h>
#include <VX_OpenGL64/shaders/VX_FragmentShader.h>
#include <VX_OpenGL64/shaders/VX_GLFilter.h>
#include <VX_OpenGL64/shaders/VX_Program.h>
#include <VX_OpenGL64/shaders/VX_VertexShader.h>
#include <VX_OpenGL64/targets/VX_GLRenderTarget.h>
#include <tests/support/HeadlessContext.h>

#include <epoxy/gl.h>

namespace {

using vx::test::HeadlessContext;

constexpr int Width = 1920;
constexpr int Height = 1080;
constexpr int Draws = 1000;

// A box that is wholly outside the view: what is compared is the submitting of it.
class BoxScene {
    HeadlessContext m_Context{64, 64};

public:
    BoxScene() {
        glViewport(0, 0, 64, 64);
        glEnable(GL_CULL_FACE);
        glCullFace(GL_FRONT_AND_BACK);
        box.Generate(VX_GLVertexPN);
    }
    VX_GLGeometryCube box;
};

void drawBoxes(benchmark::State& state) {
    BoxScene scene;
    VX_GLMeshDataRenderer renderer;
    renderer.UpdateByMeshData(GL_STATIC_DRAW, GL_STATIC_DRAW, &scene.box);
    for (auto _ : state) {
        for (int draw = 0; draw < Draws; ++draw)
            renderer.Draw(GL_QUADS, VX_GLVertexPN, 0, 24);
        glFinish();
    }
}

void drawBoxesRaw(benchmark::State& state) {
    BoxScene scene;
    const VX_GLVertex& vertices = *scene.box.m_Vertex;
    GLuint buffer = 0;
    glGenBuffers(1, &buffer);
    glBindBuffer(GL_ARRAY_BUFFER, buffer);
    glBufferData(GL_ARRAY_BUFFER, vertices.m_Stride * vertices.m_Count, vertices.m_Data, GL_STATIC_DRAW);
    for (auto _ : state) {
        for (int draw = 0; draw < Draws; ++draw) {
            glEnableClientState(GL_VERTEX_ARRAY);
            glEnableClientState(GL_NORMAL_ARRAY);
            glBindBuffer(GL_ARRAY_BUFFER, buffer);
            glVertexPointer(3, GL_FLOAT, 24, nullptr);
            glNormalPointer(GL_FLOAT, 24, reinterpret_cast<const void*>(12));
            glDrawArrays(GL_QUADS, 0, 24);
            glBindBuffer(GL_ARRAY_BUFFER, 0);
            glDisableClientState(GL_NORMAL_ARRAY);
            glDisableClientState(GL_VERTEX_ARRAY);
        }
        glFinish();
    }
    glDeleteBuffers(1, &buffer);
}

constexpr const char* VertexText =
    "void main() { gl_Position = ftransform(); gl_TexCoord[0] = gl_MultiTexCoord0; }";
constexpr const char* FragmentText =
    "#extension GL_ARB_texture_rectangle : enable\n"
    "uniform sampler2DRect picture; uniform float gain; uniform vec4 tint;\n"
    "void main() { gl_FragColor = texture2DRect(picture, gl_TexCoord[0].st) * gain + tint; }";

class ActiveProgram {
public:
    ActiveProgram() {
        m_Vertex.loadAndCompile(VertexText);
        m_Fragment.loadAndCompile(FragmentText);
        linked = program.attachShader(&m_Vertex, &m_Fragment, false);
        program.activeProgram();
    }
    ~ActiveProgram() { program.deactiveProgram(); }
    VX_Program program;
    bool linked = false;

private:
    VX_VertexShader m_Vertex;
    VX_FragmentShader m_Fragment;
};

void setByName(benchmark::State& state) {
    HeadlessContext context(64, 64);
    ActiveProgram active;
    if (!active.linked)
        return state.SkipWithError("the program does not link");
    float value = 0.0f;
    for (auto _ : state)
        active.program.set1f("gain", value += 1.0f);
}

void setByLookUpRaw(benchmark::State& state) {
    HeadlessContext context(64, 64);
    ActiveProgram active;
    float value = 0.0f;
    for (auto _ : state)
        glUniform1f(glGetUniformLocation(active.program.m_Program, "gain"), value += 1.0f);
}

void setByCachedLocation(benchmark::State& state) {
    HeadlessContext context(64, 64);
    ActiveProgram active;
    const GLint location = glGetUniformLocation(active.program.m_Program, "gain");
    float value = 0.0f;
    for (auto _ : state)
        glUniform1f(location, value += 1.0f);
}

class OnePass : public VX_GLFilter {
public:
    OnePass() : VX_GLFilter(nullptr) {
        m_RenderTarget = new VX_GLRenderTarget;
        SetResolution(Width, Height);
        CreateRT(GL_RGBA8, GL_UNSIGNED_BYTE, -1, -1);
        CreateRT(GL_RGBA8, GL_UNSIGNED_BYTE, -1, -1);
        m_RenderTarget->SetDefaultProjection();
        glDisable(GL_DEPTH_TEST);
    }
};

// From texture 0 of the target into texture 1, through the program.
void passOfFilter(benchmark::State& state) {
    HeadlessContext context(64, 64);
    OnePass filter;
    ActiveProgram active;
    if (!active.linked || !filter.GetRTexture(1))
        return state.SkipWithError("no filter");
    active.program.set1f("gain", 0.5f);
    for (auto _ : state) {
        filter.Bind(1);
        active.program.activeProgram();
        filter.DrawFullScreen(0);
        active.program.deactiveProgram();
        filter.Unbind();
        glFinish();
    }
}

void drawQuad() {
    glBegin(GL_QUADS);
    glTexCoord2f(0, 0);
    glVertex2f(0, 0);
    glTexCoord2f(Width, 0);
    glVertex2f(Width, 0);
    glTexCoord2f(Width, Height);
    glVertex2f(Width, Height);
    glTexCoord2f(0, Height);
    glVertex2f(0, Height);
    glEnd();
}

void passRaw(benchmark::State& state) {
    HeadlessContext context(64, 64);
    OnePass filter; // for its objects only
    ActiveProgram active;
    if (!active.linked)
        return state.SkipWithError("no filter");
    active.program.set1f("gain", 0.5f);
    const GLuint frameBuffer = filter.m_RenderTarget->m_FrameBuffer;
    const GLuint texture = filter.GetRTexture(0);
    for (auto _ : state) {
        glBindFramebufferEXT(GL_FRAMEBUFFER_EXT, frameBuffer);
        glDrawBuffer(GL_COLOR_ATTACHMENT1_EXT);
        glViewport(0, 0, Width, Height);
        glUseProgram(active.program.m_Program);
        glBindTexture(GL_TEXTURE_RECTANGLE_ARB, texture);
        drawQuad();
        glUseProgram(0);
        glBindFramebufferEXT(GL_FRAMEBUFFER_EXT, 0);
        glFinish();
    }
}

using vx::bench::addRow;

const bool registered = addRow({.name = "Draw of a box of 24 vertices, 1000 times",
                                .limit = drawBoxesRaw,
                                .ours = drawBoxes,
                                .must = 1.03,
                                .aim = 1.00}) &&
                        addRow({.name = "uniform by name on each call",
                                .limit = setByCachedLocation,
                                .ours = setByName,
                                .peers = {{"glGetUniformLocation", setByLookUpRaw}},
                                .must = 2.7,
                                .aim = 2.63}) &&
                        addRow({.name = "full-screen pass, 1920 x 1080, rectangle",
                                .limit = passRaw,
                                .ours = passOfFilter,
                                .must = 1.03,
                                .aim = 1.00});

} // namespace
