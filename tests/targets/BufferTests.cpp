// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/targets/VX_GLVBOIndex.h>
#include <VX_OpenGL64/targets/VX_GLVBOVertex.h>
#include <tests/support/GLRecorder.h>
#include <tests/support/HeadlessContext.h>

#include <epoxy/gl.h>
#include <gtest/gtest.h>

#include <cstring>
#include <memory>

using namespace vx::test;
using Lines = GLRecorder::Lines;

namespace {

void checkOperations(std::unique_ptr<VX_GLVBOBase> buffer, GLRecorder& recorder, GLenum target) {
    const unsigned name = buffer->m_Buffer;
    EXPECT_EQ(recorder.take(), Lines{call("glGenBuffers", 1, out)});
    EXPECT_EQ(buffer->m_Size, 0);

    float data[4] = {1, 2, 3, 4};
    buffer->BindBuffer();
    buffer->Allocate(16, GL_STATIC_DRAW, data);
    buffer->Copy(4, 8, data);
    const void* mapped = buffer->Lock(GL_READ_ONLY);
    const float expected[4] = {1, 1, 2, 4};
    ASSERT_NE(mapped, nullptr);
    EXPECT_EQ(std::memcmp(mapped, expected, sizeof expected), 0);
    EXPECT_TRUE(buffer->Unlock());
    EXPECT_EQ(buffer->m_Size, 16);
    buffer->Allocate(8, GL_STREAM_DRAW, nullptr);
    EXPECT_EQ(buffer->m_Size, 8);
    buffer->UnBindBuffer();
    EXPECT_EQ(buffer->Lock(GL_READ_ONLY), nullptr) << "nothing is bound";
    buffer->Allocate(4000, GL_STATIC_DRAW, nullptr);
    EXPECT_EQ(buffer->m_Size, 4000) << "also when GL refused";
    EXPECT_NE(glGetError(), GLenum(GL_NO_ERROR));
    recorder.take();

    buffer->BindBuffer();
    buffer->Allocate(16, GL_STATIC_DRAW, data);
    buffer->Copy(4, 8, data);
    buffer->Lock(GL_WRITE_ONLY);
    buffer->Unlock();
    buffer->UnBindBuffer();
    buffer.reset();
    EXPECT_EQ(
        recorder.take(),
        (Lines{call("glBindBuffer", target, name), call("glBufferData", target, 16, data, GL_STATIC_DRAW),
               call("glBufferSubData", target, 4, 8, data), call("glMapBuffer", target, GL_WRITE_ONLY),
               call("glUnmapBuffer", target), call("glBindBuffer", target, 0),
               call("glDeleteBuffers", 1, std::vector<unsigned>{name})}));
}

} // namespace

TEST(VX_GLVBO, VertexAndIndexDifferInNothingButTheTarget) {
    HeadlessContext gl(8, 8);
    GLRecorder recorder;
    checkOperations(std::make_unique<VX_GLVBOVertex>(), recorder, GL_ARRAY_BUFFER);
    checkOperations(std::make_unique<VX_GLVBOIndex>(), recorder, GL_ELEMENT_ARRAY_BUFFER);
}
