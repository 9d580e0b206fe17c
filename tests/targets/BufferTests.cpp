// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/targets/VX_GLVBOIndex.h>
#include <VX_OpenGL64/targets/VX_GLVBOVertex.h>
#include <tests/support/HeadlessContext.h>
#include <tests/support/Pixels.h>

#include <epoxy/gl.h>
#include <gtest/gtest.h>

#include <cstring>

using namespace vx::test;

namespace {

template <class Buffer>
void checkOperations(GLenum target, GLenum binding, GLenum otherBinding) {
    auto* buffer = new Buffer;
    const unsigned name = buffer->m_Buffer;
    const auto parameter = [&](GLenum which) {
        int value = 0;
        glGetBufferParameteriv(target, which, &value);
        return value;
    };
    EXPECT_EQ(buffer->m_Size, 0);
    buffer->BindBuffer();
    EXPECT_EQ(stateOf(binding, otherBinding), ints(name, 0));
    float data[4] = {1, 2, 3, 4};
    buffer->Allocate(16, GL_DYNAMIC_DRAW, data);
    EXPECT_EQ(parameter(GL_BUFFER_USAGE), GL_DYNAMIC_DRAW);
    buffer->Copy(4, 8, data);
    const void* mapped = buffer->Lock(GL_READ_ONLY);
    ASSERT_NE(mapped, nullptr);
    EXPECT_EQ(parameter(GL_BUFFER_ACCESS), GL_READ_ONLY);
    const float expected[4] = {1, 1, 2, 4};
    EXPECT_EQ(std::memcmp(mapped, expected, sizeof expected), 0);
    EXPECT_TRUE(buffer->Unlock());
    EXPECT_FALSE(buffer->Unlock()) << "it is not mapped any more";
    buffer->Allocate(8, GL_STREAM_DRAW, nullptr);
    EXPECT_EQ(ints(buffer->m_Size, parameter(GL_BUFFER_SIZE)), ints(8, 8));
    buffer->UnBindBuffer();
    EXPECT_EQ(stateOf(binding), ints(0));
    buffer->Allocate(4000, GL_STATIC_DRAW, nullptr);
    EXPECT_EQ(buffer->m_Size, 4000) << "also when GL refused";
    delete buffer;
    EXPECT_FALSE(glIsBuffer(name));
}

} // namespace

TEST(VX_GLVBOTarget, VertexAndIndexDifferInNothingButTheTarget) {
    HeadlessContext gl(8, 8);
    checkOperations<VX_GLVBOVertex>(GL_ARRAY_BUFFER, GL_ARRAY_BUFFER_BINDING,
                                    GL_ELEMENT_ARRAY_BUFFER_BINDING);
    checkOperations<VX_GLVBOIndex>(GL_ELEMENT_ARRAY_BUFFER, GL_ELEMENT_ARRAY_BUFFER_BINDING,
                                   GL_ARRAY_BUFFER_BINDING);
}
