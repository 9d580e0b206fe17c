// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/meshes/VX_GLGeometryCube.h>
#include <VX_OpenGL64/meshes/VX_GLMeshDataRenderer.h>
#include <VX_OpenGL64/targets/VX_GLVBOIndex.h>
#include <VX_OpenGL64/targets/VX_GLVBOVertex.h>
#include <tests/support/GLRecorder.h>
#include <tests/support/HeadlessContext.h>

#include <epoxy/gl.h>
#include <gtest/gtest.h>

#include <map>

using namespace vx::test;
using Lines = GLRecorder::Lines;
using Renderer = VX_GLMeshDataRenderer;

namespace {

constexpr GLenum kArray = GL_ARRAY_BUFFER;
constexpr GLenum kElements = GL_ELEMENT_ARRAY_BUFFER;

/// The arrays of one format in the order of enabling, and its pointer calls.
struct Family {
    int format, stride;
    void (Renderer::*draw)(unsigned int, int, int);
    void (Renderer::*drawWithIndex)(unsigned int);
    std::vector<GLenum> arrays;
    Lines pointers;
    bool inDrawWithIndex;
};

const std::vector<Family>& families() {
    constexpr GLenum V = GL_VERTEX_ARRAY, N = GL_NORMAL_ARRAY, T = GL_TEXTURE_COORD_ARRAY, C = GL_COLOR_ARRAY;
    const auto vertex = [](int stride) { return call("glVertexPointer", 3, GL_FLOAT, stride, 0); };
    const auto colour = [](int stride) { return call("glColorPointer", 4, GL_FLOAT, stride, 12); };
    const auto normal = [](int stride, int at) { return call("glNormalPointer", GL_FLOAT, stride, at); };
    const auto uv = [](int stride, int at) { return call("glTexCoordPointer", 2, GL_FLOAT, stride, at); };
    static const std::vector<Family> all{
        {1, 12, &Renderer::drawPVertex, &Renderer::drawWithIndexPVertex, {V}, {vertex(12)}, true},
        {3,
         24,
         &Renderer::drawPNVertex,
         &Renderer::drawWithIndexPNVertex,
         {V, N},
         {vertex(24), normal(24, 12)},
         true},
        {5,
         20,
         &Renderer::drawPTVertex,
         &Renderer::drawWithIndexPTVertex,
         {V, T},
         {vertex(20), uv(20, 12)},
         true},
        {7,
         32,
         &Renderer::drawPNTVertex,
         &Renderer::drawWithIndexPNTVertex,
         {V, N, T},
         {vertex(32), normal(32, 12), uv(32, 24)},
         true},
        {9,
         28,
         &Renderer::drawPDVertex,
         &Renderer::drawWithIndexPDVertex,
         {V, C},
         {vertex(28), colour(28)},
         true},
        {11,
         40,
         &Renderer::drawPDNVertex,
         &Renderer::drawWithIndexPDNVertex,
         {V, N, C},
         {vertex(40), colour(40), normal(40, 28)},
         false},
        {13,
         36,
         &Renderer::drawPDTVertex,
         &Renderer::drawWithIndexPDTVertex,
         {V, C, T},
         {vertex(36), colour(36), uv(36, 28)},
         true},
        {15,
         48,
         &Renderer::drawPDNTVertex,
         &Renderer::drawWithIndexPDNTVertex,
         {V, N, C, T},
         {vertex(48), colour(48), normal(48, 28), uv(48, 40)},
         true},
    };
    return all;
}

/// What a draw of the family is made of, around the one draw call; `tangent` puts the attribute's calls in.
Lines sequence(const Family& family, const Renderer& renderer, bool indexed, const std::string& draw,
               const Lines& tangent = {"", "", ""}) {
    Lines lines;
    for (const GLenum array : family.arrays)
        lines.push_back(call("glEnableClientState", array));
    lines.push_back(tangent[0]);
    lines.push_back(call("glBindBuffer", kArray, renderer.m_VertexBuffer->m_Buffer));
    if (indexed)
        lines.push_back(call("glBindBuffer", kElements, renderer.m_IndexBuffer->m_Buffer));
    lines.insert(lines.end(), family.pointers.begin(), family.pointers.end());
    lines.push_back(tangent[1]);
    lines.push_back(draw);
    if (indexed)
        lines.push_back(call("glBindBuffer", kElements, 0));
    lines.push_back(call("glBindBuffer", kArray, 0));
    lines.push_back(tangent[2]);
    for (auto array = family.arrays.rbegin(); array != family.arrays.rend(); ++array)
        lines.push_back(call("glDisableClientState", *array));
    std::erase(lines, "");
    return lines;
}

/// A box of 24 vertices with six indices.
void fill(Renderer& renderer, int format) {
    VX_GLGeometryCube cube;
    cube.Generate(format);
    unsigned* index = cube.AllocateIndex(6);
    for (unsigned each = 0; each < 6; ++each)
        index[each] = each;
    renderer.UpdateByMeshData(GL_STATIC_DRAW, GL_STATIC_DRAW, &cube);
}

using State = std::map<GLenum, std::vector<int>>;

State currentState() {
    State state;
    for (const GLenum name :
         {GL_VERTEX_ARRAY, GL_NORMAL_ARRAY, GL_COLOR_ARRAY, GL_TEXTURE_COORD_ARRAY, GL_ARRAY_BUFFER_BINDING,
          GL_ELEMENT_ARRAY_BUFFER_BINDING, GL_CURRENT_PROGRAM, GL_MATRIX_MODE, GL_TEXTURE_BINDING_2D,
          GL_LIGHTING, GL_ACTIVE_TEXTURE, GL_CLIENT_ACTIVE_TEXTURE, GL_DRAW_BUFFER, GL_VIEWPORT, GL_CULL_FACE,
          GL_DEPTH_TEST})
        glGetIntegerv(name, (state[name].resize(4), state[name].data()));
    for (GLuint attribute = 0; attribute < 8; ++attribute)
        glGetVertexAttribiv(attribute, GL_VERTEX_ATTRIB_ARRAY_ENABLED,
                            (state[attribute].resize(4), state[attribute].data()));
    return state;
}

} // namespace

