// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/meshes/VX_GLMeshData.h>
#include <VX_OpenGL64/meshes/VX_GLMeshDataRenderer.h>
#include <VX_OpenGL64/targets/VX_GLVBOIndex.h>
#include <VX_OpenGL64/targets/VX_GLVBOVertex.h>
#include <tests/support/GLTest.h>

#include <memory>

using Renderer = VX_GLMeshDataRenderer;

namespace {

const struct Member {
    int format;
    void (Renderer::*draw)(unsigned int, int, int);
    void (Renderer::*drawWithIndex)(unsigned int);
} kFamily[] = {
    {1, &Renderer::drawPVertex, &Renderer::drawWithIndexPVertex},
    {3, &Renderer::drawPNVertex, &Renderer::drawWithIndexPNVertex},
    {5, &Renderer::drawPTVertex, &Renderer::drawWithIndexPTVertex},
    {7, &Renderer::drawPNTVertex, &Renderer::drawWithIndexPNTVertex},
    {9, &Renderer::drawPDVertex, &Renderer::drawWithIndexPDVertex},
    {11, &Renderer::drawPDNVertex, &Renderer::drawWithIndexPDNVertex},
    {13, &Renderer::drawPDTVertex, &Renderer::drawWithIndexPDTVertex},
    {15, &Renderer::drawPDNTVertex, &Renderer::drawWithIndexPDNTVertex},
};

/// A vertex shader; what it gives as the front colour is drawn.
void useProgram(const char* text) {
    glUseProgram(glCreateShaderProgramv(GL_VERTEX_SHADER, 1, &text));
}

/// Lets pixels show what reaches the shader: normal, texture coordinate, colour and tangent, which is
/// attribute 5, as red, green, blue and alpha. White stands for what no array gives.
void showArrays() {
    useProgram(R"(#version 330 compatibility
layout(location = 5) in vec3 tangent;
void main() {
    gl_Position = gl_Vertex;
    gl_FrontColor = vec4(gl_Normal.y, gl_MultiTexCoord0.y, gl_Color.z, tangent.y);
})");
    glNormal3f(1, 1, 1);
    glTexCoord2f(1, 1);
    glVertexAttrib3f(5, 1, 1, 1);
}

/// What the last draw left in the window, and black before the next one. No array or buffer is left behind.
unsigned shown() {
    auto left = stateOf(GL_VERTEX_ARRAY, GL_NORMAL_ARRAY, GL_COLOR_ARRAY, GL_TEXTURE_COORD_ARRAY,
                        GL_ARRAY_BUFFER_BINDING, GL_ELEMENT_ARRAY_BUFFER_BINDING);
    for (const GLuint attribute : {0, 2, 3, 5})
        glGetVertexAttribiv(attribute, GL_VERTEX_ATTRIB_ARRAY_ENABLED, &left.emplace_back());
    EXPECT_EQ(left, std::vector<int>(10));
    const unsigned pixel = pixelAt(4, 4);
    glClear(GL_COLOR_BUFFER_BIT);
    glColor3f(1, 1, 1);
    return pixel;
}

unsigned expected(int format) {
    return (format & 2 ? 51u : 255u) << 24 | (format & 4 ? 102u : 255u) << 16 |
           (format & 8 ? 153u : 255u) << 8 | (format & 16 ? 204u : 255u);
}

template <class Draw>
unsigned shownBy(Draw draw) {
    glClear(GL_COLOR_BUFFER_BIT);
    draw();
    return shown();
}

/// Four vertices out of sight, then a square over the whole window, which the indices name.
void fill(Renderer& renderer, int format) {
    VX_GLMeshData mesh;
    mesh.AllocateVertex(format, 8);
    for (int i = 0; i < 8; ++i) {
        const int corner = i % 4;
        *mesh.m_Vertex->GetPosition(i) = {corner % 3 ? 1 : -1, corner / 2 ? 1 : -1, i < 4 ? 9 : 0};
        void* vertex = mesh.m_Vertex->Seek(i);
        VX_GLVertex::SetNormal(format, vertex, {9, 0.2f, 9});
        VX_GLVertex::SetUV(format, vertex, {9, 0.4f});
        VX_GLVertex::SetDiffuse(format, vertex, {9, 9, 0.6f, 9});
        VX_GLVertex::SetTangent(format, vertex, {9, 0.8f, 9});
    }
    unsigned* index = mesh.AllocateIndex(4);
    for (unsigned each = 0; each < 4; ++each)
        index[each] = each + 4;
    renderer.UpdateByMeshData(GL_STATIC_DRAW, GL_STATIC_DRAW, &mesh);
}

} // namespace

