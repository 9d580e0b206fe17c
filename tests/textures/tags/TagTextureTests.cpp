// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/textures/VX_GLTagTexture.h>
#include <VX_OpenGL64/textures/VX_GLUtility.h>
#include <tests/support/GLTest.h>

#include <climits>
#include <sstream>
#include <utility>

using Tag = VX_GLTagTexture;
using Draw = void (Tag::*)(const glm::tvec3<float>&, float);

namespace {

std::ostringstream calls;

/// u, v, x, y, z of each vertex, in the order of the calls.
std::string drawnBy(Tag& tag, Draw draw) {
    calls.str("");
    const auto coordinate =
        std::exchange(epoxy_glTexCoord2f, [](GLfloat u, GLfloat v) { calls << u << ' ' << v << ' '; });
    const auto vertex = std::exchange(epoxy_glVertex3f, [](GLfloat x, GLfloat y, GLfloat z) {
        calls << x << ' ' << y << ' ' << z << "; ";
    });
    (tag.*draw)({10, 20, 30}, 4);
    epoxy_glTexCoord2f = coordinate;
    epoxy_glVertex3f = vertex;
    return calls.str();
}

unsigned newTexture(GLenum target = GL_TEXTURE_2D) {
    const unsigned char green[] = {0, 255, 0, 255};
    unsigned name = 0;
    glGenTextures(1, &name);
    glBindTexture(target, name);
    glTexParameteri(target, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexImage2D(target, 0, GL_RGBA, 1, 1, 0, GL_RGBA, GL_UNSIGNED_BYTE, green);
    return name;
}

} // namespace

TEST(VX_GLTagTexture, DrawsTheQuadInSevenWays) {
    HeadlessContext gl(8, 8);
    Tag tag;
    tag.Attach(GL_TEXTURE_2D, {}, {}, {1, 2, 4, 8}, 0.5f, newTexture()); // u to 5, v to 10
    const std::pair<Draw, const char*> rows[] = {
        {&Tag::Render, "5 10 10 20 30; 5 2 10 22 30; 1 2 14 22 30; 1 10 14 20 30; "},
        {&Tag::RenderRH, "5 10 6 18 30; 5 2 6 22 30; 1 2 14 22 30; 1 10 14 18 30; "},
        {&Tag::RenderRH_W, "1 10 8 19 30; 1 2 8 21 30; 5 2 12 21 30; 5 10 12 19 30; "},
        {&Tag::RenderRH_W2, "1 10 10 18 30; 1 2 10 20 30; 5 2 14 20 30; 5 10 14 18 30; "},
        {&Tag::RenderRH_W3, "1 2 10 22 30; 1 10 10 20 30; 5 10 14 20 30; 5 2 14 22 30; "},
        {&Tag::DrawQuads, "5 10 10 20 30; 5 2 10 22 30; 1 2 14 22 30; 1 10 14 20 30; "},
        {&Tag::DrawQuadsRH, "1 10 6 18 30; 1 2 6 22 30; 5 2 14 22 30; 5 10 14 18 30; "}};
    for (const auto& [draw, vertices] : rows)
        EXPECT_EQ(drawnBy(tag, draw), vertices);
}

TEST(VX_GLTagTexture, LeavesTheStateThatItsCallersKnow) {
    HeadlessContext gl(8, 8);
    Tag tag;
    for (const auto& [target, binding] : {std::pair<int, int>(GL_TEXTURE_2D, GL_TEXTURE_BINDING_2D),
                                          {GL_TEXTURE_RECTANGLE_ARB, GL_TEXTURE_BINDING_RECTANGLE_ARB}}) {
        const unsigned name = newTexture(target);
        tag.SetTexture(target, {}, {}, {0, 0, 1, 1}, 1, name);
        for (const Draw draw :
             {&Tag::Render, &Tag::RenderRH, &Tag::RenderRH_W, &Tag::RenderRH_W2, &Tag::RenderRH_W3}) {
            glBindTexture(target, 0);
            glMatrixMode(GL_TEXTURE);
            glTranslatef(99, 99, 99);
            glMatrixMode(GL_MODELVIEW);
            glActiveTexture(GL_TEXTURE1);
            glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_REPLACE);
            clearTo(0, 0, 0);
            (tag.*draw)({-1, draw == &Tag::RenderRH_W2 ? 1 : -1, 0}, 4);
            int mode = 0;
            float matrix[16] = {};
            glGetTexEnviv(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, &mode);
            glGetFloatv(GL_TEXTURE_MATRIX, matrix);
            EXPECT_TRUE(pixelAt(0, 0) == 0x00ff00ffu && mode == GL_MODULATE && matrix[12] == 0.0f);
            EXPECT_EQ(stateOf(GL_ACTIVE_TEXTURE, GL_MATRIX_MODE, target, binding),
                      ints(GL_TEXTURE0, GL_TEXTURE, 0, name));
        }
        glBindTexture(target, 0);
        tag.BeginTexture();
        EXPECT_EQ(stateOf(target, binding), ints(1, name));
        tag.EndTexture();
        EXPECT_EQ(stateOf(target, binding), ints(0, name));
    }
}

TEST(VX_GLTagTexture, LivesByItsCountAndOwnsTheNameItHolds) {
    HeadlessContext gl(8, 8);
    Tag::Retain(nullptr);
    Tag::Release(nullptr);
    Tag* tag = new Tag;
    Tag::Retain(tag);
    const unsigned first = newTexture(), second = newTexture(), third = newTexture();
    tag->Attach(GL_TEXTURE_2D, {}, {}, {}, 1, first);
    tag->Attach(GL_TEXTURE_2D, {}, {}, {}, 1, second);
    EXPECT_TRUE(glIsTexture(first)) << "left to others";
    tag->SetTexture(GL_TEXTURE_2D, {}, {}, {}, 1, second);
    EXPECT_FALSE(glIsTexture(second)) << "it is deleted all the same";
    tag->SetTexture(7, {1.1, 2}, {3, 4}, {5, 6, 7, 8}, 9, third);
    EXPECT_EQ(tag->textureSize().width, 1.1f);
    EXPECT_EQ(ints(tag->target(), tag->texture(), tag->textureSize().height, tag->contentSize().width,
                   tag->contentSize().height, tag->texCoords()[3], tag->aspect()),
              ints(7, third, 2, 3, 4, 8, 9));
    tag->Release();
    EXPECT_TRUE(tag->retainCount() == 1 && glIsTexture(third));
    Tag::Release(tag);
    EXPECT_FALSE(glIsTexture(third));
}

TEST(VX_GLUtility, RoundsUpToPowersOfTwoAndFreesNames) {
    const std::pair<int, int> rows[] = {{0, 0}, {1, 1},  {2, 2},       {3, 4},
                                        {5, 8}, {-5, 0}, {1025, 2048}, {INT_MAX, INT_MIN}};
    for (const auto& [value, power] : rows)
        EXPECT_EQ(VX_GLUtility_NextHighestPowerOf2FromInt(value), power) << value;
    HeadlessContext gl(8, 8);
    unsigned name = newTexture();
    VX_GLUtility_FreeTexture(name);
    EXPECT_TRUE(name == 0 && !glIsTexture(1));
    EXPECT_DEATH(
        {
            NSOpenGLContext::clearCurrentContext();
            Tag().RenderRH_W2({}, 1);
        },
        "VX_GLTagTexture::RenderRH_W2: no OpenGL context");
}