TEST(VX_GLMeshDataRenderer, DrawsEachFormatByItsArrays) {
    HeadlessContext gl(8, 8);
    GLRecorder recorder;
    for (const Family& family : families()) {
        SCOPED_TRACE(family.format);
        Renderer renderer;
        fill(renderer, family.format);
        recorder.take();
        const State before = currentState();

        (renderer.*family.draw)(GL_QUADS, 4, 8);
        const Lines some = sequence(family, renderer, false, call("glDrawArrays", GL_QUADS, 4, 8));
        EXPECT_EQ(recorder.take(), some);
        renderer.Draw(GL_QUADS, family.format, 4, 8);
        EXPECT_EQ(recorder.take(), some);
        renderer.Draw(GL_QUADS, family.format, 0, 0);
        EXPECT_EQ(recorder.take(), sequence(family, renderer, false, call("glDrawArrays", GL_QUADS, 0, 24)));

        (renderer.*family.drawWithIndex)(GL_TRIANGLES);
        const Lines indexed =
            sequence(family, renderer, true, call("glDrawElements", GL_TRIANGLES, 6, GL_UNSIGNED_INT, 0));
        EXPECT_EQ(recorder.take(), indexed);
        renderer.DrawWithIndex(GL_TRIANGLES, family.format);
        EXPECT_EQ(recorder.take(), family.inDrawWithIndex ? indexed : Lines());

        EXPECT_EQ(currentState(), before) << "no state but the pointers is left changed";
        EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
        recorder.take();
    }
}

TEST(VX_GLMeshDataRenderer, DrawsTangentsAndInstancesThroughAttributes) {
    HeadlessContext gl(8, 8);
    GLRecorder recorder;
    Renderer renderer;
    fill(renderer, 19);
    recorder.take();
    const State before = currentState();
    const Family family{
        19,
        36,
        nullptr,
        nullptr,
        {GL_VERTEX_ARRAY, GL_NORMAL_ARRAY},
        {call("glVertexPointer", 3, GL_FLOAT, 36, 0), call("glNormalPointer", GL_FLOAT, 36, 12)},
        false};
    const Lines tangent{call("glEnableVertexAttribArrayARB", 5),
                        call("glVertexAttribPointerARB", 5, 3, GL_FLOAT, GL_FALSE, 36, 24),
                        call("glDisableVertexAttribArrayARB", 5)};
    renderer.DrawTangent(GL_QUADS, 19, 5, 4, 8);
    EXPECT_EQ(recorder.take(),
              sequence(family, renderer, false, call("glDrawArrays", GL_QUADS, 4, 8), tangent));
    renderer.DrawTangent(GL_QUADS, 19, 5, 0, -1);
    EXPECT_EQ(recorder.take(),
              sequence(family, renderer, false, call("glDrawArrays", GL_QUADS, 0, 24), tangent));
    renderer.DrawTangentWithIndex(GL_TRIANGLES, 19, 5);
    EXPECT_EQ(recorder.take(),
              sequence(family, renderer, true, call("glDrawElements", GL_TRIANGLES, 6, GL_UNSIGNED_INT, 0),
                       tangent));
    renderer.Draw(GL_QUADS, 19, 0, 0);
    renderer.DrawWithIndex(GL_QUADS, 19);
    renderer.DrawTangent(GL_QUADS, 3, 5, 0, 0);
    renderer.DrawTangentWithIndex(GL_QUADS, 15, 5);
    EXPECT_EQ(recorder.take(), Lines());

    fill(renderer, 7);
    renderer.m_HasVertices = false; // not looked at
    recorder.take();
    renderer.DrawPNTInstanced(GL_QUADS, 4, 8, 1, 2, 3, 10);
    EXPECT_EQ(recorder.take(),
              (Lines{call("glEnableVertexAttribArray", 1), call("glEnableVertexAttribArray", 2),
                     call("glEnableVertexAttribArray", 3),
                     call("glBindBuffer", kArray, renderer.m_VertexBuffer->m_Buffer),
                     call("glVertexAttribPointer", 1, 3, GL_FLOAT, GL_FALSE, 32, 0),
                     call("glVertexAttribPointer", 2, 3, GL_FLOAT, GL_FALSE, 32, 12),
                     call("glVertexAttribPointer", 3, 2, GL_FLOAT, GL_FALSE, 32, 24),
                     call("glBindBuffer", kArray, 0), call("glDrawArraysInstancedARB", GL_QUADS, 4, 8, 10),
                     call("glDisableVertexAttribArray", 3), call("glDisableVertexAttribArray", 2),
                     call("glDisableVertexAttribArray", 1)}));
    EXPECT_EQ(currentState(), before);
    EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
}