TEST(VX_GLMeshDataRenderer, DrawsEachFormatByItsArraysAndLeavesNoneEnabled) {
    HeadlessContext gl(8, 8);
    showArrays();
    for (const Member& each : kFamily) {
        const int format = each.format;
        Renderer renderer;
        fill(renderer, format);
        const unsigned all = expected(format);
        const std::vector<unsigned> seen = {shownBy([&] { (renderer.*each.draw)(GL_QUADS, 0, 4); }),
                                            shownBy([&] { (renderer.*each.draw)(GL_QUADS, 4, 4); }),
                                            shownBy([&] { (renderer.*each.drawWithIndex)(GL_QUADS); }),
                                            shownBy([&] { renderer.Draw(GL_QUADS, format, 0, 4); }),
                                            shownBy([&] { renderer.Draw(GL_QUADS, format, 0, 0); }),
                                            shownBy([&] { renderer.DrawWithIndex(GL_QUADS, format); })};
        EXPECT_EQ(seen, (std::vector{0u, all, all, 0u, all, format == 11 ? 0 : all})) << format;
    }
    EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
}

TEST(VX_GLMeshDataRenderer, DrawsTangentsAndInstancesThroughAttributes) {
    HeadlessContext gl(8, 8);
    showArrays();
    Renderer renderer;
    fill(renderer, 19);
    EXPECT_EQ(shownBy([&] { renderer.DrawTangent(GL_QUADS, 19, 5, 4, 4); }), expected(19));
    EXPECT_EQ(shownBy([&] { renderer.DrawTangent(GL_QUADS, 19, 5, 0, 4); }), 0u);
    EXPECT_EQ(shownBy([&] { renderer.DrawTangent(GL_QUADS, 19, 5, 0, -1); }), expected(19));
    EXPECT_EQ(shownBy([&] { renderer.DrawTangentWithIndex(GL_QUADS, 19, 5); }), expected(19));
    EXPECT_EQ(shownBy([&] { renderer.DrawTangentWithIndex(GL_QUADS, 19, ~0u); }), expected(3));
    EXPECT_EQ(shownBy([&] { renderer.DrawTangent(GL_QUADS, 19, ~0u, 4, 4); }), expected(3));
    const auto drawOthers = [&] { // what is of another format
        renderer.Draw(GL_QUADS, 19, 0, 0);
        renderer.DrawWithIndex(GL_QUADS, 19);
        renderer.DrawTangent(GL_QUADS, 3, 5, 0, 0);
        renderer.DrawTangentWithIndex(GL_QUADS, 15, 5);
    };
    EXPECT_EQ(shownBy(drawOthers), 0u);

    fill(renderer, 7);
    renderer.m_HasVertices = false; // not looked at
    useProgram(R"(#version 330 compatibility
layout(location = 0) in vec3 position;
layout(location = 2) in vec3 normal;
layout(location = 3) in vec2 uv;
void main() {
    gl_Position = vec4(position, 1.0);
    gl_FrontColor = vec4(normal.y, uv.y, 0.2, 0.0);
})");
    glEnable(GL_BLEND);
    glBlendFunc(GL_ONE, GL_ONE);
    EXPECT_EQ(shownBy([&] { renderer.DrawPNTInstanced(GL_QUADS, 4, 4, 0, 2, 3, 2); }), 0x66CC6600u);
    glVertexAttrib3f(3, 0, 0, 0);
    EXPECT_EQ(shownBy([&] { renderer.DrawPNTInstanced(GL_QUADS, 4, 4, 0, 2, -1, 2); }), 0x66006600u);
    EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
}

