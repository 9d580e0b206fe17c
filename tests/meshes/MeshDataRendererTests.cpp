// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/meshes/VX_GLMeshData.h>
#include <VX_OpenGL64/meshes/VX_GLMeshDataRenderer.h>
#include <VX_OpenGL64/targets/VX_GLVBOIndex.h>
#include <VX_OpenGL64/targets/VX_GLVBOVertex.h>
#include <tests/support/GLTest.h>

using Renderer = VX_GLMeshDataRenderer;

namespace {

/// A format and the draws of its own.
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

/// Makes a program of a vertex shader that gives `color`, with its attributes where they are told, current.
void useProgram(const char* text, std::initializer_list<std::pair<GLuint, const char*>> attributes) {
    const GLuint program = glCreateProgram();
    const char* const texts[] = {text, "varying vec4 color; void main() { gl_FragColor = color; }"};
    for (const int i : {0, 1}) {
        const GLuint shader = glCreateShader(i == 0 ? GL_VERTEX_SHADER : GL_FRAGMENT_SHADER);
        glShaderSource(shader, 1, &texts[i], nullptr);
        glCompileShader(shader);
        glAttachShader(program, shader);
    }
    for (const auto& [place, name] : attributes)
        glBindAttribLocation(program, place, name);
    glLinkProgram(program);
    glUseProgram(program);
}

/// Lets pixels show what reaches the shader: normal, texture coordinate, colour and tangent, which is
/// attribute 5, as red, green, blue and alpha. White stands for what no array gives.
void showArrays() {
    useProgram(R"(attribute vec3 tangent;
varying vec4 color;
void main() {
    gl_Position = gl_Vertex;
    color = vec4(gl_Normal.y, gl_MultiTexCoord0.y, gl_Color.z, tangent.y);
})",
               {{5, "tangent"}});
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
    for (const auto& member : kFamily) {
        const auto [formatOf, drawOf, indexedOf] = member;
        const auto format = formatOf;
        const auto draw = drawOf;
        const auto drawWithIndex = indexedOf;
        SCOPED_TRACE(format);
        Renderer renderer;
        fill(renderer, format);
        for (const int first : {0, 4}) { // only the last four are seen
            EXPECT_EQ(shownBy([&] { (renderer.*draw)(GL_QUADS, first, 4); }), first ? expected(format) : 0);
            EXPECT_EQ(shownBy([&] { renderer.Draw(GL_QUADS, format, first, 4); }),
                      first ? expected(format) : 0);
        }
        EXPECT_EQ(shownBy([&] { renderer.Draw(GL_QUADS, format, 0, 0); }), expected(format)) << "all of them";
        EXPECT_EQ(shownBy([&] { (renderer.*drawWithIndex)(GL_QUADS); }), expected(format));
        EXPECT_EQ(shownBy([&] { renderer.DrawWithIndex(GL_QUADS, format); }),
                  format == 11 ? 0 : expected(format))
            << "11 is left out there";
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
    useProgram(R"(attribute vec3 position, normal;
attribute vec2 uv;
varying vec4 color;
void main() {
    gl_Position = vec4(position, 1.0);
    color = vec4(normal.y, uv.y, 0.2, 0.0);
})",
               {{0, "position"}, {2, "normal"}, {3, "uv"}});
    glEnable(GL_BLEND);
    glBlendFunc(GL_ONE, GL_ONE);
    EXPECT_EQ(shownBy([&] { renderer.DrawPNTInstanced(GL_QUADS, 4, 4, 0, 2, 3, 2); }), 0x66CC6600u);
    EXPECT_EQ(shownBy([&] { renderer.DrawPNTInstanced(GL_QUADS, 0, 4, 0, 2, 3, 2); }), 0u);
    glVertexAttrib3f(3, 0, 0, 0);
    EXPECT_EQ(shownBy([&] { renderer.DrawPNTInstanced(GL_QUADS, 4, 4, 0, 2, -1, 2); }), 0x66006600u);
    EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
}

TEST(VX_GLMeshDataRenderer, DrawsNothingWithoutItsBuffers) {
    HeadlessContext gl(8, 8);
    Renderer renderer;
    fill(renderer, 15);
    renderer.makeVBOVertex(GL_STATIC_DRAW, 48, 0, nullptr);
    for (const auto& [format, draw, drawWithIndex] : kFamily) {
        renderer.Draw(GL_QUADS, format, 0, 0);
        renderer.DrawWithIndex(GL_QUADS, format);
        (renderer.*draw)(GL_QUADS, 0, 4);
        (renderer.*drawWithIndex)(GL_QUADS);
    }
    renderer.DrawTangent(GL_QUADS, 19, 5, 0, 0);
    renderer.drawPNBVertex(GL_QUADS, 5, 0, 4);
    renderer.drawWithIndexPNBVertex(GL_QUADS, 5);
    renderer.DrawPNTInstanced(GL_QUADS, 0, 4, 1, 2, 3, 1);
    float vertex[3] = {};
    renderer.makeVBOVertex(GL_STATIC_DRAW, 12, 1, vertex);
    renderer.makeVBOIndex(GL_STATIC_DRAW, 0, nullptr);
    renderer.DrawWithIndex(GL_QUADS, 1);
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
    mesh.m_CarriedVector0 = {2, 0, 0};
    mesh.m_CarriedVector1 = {0, 2, 0};
    mesh.m_CarriedVector2 = {0, 0, 2};
    const auto update = [&](int vertices, int indices) {
        renderer.UpdateRangeByMeshData(GL_STATIC_DRAW, GL_STATIC_DRAW, &mesh, vertices, indices);
        return ints(renderer.m_VertexCount, renderer.m_VertexBuffer->m_Size, renderer.m_IndexCount);
    };
    EXPECT_EQ(update(4, 3), ints(4, 4 * 24, 3));
    EXPECT_EQ(update(4000, 3000), ints(24, 24 * 24, 6)) << "no more than the mesh has";
    const Renderer& got = renderer;
    EXPECT_EQ(glm::mat3(got.m_CarriedVector0, got.m_CarriedVector1, got.m_CarriedVector2), glm::mat3(2));
    VX_GLMeshData bare; // neither vertices nor indices
    renderer.UpdateByMeshData(GL_STATIC_DRAW, GL_STATIC_DRAW, &bare);
    EXPECT_EQ(renderer.m_IndexBuffer, nullptr);
    EXPECT_EQ(ints(renderer.m_HasVertices, renderer.m_VertexCount), ints(1, 24));
}
