// SPDX-License-Identifier: MIT
#include <VX_Platform/OpenGL/private/PlainPacking.h>

#include <epoxy/gl.h>

#include <initializer_list>

namespace vx {

PlainPacking::PlainPacking() {
    glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
    for (const GLenum parameter :
         {GL_PACK_ROW_LENGTH, GL_PACK_SKIP_ROWS, GL_PACK_SKIP_PIXELS, GL_PACK_SWAP_BYTES, GL_PACK_LSB_FIRST})
        glPixelStorei(parameter, 0);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glGetIntegerv(GL_PIXEL_PACK_BUFFER_BINDING, &m_Buffer);
    glBindBuffer(GL_PIXEL_PACK_BUFFER, 0);
}

PlainPacking::~PlainPacking() {
    glBindBuffer(GL_PIXEL_PACK_BUFFER, static_cast<GLuint>(m_Buffer));
    glPopClientAttrib();
}

} // namespace vx
