// SPDX-License-Identifier: MIT
#include <VX_Platform/CoreImage/private/TextureImage.h>

#include <VX_Platform/AppKit/private/Focus.h>
#include <VX_Platform/OpenGL/GLCapabilities.h>
#include <VX_Platform/OpenGL/private/PlainPacking.h>
#include <VX_Platform/drawing/PixelMemory.h>
#include <VX_Platform/drawing/PixelOrder.h>

#include <epoxy/gl.h>

#include <algorithm>
#include <initializer_list>
#include <iterator>

namespace vx {

namespace {

/// Kinds of texture, and what is asked for the one that is bound. The first two have pictures for us.
constexpr struct Kind {
    GLenum target, binding;
} kKinds[] = {{GL_TEXTURE_2D, GL_TEXTURE_BINDING_2D},
              {GL_TEXTURE_RECTANGLE, GL_TEXTURE_BINDING_RECTANGLE},
              {GL_TEXTURE_1D, GL_TEXTURE_BINDING_1D},
              {GL_TEXTURE_3D, GL_TEXTURE_BINDING_3D},
              {GL_TEXTURE_CUBE_MAP, GL_TEXTURE_BINDING_CUBE_MAP},
              {GL_TEXTURE_1D_ARRAY, GL_TEXTURE_BINDING_1D_ARRAY},
              {GL_TEXTURE_2D_ARRAY, GL_TEXTURE_BINDING_2D_ARRAY},
              {GL_TEXTURE_CUBE_MAP_ARRAY, GL_TEXTURE_BINDING_CUBE_MAP_ARRAY},
              {GL_TEXTURE_BUFFER, GL_TEXTURE_BINDING_BUFFER},
              {GL_TEXTURE_2D_MULTISAMPLE, GL_TEXTURE_BINDING_2D_MULTISAMPLE},
              {GL_TEXTURE_2D_MULTISAMPLE_ARRAY, GL_TEXTURE_BINDING_2D_MULTISAMPLE_ARRAY}};

GLint value(GLenum name) {
    GLint value = 0;
    glGetIntegerv(name, &value);
    return value;
}

/// A texture bound to its target; at the end what was bound there before is again.
class BoundTexture {
public:
    BoundTexture(const Kind& kind, GLuint name)
        : m_Target(kind.target), m_Former(static_cast<GLuint>(value(kind.binding))) {
        glBindTexture(m_Target, name);
    }
    ~BoundTexture() { glBindTexture(m_Target, m_Former); }
    BoundTexture(const BoundTexture&) = delete;
    BoundTexture& operator=(const BoundTexture&) = delete;

    int level(GLenum parameter) const {
        GLint value = 0;
        glGetTexLevelParameteriv(m_Target, 0, parameter, &value);
        return value;
    }

private:
    GLenum m_Target;
    GLuint m_Former;
};

// The texture says itself what it is bound to. Mesa tells no target by glGetTextureParameteriv.
const Kind* kindByItself(GLuint name) {
    GLint former[std::size(kKinds)] = {};
    std::transform(std::begin(kKinds), std::end(kKinds), former,
                   [](const Kind& kind) { return value(kind.binding); });
    glBindTextures(static_cast<GLuint>(value(GL_ACTIVE_TEXTURE) - GL_TEXTURE0), 1, &name);
    const Kind* const found = std::find_if(std::begin(kKinds), std::end(kKinds), [&](const Kind& kind) {
        return static_cast<GLuint>(value(kind.binding)) == name;
    });
    if (found == std::end(kKinds))
        return nullptr;
    glBindTexture(found->target, static_cast<GLuint>(former[found - kKinds]));
    return found;
}

// For older drivers: a wrong target makes an error. One that was there before is lost with it.
const Kind* kindByTrial(GLuint name) {
    for (const Kind* kind : {&kKinds[0], &kKinds[1]}) {
        glGetError();
        const BoundTexture trial(*kind, name);
        if (glGetError() == GL_NO_ERROR)
            return kind;
    }
    return nullptr;
}

const Kind* kindOf(GLuint name) {
    if (!glIsTexture(name))
        return nullptr;
    const Kind* const kind = currentGLCapabilities().bindTextures ? kindByItself(name) : kindByTrial(name);
    return kind && kind - kKinds < 2 ? kind : nullptr;
}

// Into the focused image, from its lowest row to the topmost.
void writeUpwards(const PixelMemory& rows, int width, int height) {
    Canvas& canvas = focusedCanvas();
    unsigned char* const pixels = canvas.pixels();
    for (int row = 0; pixels && row < height; ++row)
        copyOpaque(rows.bytes() + row * (width * 4LL), pixels + (height - 1 - row) * canvas.stride(),
                   std::size_t(width));
}

} // namespace

NSRef<NSImage> imageOfTexture(unsigned texture) {
    const Kind* const kind = kindOf(texture);
    if (!kind)
        return nullptr;
    const BoundTexture bound(*kind, texture);
    const int width = bound.level(GL_TEXTURE_WIDTH), height = bound.level(GL_TEXTURE_HEIGHT);
    if (width < 1 || height < 1 || bound.level(GL_TEXTURE_DEPTH_SIZE) > 0)
        return nullptr;
    const PixelMemory rows(std::size_t(width) * std::size_t(height) * 4);
    if (!rows.bytes())
        return nullptr;
    {
        const PlainPacking packing;
        glGetTexImage(kind->target, 0, GL_BGRA, GL_UNSIGNED_INT_8_8_8_8_REV, rows.bytes());
    }
    auto image = NSInit(new NSImage, CGSizeMake(width, height));
    image->lockFocusFlipped(true);
    writeUpwards(rows, width, height);
    image->unlockFocus();
    return image;
}

} // namespace vx
