// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/textures/tags/VX_GLDynamicTexture.h>

#include <VX_OpenGL64/textures/VX_GLUtility.h>
#include <VX_OpenGL64/textures/tags/private/OffscreenPicture.h>
#include <VX_Platform/Foundation/NSAutoreleasePool.h>
#include <VX_Platform/Foundation/NSLog.h>
#include <VX_Platform/OpenGL/private/CurrentContext.h>

#include <epoxy/gl.h>

VX_GLDynamicTexture::VX_GLDynamicTexture(int width, int height) {
    if (!((width > 0) && (height > 0)))
        vx::fatal("VX_GLDynamicTexture: assertion ((w>0)&&(h>0)) failed, w is %d and h is %d", width, height);
    takeSize(width, height);
}

void VX_GLDynamicTexture::takeSize(int width, int height) {
    m_ContentSize = {static_cast<float>(width), static_cast<float>(height)};
    m_TextureSize = m_ContentSize;
    m_TexCoords = {0.0f, 0.0f, 0.0f, 0.0f};
    m_Aspect = static_cast<float>(height) / static_cast<float>(width);
}

void VX_GLDynamicTexture::Resize(int width, int height) {
    VX_GLUtility_FreeTexture(m_Texture);
    takeSize(width, height);
}

void VX_GLDynamicTexture::Draw() {}

void VX_GLDynamicTexture::UpdateRectangleTexture() {
    VX_NEEDS_CONTEXT();
    const auto pool = NSInit(new NSAutoreleasePool);
    m_Target = GL_TEXTURE_RECTANGLE_ARB;
    const auto bitmap = vx::paintOffscreen(contentSize(), m_Flipped, [this] { Draw(); });
    writeRectangle(bitmap.get(), false);
}

void VX_GLDynamicTexture::UpdateRectangleTextureByBitmap(NSBitmapImageRep* bitmap) {
    VX_NEEDS_CONTEXT();
    m_Target = GL_TEXTURE_RECTANGLE_ARB;
    writeRectangle(bitmap, true);
}

void VX_GLDynamicTexture::writeRectangle(const NSBitmapImageRep* bitmap, bool blueFirst) {
    const vx::TexturePixels pixels(bitmap);
    const GLenum withAlpha = blueFirst ? GL_BGRA : GL_RGBA, without = blueFirst ? GL_BGR : GL_RGB;
    const GLenum format = pixels.hasAlpha ? withAlpha : without;
    vx::setUnpackingOf(pixels);
    if (m_Texture) {
        glBindTexture(GL_TEXTURE_RECTANGLE_ARB, m_Texture);
        glTexSubImage2D(GL_TEXTURE_RECTANGLE_ARB, 0, 0, 0, pixels.width, pixels.height, format,
                        GL_UNSIGNED_BYTE, pixels.data);
    } else {
        m_Texture = vx::makeRectangleTexture();
        glTexImage2D(GL_TEXTURE_RECTANGLE_ARB, 0, pixels.hasAlpha ? GL_RGBA8 : GL_RGB8, pixels.width,
                     pixels.height, 0, format, GL_UNSIGNED_BYTE, pixels.data);
    }
    m_TextureSize = {static_cast<float>(pixels.width), static_cast<float>(pixels.height)};
    m_TexCoords = {0.0f, 0.0f, m_TextureSize.x, m_TextureSize.y};
}

void VX_GLDynamicTexture::UpdateMipmapTexture() {
    VX_NEEDS_CONTEXT();
    const auto pool = NSInit(new NSAutoreleasePool);
    m_Target = GL_TEXTURE_2D;
    const int width = vx::powerOfTwoFor(m_ContentSize.x), height = vx::powerOfTwoFor(m_ContentSize.y);
    const auto bitmap = vx::paintOffscreen(CGSizeMake(width, height), m_Flipped, [this] { Draw(); });
    writeMipmap(bitmap.get(), width, height);
    m_TextureSize = {static_cast<float>(width), static_cast<float>(height)};
    m_TexCoords = {0.0f, 0.0f, static_cast<float>(static_cast<double>(m_ContentSize.x) / width),
                   static_cast<float>(static_cast<double>(m_ContentSize.y) / height)};
}

void VX_GLDynamicTexture::writeMipmap(const NSBitmapImageRep* bitmap, int width, int height) {
    const vx::TexturePixels pixels(bitmap);
    const GLenum format = pixels.hasAlpha ? GL_RGBA : GL_RGB;
    const GLenum type = pixels.hasAlpha ? GL_UNSIGNED_INT_8_8_8_8_REV : GL_UNSIGNED_BYTE;
    vx::setUnpackingOf(pixels);
    if (m_Texture) {
        glBindTexture(GL_TEXTURE_2D, m_Texture);
        if (pixels.data) // else the canvas was too large, or memory short
            glTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, width, height, format, type, pixels.data);
    } else {
        m_Texture = vx::makeMipmapTexture();
        glTexImage2D(GL_TEXTURE_2D, 0, static_cast<GLint>(format), width, height, 0, format, type,
                     pixels.data);
    }
}
