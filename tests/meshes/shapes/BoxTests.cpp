// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/meshes/shapes/VX_GLGeometryCube.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <set>
#include <string>
#include <vector>

using Vec2 = glm::tvec2<float>;
using Vec3 = glm::tvec3<float>;
using Vec4 = glm::tvec4<float>;
using Writer = void* (*)(void*, int, Vec3, Vec3);

namespace {

struct Shape {
    const char* name;
    Writer write;
    float bottom, top;        // around center (10, 20, 30) with size (1, 2, 3)
    bool inward, clockwise;   // normals, and corners as seen from outside
    const char* firstCorners; // of each face, one letter a side
};

const Shape shapes[] = {
    {"cube", VX_GLGeometryCube::MakeCube, 18, 22, false, false, "-T+ -T- +T- +T+ -T- -B+"},
    {"building", VX_GLGeometryCube::MakeBuilding, 20, 22, true, false, "+T- +B+ +T+ +B- -T+ +T-"},
    {"floor", VX_GLGeometryCube::MakeFloor, 18, 20, false, false, "+T- +B+ +T+ +B- -T+ +T-"},
    {"room", VX_GLGeometryCube::MakeRoom, 18, 22, true, true, "+T- +B+ +T+ +B- -T+ +T-"},
};

struct PN {
    Vec3 position, normal;
};

std::vector<PN> written(const Shape& shape) {
    std::vector<PN> box(24);
    EXPECT_EQ(shape.write(box.data(), 3, {10, 20, 30}, {1, 2, 3}), box.data() + 24);
    return box;
}

std::string sidesOf(const Vec3& p, const Shape& shape) {
    return {p.x < 10 ? '-' : '+', p.y == shape.bottom ? 'B' : 'T', p.z < 30 ? '-' : '+'};
}

} // namespace

TEST(Box, EachShapeHasItsBoundsNormalsAndWinding) {
    for (const Shape& shape : shapes) {
        SCOPED_TRACE(shape.name);
        const std::vector<PN> box = written(shape);
        const Vec3 middle{10, (shape.bottom + shape.top) / 2, 30};
        std::set<std::string> sides;
        for (int face = 0; face < 6; ++face) {
            SCOPED_TRACE(face);
            const PN* c = &box[face * 4];
            Vec3 outward = (c[0].position + c[1].position + c[2].position + c[3].position) / 4.0f - middle;
            outward /= glm::length(outward);
            sides.insert(std::to_string(outward.x) + std::to_string(outward.y) + std::to_string(outward.z));
            const Vec3 wound = glm::cross(c[2].position - c[1].position, c[0].position - c[1].position);
            EXPECT_EQ(wound / glm::length(wound), outward * (shape.clockwise ? -1.0f : 1.0f));
            EXPECT_EQ(sidesOf(c[0].position, shape), std::string(shape.firstCorners + face * 4, 3));
            for (int i = 0; i < 4; ++i) {
                EXPECT_EQ(c[i].normal, outward * (shape.inward ? -1.0f : 1.0f));
                EXPECT_EQ(std::abs(c[i].position.x - 10), 1.0f);
                EXPECT_TRUE(c[i].position.y == shape.bottom || c[i].position.y == shape.top);
                EXPECT_EQ(std::abs(c[i].position.z - 30), 3.0f);
            }
        }
        EXPECT_EQ(sides.size(), 6u) << "six different faces";
    }
}

TEST(Box, FacesStandInTheirOrderAndNegatedNormalsHaveNegativeZeros) {
    const Vec3 x{1, 0, 0}, y{0, 1, 0}, z{0, 0, 1};
    const Vec3 cube[] = {z, -x, -z, x, y, -y}, floor[] = {y, -y, z, -z, -x, x},
               room[] = {-y, y, -z, z, x, -x};
    for (int face = 0; face < 6; ++face) {
        EXPECT_EQ(written(shapes[0])[face * 4].normal, cube[face]);
        EXPECT_EQ(written(shapes[1])[face * 4].normal, -floor[face]);
        EXPECT_EQ(written(shapes[2])[face * 4].normal, floor[face]);
        EXPECT_EQ(written(shapes[3])[face * 4].normal, room[face]);
    }
    EXPECT_TRUE(std::signbit(written(shapes[0])[4].normal.y));
    EXPECT_FALSE(std::signbit(written(shapes[0])[0].normal.y));
    // One face of each table whole: corners 0 to 3 of the last one.
    const char* last[] = {"-B+-B-+B-+B+", "+T-+T++B++B-", "+T-+T++B++B-", "+T-+B-+B++T+"};
    for (int shape = 0; shape < 4; ++shape) {
        std::string corners;
        for (int i = 20; i < 24; ++i)
            corners += sidesOf(written(shapes[shape])[i].position, shapes[shape]);
        EXPECT_EQ(corners, last[shape]) << shapes[shape].name;
    }
}

TEST(Box, EveryFormatIsFilledAndAnyOtherRefused) {
    VX_GLGeometryCube::Color = {0.25f, 0.5f, 0.75f, 1.0f};
    for (const Shape& shape : shapes) {
        std::vector<char> block(24 * 48 + 48, 0x55);
        for (int format : {1, 3, 5, 7, 9, 11, 13, 15, 19}) {
            VX_GLVertex layout;
            layout.Allocate(format, 1);
            void* end = shape.write(block.data(), format, {0, 0, 0}, {1, 1, 1});
            EXPECT_EQ(end, block.data() + 24 * layout.m_Stride) << shape.name << format;
            void* last = block.data() + 23 * layout.m_Stride;
            if (auto* diffuse = VX_GLVertex::GetDiffuse(format, last)) {
                EXPECT_EQ(*diffuse, VX_GLGeometryCube::Color);
            }
            if (auto* normal = VX_GLVertex::GetNormal(format, last)) {
                EXPECT_EQ(glm::length(*normal), 1.0f);
            }
            if (auto* uv = VX_GLVertex::GetUV(format, last)) {
                EXPECT_EQ(*uv, Vec2(0, 0));
            }
        }
        for (int format : {-1, 0, 2, 17, 31})
            EXPECT_EQ(shape.write(block.data(), format, {0, 0, 0}, {1, 1, 1}), block.data());
    }
    char bump[24 * 36];
    std::fill(std::begin(bump), std::end(bump), 0x55);
    EXPECT_EQ(VX_GLGeometryCube::MakeCube(bump, 19, {0, 0, 0}, {1, 1, 1}), bump + 864);
    EXPECT_EQ(std::count(bump + 24, bump + 36, 0x55), 12) << "the tangent stays";
    VX_GLGeometryCube::Color = {1, 1, 1, 1};
}

TEST(Box, GenerateUsesTheOwnStore) {
    VX_GLGeometryCube box;
    EXPECT_EQ(box.m_Center, Vec3(0, 0, 0));
    box.Generate(7);
    ASSERT_EQ(box.m_Vertex->m_Count, 24);
    EXPECT_EQ(box.m_Vertex->m_Stride, 32);
    EXPECT_EQ(box.m_IndexCount, 0);
    EXPECT_EQ(*box.m_Vertex->GetPosition(0), Vec3(-0.1f, 0.1f, 0.1f));
    void* block = box.m_Vertex->m_Data;
    box.m_Center = {1, 1, 1};
    box.Generate(7);
    EXPECT_EQ(box.m_Vertex->m_Data, block);
    EXPECT_EQ(*box.m_Vertex->GetPosition(0), Vec3(1 - 0.1f, 1 + 0.1f, 1 + 0.1f));
    box.Generate(2);
    EXPECT_EQ(box.m_Vertex->m_Data, nullptr);
}