TEST(VX_GLMeshDataRenderer, DrawsNothingWithoutItsBuffers) {
    HeadlessContext gl(8, 8);
    GLRecorder recorder;
    const auto drawAll = [](Renderer& renderer) {
        for (const Family& family : families()) {
            renderer.Draw(GL_QUADS, family.format, 0, 0);
            renderer.DrawWithIndex(GL_QUADS, family.format);
            (renderer.*family.draw)(GL_QUADS, 0, 4);
            (renderer.*family.drawWithIndex)(GL_QUADS);
        }
        renderer.DrawTangent(GL_QUADS, 19, 5, 0, 0);
        renderer.drawPNBVertex(GL_QUADS, 5, 0, 4);
        renderer.drawWithIndexPNBVertex(GL_QUADS, 5);
        renderer.DrawPNTInstanced(GL_QUADS, 0, 4, 1, 2, 3, 1);
    };
    Renderer renderer;
    drawAll(renderer);
    EXPECT_EQ(recorder.take(), Lines());
    fill(renderer, 15);
    renderer.makeVBOVertex(GL_STATIC_DRAW, 48, 0, nullptr);
    EXPECT_EQ(renderer.m_VertexBuffer, nullptr);
    EXPECT_FALSE(renderer.m_HasVertices);
    recorder.take();
    drawAll(renderer);
    EXPECT_EQ(recorder.take(), Lines());
    float vertex[3] = {};
    renderer.makeVBOVertex(GL_STATIC_DRAW, 12, 1, vertex);
    renderer.makeVBOIndex(GL_STATIC_DRAW, 0, nullptr);
    recorder.take();
    renderer.DrawWithIndex(GL_POINTS, 1);
    EXPECT_EQ(recorder.take(), Lines()) << "vertices without indices";
    renderer.makeVBOVertex(GL_STATIC_DRAW, 1 << 20, 1 << 20, vertex);
    EXPECT_FALSE(renderer.m_HasVertices) << "more than 31 bits of bytes";
}