TEST(VX_GLMeshDataRenderer, DrawsNothingWithoutItsBuffers) {
    HeadlessContext gl(8, 8);
    Renderer renderer;
    float vertex[3] = {};
    for (const bool hasVertices : {false, true}) {
        fill(renderer, 15);
        if (hasVertices)
            renderer.makeVBOIndex(GL_STATIC_DRAW, 0, nullptr);
        else
            renderer.makeVBOVertex(GL_STATIC_DRAW, 48, 0, nullptr);
        for (const Member& each : kFamily) {
            (renderer.*each.draw)(GL_QUADS, 0, hasVertices ? 0 : 4);
            (renderer.*each.drawWithIndex)(GL_QUADS);
        }
        renderer.drawPNBVertex(GL_QUADS, 5, 0, hasVertices ? 0 : 4);
        renderer.drawWithIndexPNBVertex(GL_QUADS, 5);
        renderer.DrawPNTInstanced(GL_QUADS, 0, hasVertices ? 0 : 4, 1, 2, 3, 1);
    }
    EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
    for (const int stride : {1 << 20, 0}) { // more than 31 bits of bytes, and none
        renderer.makeVBOVertex(GL_STATIC_DRAW, 12, 1, vertex);
        renderer.makeVBOVertex(GL_STATIC_DRAW, stride, 1 << 20, vertex);
        EXPECT_EQ(ints(renderer.m_HasVertices, renderer.m_VertexCount), ints(0, 0)) << stride;
    }
}

TEST(VX_GLMeshDataRenderer, ReusesBuffersThatAreLargeEnough) {
    HeadlessContext gl(8, 8);
    unsigned data[24] = {};
    // Bytes and first entry of a buffer.
    const auto held = [](VX_GLVBOBase* buffer, GLenum target) {
        std::vector<int> values(2);
        buffer->BindBuffer();
        glGetBufferParameteriv(target, GL_BUFFER_SIZE, &values[0]);
        glGetBufferSubData(target, 0, sizeof values[1], &values[1]);
        buffer->UnBindBuffer();
        return values;
    };
    Renderer renderer;
    for (const auto& [count, indexBytes, vertexBytes] : {std::tuple(4, 16, 48), {2, 16, 48}, {5, 20, 60}}) {
        ++data[0];
        renderer.makeVBOIndex(GL_STREAM_DRAW, count, data);
        renderer.makeVBOVertex(GL_STATIC_DRAW, 12, count, data);
        EXPECT_EQ(held(renderer.m_IndexBuffer, GL_ELEMENT_ARRAY_BUFFER), ints(indexBytes, data[0]));
        EXPECT_EQ(held(renderer.m_VertexBuffer, GL_ARRAY_BUFFER), ints(vertexBytes, data[0]));
        EXPECT_EQ(ints(renderer.m_IndexCount, renderer.m_VertexCount), ints(count, count));
    }
    const unsigned index = renderer.m_IndexBuffer->m_Buffer, vertex = renderer.m_VertexBuffer->m_Buffer;
    renderer.ClearAll();
    EXPECT_EQ(ints(renderer.m_VertexCount, renderer.m_IndexCount, renderer.m_HasVertices), ints(0, 0, 0));
    EXPECT_FALSE(glIsBuffer(index) || glIsBuffer(vertex));
}

TEST(VX_GLMeshDataRenderer, UpdatesFromMeshesWholeAndInPart) {
    HeadlessContext gl(8, 8);
    Renderer renderer;
    VX_GLMeshData mesh;
    mesh.AllocateVertex(3, 24);
    mesh.AllocateIndex(6);
    mesh.m_CarriedVector0 = mesh.m_CarriedVector1 = mesh.m_CarriedVector2 = {2, 4, 6};
    const auto update = [&](int vertices, int indices) {
        renderer.UpdateRangeByMeshData(GL_STATIC_DRAW, GL_STATIC_DRAW, &mesh, vertices, indices);
        return ints(renderer.m_VertexCount, renderer.m_VertexBuffer->m_Size, renderer.m_IndexCount);
    };
    EXPECT_EQ(update(4, 3), ints(4, 4 * 24, 3));
    EXPECT_EQ(update(4000, 3000), ints(24, 24 * 24, 6)) << "no more than the mesh has";
    const glm::vec3 sum = renderer.m_CarriedVector0 + renderer.m_CarriedVector1 + renderer.m_CarriedVector2;
    EXPECT_EQ(sum, glm::vec3(6, 12, 18));
    VX_GLMeshData bare; // neither vertices nor indices
    renderer.UpdateByMeshData(GL_STATIC_DRAW, GL_STATIC_DRAW, &bare);
    EXPECT_EQ(ints(renderer.m_IndexBuffer != nullptr, renderer.m_VertexCount), ints(0, 24));
}
