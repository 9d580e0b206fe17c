// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/meshes/VX_GLMeshDataRenderer.h>
#include <VX_OpenGL64/meshes/shapes/VX_GLGeometryCube.h>
#include <VX_OpenGL64/targets/VX_GLVBOIndex.h>
#include <VX_OpenGL64/targets/VX_GLVBOVertex.h>
#include <tests/support/GLRecorder.h>
#include <tests/support/HeadlessContext.h>
#include <tests/support/Pixels.h>

#include <epoxy/gl.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <map>

using namespace vx::test;
using Lines = GLRecorder::Lines;
using Renderer = VX_GLMeshDataRenderer;

namespace {

constexpr GLenum kArray = GL_ARRAY_BUFFER;
constexpr GLenum kElements = GL_ELEMENT_ARRAY_BUFFER;

/// A format and the draws of its own.
struct Member {
    int format;
    void (Renderer::*draw)(unsigned int, int, int);
    void (Renderer::*drawWithIndex)(unsigned int);
};
const Member family[] = {
    {1, &Renderer::drawPVertex, &Renderer::drawWithIndexPVertex},
    {3, &Renderer::drawPNVertex, &Renderer::drawWithIndexPNVertex},
    {5, &Renderer::drawPTVertex, &Renderer::drawWithIndexPTVertex},
    {7, &Renderer::drawPNTVertex, &Renderer::drawWithIndexPNTVertex},
    {9, &Renderer::drawPDVertex, &Renderer::drawWithIndexPDVertex},
    {11, &Renderer::drawPDNVertex, &Renderer::drawWithIndexPDNVertex},
    {13, &Renderer::drawPDTVertex, &Renderer::drawWithIndexPDTVertex},
    {15, &Renderer::drawPDNTVertex, &Renderer::drawWithIndexPDNTVertex},
};

/// What a draw is made of, around the one draw call. The vertex holds position, colour, normal and texture
/// coordinate in this order, each where the format has its bit; attribute 5 takes the tangent behind them.
Lines sequence(int format, const Renderer& renderer, bool indexed, const std::string& draw) {
    const bool normal = format & 2, uv = format & 4, colour = format & 8, tangent = format & 16;
    const int stride = 12 + 16 * colour + 12 * normal + 8 * uv + 12 * tangent;
    const int normalAt = 12 + 16 * colour, behind = normalAt + 12 * normal;
    std::vector<GLenum> arrays{GL_VERTEX_ARRAY};
    Lines lines, pointers{call("glVertexPointer", 3, GL_FLOAT, stride, 0)};
    if (normal)
        arrays.push_back(GL_NORMAL_ARRAY);
    if (colour) {
        arrays.push_back(GL_COLOR_ARRAY);
        pointers.push_back(call("glColorPointer", 4, GL_FLOAT, stride, 12));
    }
    if (normal)
        pointers.push_back(call("glNormalPointer", GL_FLOAT, stride, normalAt));
    if (uv) {
        arrays.push_back(GL_TEXTURE_COORD_ARRAY);
        pointers.push_back(call("glTexCoordPointer", 2, GL_FLOAT, stride, behind));
    }
    if (tangent)
        pointers.push_back(call("glVertexAttribPointerARB", 5, 3, GL_FLOAT, GL_FALSE, stride, behind));

    for (const GLenum array : arrays)
        lines.push_back(call("glEnableClientState", array));
    lines.push_back(tangent ? call("glEnableVertexAttribArrayARB", 5) : "");
    lines.push_back(call("glBindBuffer", kArray, renderer.m_VertexBuffer->m_Buffer));
    lines.push_back(indexed ? call("glBindBuffer", kElements, renderer.m_IndexBuffer->m_Buffer) : "");
    lines.insert(lines.end(), pointers.begin(), pointers.end());
    lines.push_back(draw);
    lines.push_back(indexed ? call("glBindBuffer", kElements, 0) : "");
    lines.push_back(call("glBindBuffer", kArray, 0));
    lines.push_back(tangent ? call("glDisableVertexAttribArrayARB", 5) : "");
    for (auto array = arrays.rbegin(); array != arrays.rend(); ++array)
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
    for (const auto& [format, draw, drawWithIndex] : family) {
        SCOPED_TRACE(format);
        Renderer renderer;
        fill(renderer, format);
        recorder.take();
        const State before = currentState();

        (renderer.*draw)(GL_QUADS, 4, 8);
        const Lines some = sequence(format, renderer, false, call("glDrawArrays", GL_QUADS, 4, 8));
        EXPECT_EQ(recorder.take(), some);
        renderer.Draw(GL_QUADS, format, 4, 8);
        EXPECT_EQ(recorder.take(), some);
        renderer.Draw(GL_QUADS, format, 0, 0);
        EXPECT_EQ(recorder.take(), sequence(format, renderer, false, call("glDrawArrays", GL_QUADS, 0, 24)));

        (renderer.*drawWithIndex)(GL_TRIANGLES);
        const Lines indexed =
            sequence(format, renderer, true, call("glDrawElements", GL_TRIANGLES, 6, GL_UNSIGNED_INT, 0));
        EXPECT_EQ(recorder.take(), indexed);
        renderer.DrawWithIndex(GL_TRIANGLES, format);
        EXPECT_EQ(recorder.take(), format == 11 ? Lines() : indexed) << "11 is left out there";

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
    renderer.DrawTangent(GL_QUADS, 19, 5, 4, 8);
    EXPECT_EQ(recorder.take(), sequence(19, renderer, false, call("glDrawArrays", GL_QUADS, 4, 8)));
    renderer.DrawTangent(GL_QUADS, 19, 5, 0, -1);
    EXPECT_EQ(recorder.take(), sequence(19, renderer, false, call("glDrawArrays", GL_QUADS, 0, 24)));
    renderer.DrawTangentWithIndex(GL_TRIANGLES, 19, 5);
    EXPECT_EQ(recorder.take(),
              sequence(19, renderer, true, call("glDrawElements", GL_TRIANGLES, 6, GL_UNSIGNED_INT, 0)));
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
        for (const auto& [format, draw, drawWithIndex] : family) {
            renderer.Draw(GL_QUADS, format, 0, 0);
            renderer.DrawWithIndex(GL_QUADS, format);
            (renderer.*draw)(GL_QUADS, 0, 4);
            (renderer.*drawWithIndex)(GL_QUADS);
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
    const auto within = [](GLenum target, unsigned name, const std::string& upload) {
        return Lines{call("glBindBuffer", target, name), upload, call("glBindBuffer", target, 0)};
    };
    const auto allocated = [&](GLenum target, unsigned name, int bytes, const void* data, GLenum usage) {
        return within(target, name, call("glBufferData", target, bytes, data, usage));
    };
    const auto copied = [&](GLenum target, unsigned name, int bytes, const void* data) {
        return within(target, name, call("glBufferSubData", target, 0, bytes, data));
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
        for (const auto& [x, y] :
             {std::pair(24, 8), {21, 5}, {26, 10}, {18, 8}, {29, 8}, {24, 14}, {24, 2}}) {
            const bool inside = std::abs(x - 24) < 4 && std::abs(y - 8) < 4;
            EXPECT_EQ(pixelAt(x, y) >> 16, inside ? 0xFF00u : 0u) << format << " at " << x << ' ' << y;
        }
    }
}