TEST(VX_GLMeshDataRenderer, ReusesBuffersThatAreLargeEnough) {
    HeadlessContext gl(8, 8);
    GLRecorder recorder;
    Renderer renderer;
    unsigned indices[8] = {};
    float vertices[24] = {};
    renderer.makeVBOVertex(GL_STATIC_DRAW, 12, 4, vertices);
    renderer.makeVBOIndex(GL_STREAM_DRAW, 8, indices);
    const unsigned vertex = renderer.m_VertexBuffer->m_Buffer, index = renderer.m_IndexBuffer->m_Buffer;
    const auto allocated = [](GLenum target, unsigned name, int bytes, const void* data, GLenum usage) {
        return Lines{call("glBindBuffer", target, name), call("glBufferData", target, bytes, data, usage),
                     call("glBindBuffer", target, 0)};
    };
    const auto copied = [](GLenum target, unsigned name, int bytes, const void* data) {
        return Lines{call("glBindBuffer", target, name), call("glBufferSubData", target, 0, bytes, data),
                     call("glBindBuffer", target, 0)};
    };
    const Lines made = recorder.take();
    ASSERT_EQ(made.size(), 8u);
    EXPECT_EQ(Lines(made.begin() + 1, made.begin() + 4),
              allocated(kArray, vertex, 48, vertices, GL_STATIC_DRAW));
    EXPECT_EQ(Lines(made.begin() + 5, made.end()), allocated(kElements, index, 32, indices, GL_STREAM_DRAW));

    renderer.makeVBOIndex(GL_STATIC_DRAW, 3, indices);
    EXPECT_EQ(recorder.take(), copied(kElements, index, 12, indices));
    EXPECT_EQ(renderer.m_IndexCount, 3);
    renderer.makeVBOIndex(GL_STATIC_DRAW, 8, indices);
    EXPECT_EQ(recorder.take(), copied(kElements, index, 32, indices)) << "the buffer kept its size";
    renderer.makeVBOVertex(GL_STATIC_DRAW, 24, 2, vertices);
    EXPECT_EQ(recorder.take(), copied(kArray, vertex, 48, vertices));
    EXPECT_EQ(renderer.m_VertexCount, 2);
    renderer.makeVBOVertex(GL_DYNAMIC_DRAW, 12, 5, vertices);
    EXPECT_EQ(recorder.take(), allocated(kArray, vertex, 60, vertices, GL_DYNAMIC_DRAW));

    renderer.ClearAll();
    const Lines cleared = recorder.take();
    EXPECT_EQ(countOf(cleared, "glDeleteBuffers"), 2);
    EXPECT_EQ(renderer.m_VertexCount + renderer.m_IndexCount + renderer.m_HasVertices, 0);
}

TEST(VX_GLMeshDataRenderer, UpdatesFromMeshesWholeAndInPart) {
    HeadlessContext gl(8, 8);
    Renderer renderer;
    VX_GLGeometryCube cube;
    cube.Generate(3);
    cube.AllocateIndex(6);
    std::fill_n(cube.m_Index, 6, 1u);
    cube.m_CarriedIndex = 9;
    cube.m_CarriedVector1 = {1, 2, 3};
    renderer.UpdateRangeByMeshData(GL_STATIC_DRAW, GL_STATIC_DRAW, &cube, 4, 3);
    EXPECT_EQ(renderer.m_VertexCount, 4);
    EXPECT_EQ(renderer.m_IndexCount, 3);
    EXPECT_EQ(renderer.m_VertexBuffer->m_Size, 4 * 24);
    EXPECT_EQ(renderer.m_CarriedVector1, cube.m_CarriedVector1);
    EXPECT_EQ(renderer.m_CarriedIndex, -1);
    renderer.UpdateRangeByMeshData(GL_STATIC_DRAW, GL_STATIC_DRAW, &cube, 4000, 3000);
    EXPECT_EQ(renderer.m_VertexCount, 24) << "no more than the mesh has";
    EXPECT_EQ(renderer.m_IndexCount, 6);

    VX_GLMeshData bare; // neither vertices nor indices
    renderer.UpdateByMeshData(GL_STATIC_DRAW, GL_STATIC_DRAW, &bare);
    EXPECT_EQ(renderer.m_IndexBuffer, nullptr);
    EXPECT_TRUE(renderer.m_HasVertices);
    EXPECT_EQ(renderer.m_VertexCount, 24);
}

TEST(VX_GLMeshDataRenderer, PutsABoxWhereItBelongs) {
    HeadlessContext gl(32, 32);
    glViewport(0, 0, 32, 32);
    glEnable(GL_DEPTH_TEST);
    VX_GLGeometryCube cube;
    cube.m_Center = {0.5f, -0.5f, 0.0f};
    cube.m_HalfSize = {0.25f, 0.25f, 0.25f};
    for (const int format : {9, 11, 13, 15}) { // the formats with a colour of their own
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        VX_GLGeometryCube::Color = {1, 0, 1, 1};
        cube.Generate(format);
        VX_GLGeometryCube::Color = {1, 1, 1, 1};
        Renderer renderer;
        renderer.UpdateByMeshData(GL_STATIC_DRAW, GL_STATIC_DRAW, &cube);
        renderer.Draw(GL_QUADS, format, 0, 0);
        const struct {
            int x, y;
            unsigned char red;
        } points[] = {{24, 8, 255}, {21, 5, 255}, {26, 10, 255}, {18, 8, 0},
                      {29, 8, 0},   {24, 14, 0},  {24, 2, 0}};
        for (const auto& point : points) {
            unsigned char rgba[4] = {};
            glReadPixels(point.x, point.y, 1, 1, GL_RGBA, GL_UNSIGNED_BYTE, rgba);
            EXPECT_EQ(rgba[0], point.red) << format << " at " << point.x << ' ' << point.y;
            EXPECT_EQ(rgba[1], 0);
        }
    }
}
