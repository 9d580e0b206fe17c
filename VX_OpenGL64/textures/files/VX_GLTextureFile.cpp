// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/textures/files/VX_GLTextureFile.h>

#include <VX_OpenGL64/textures/files/private/CubeMapFiles.h>
#include <VX_OpenGL64/textures/files/private/LoadFailure.h>
#include <VX_OpenGL64/textures/files/private/TextureCanvas.h>
#include <VX_OpenGL64/textures/private/UnpackState.h>
#include <VX_Platform/Foundation/NSLog.h>
#include <VX_Platform/Foundation/NSString.h>
#include <VX_Platform/OpenGL/private/CurrentContext.h>

#include <epoxy/gl.h>

#include <optional>

namespace {

// In the place of a name. Callers take it for one.
constexpr unsigned kNoTexture = GL_INVALID_VALUE;

// A text or a drawn texture leaves the row length set. GL takes rows that overlap then, which no layout
// mends.
void tellOfShortRows(const char* function, const char* path, std::size_t rowLength, std::size_t width) {
    if (rowLength > 0 && rowLength < width)
        vx::tellOfFailure(function, path,
                          "GL_UNPACK_ROW_LENGTH is " + std::to_string(rowLength) +
                              ", below the texture's width of " + std::to_string(width) +
                              ": set it to 0 first");
}

bool beginLoadOf(const NSString* path) {
    vx::beginLoad();
    if (!path)
        vx::keepFailure(nullptr, "there is no path");
    return path != nullptr;
}

/// What one of the functions is told, and where it puts the sizes.
struct Load {
    const char* function;
    CGSize* size;
    CGSize* texCoordSize;

    /// Reads the picture onto a canvas, of which nothing is left when that fails.
    std::optional<vx::TextureCanvas> read(const char* path, bool powersOfTwo,
                                          const vx::UnpackLayout& layout) const;
    void upload(unsigned target, const vx::TextureCanvas& canvas, bool mipmap) const;
    /// Whether GL took it. Then the sizes are told.
    bool finish(const char* path, const vx::TextureCanvas& canvas) const;
};

std::optional<vx::TextureCanvas> Load::read(const char* path, bool powersOfTwo,
                                            const vx::UnpackLayout& layout) const {
    std::string why;
    const auto picture = vx::openPicture(path, &why);
    if (!picture) {
        vx::tellOfFailure(function, path, why);
        return {};
    }
    vx::TextureCanvas canvas(picture->info(), vx::pixelFormatOf(picture->info()), powersOfTwo, layout);
    if (!canvas) {
        NSLog("Texture Loader: Failed creating CGBitmapContext.");
        vx::keepFailure(path, "there is not enough memory");
        return {};
    }
    if (!canvas.read(*picture)) {
        vx::tellOfFailure(function, path, picture->failure());
        return {};
    }
    return canvas;
}

void Load::upload(unsigned target, const vx::TextureCanvas& canvas, bool mipmap) const {
    const void* pixels = vx::unpackedFrom(canvas.pixels(), canvas.rowBytes(), canvas.bytesPerPixel());
    const auto give = mipmap ? _GLDoTexImage2DMipMaps : _GLDoTexImage2D;
    give(target, canvas.format(), canvas.width(), canvas.height(), pixels);
}

bool Load::finish(const char* path, const vx::TextureCanvas& canvas) const {
    if (const GLenum error = glGetError(); error != GL_NO_ERROR) {
        NSLog("Texture Loader: OpenGL error 0x%04X", error);
        vx::keepGLError(path, error);
        return false;
    }
    const auto width = static_cast<float>(canvas.width()), height = static_cast<float>(canvas.height());
    const auto imageWidth = static_cast<double>(canvas.imageWidth());
    const auto imageHeight = static_cast<double>(canvas.imageHeight());
    if (size)
        *size = {width * imageWidth / width, height * imageHeight / height};
    if (texCoordSize)
        *texCoordSize = {imageWidth / width, imageHeight / height};
    return true;
}

} // namespace

unsigned int VX_GLTextureLoader2D(NSString* path, CGSize* size, CGSize* texCoordSize, bool mipmap) {
    VX_NEEDS_CONTEXT();
    const Load load{"VX_GLTextureLoader2D", size, texCoordSize};
    if (!beginLoadOf(path))
        return kNoTexture;
    const vx::UnpackLayout layout = vx::currentUnpackLayout();
    const auto canvas = load.read(path->UTF8String(), true, layout);
    if (!canvas)
        return kNoTexture;
    tellOfShortRows(load.function, path->UTF8String(), layout.rowLength, canvas->width());
    GLuint name = 0;
    GLint former = 0;
    glGenTextures(1, &name);
    glGetIntegerv(GL_TEXTURE_BINDING_2D, &former);
    glEnable(GL_TEXTURE_2D);
    glBindTexture(GL_TEXTURE_2D, name);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, mipmap ? GL_LINEAR_MIPMAP_LINEAR : GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_REPEAT);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_REPEAT);
    load.upload(GL_TEXTURE_2D, *canvas, mipmap);
    glDisable(GL_TEXTURE_2D);
    glBindTexture(GL_TEXTURE_2D, static_cast<GLuint>(former));
    return load.finish(path->UTF8String(), *canvas) ? name : kNoTexture;
}

unsigned int VX_GLTextureLoader2DRect(NSString* path, CGSize* size, CGSize* texCoordSize) {
    VX_NEEDS_CONTEXT();
    const Load load{"VX_GLTextureLoader2DRect", size, texCoordSize};
    if (!beginLoadOf(path))
        return kNoTexture;
    constexpr int alignment = 4;
    const auto canvas = load.read(path->UTF8String(), false, {alignment, 0});
    if (!canvas)
        return kNoTexture;
    GLuint name = 0;
    {
        const vx::KeptUnpackState kept;
        vx::setClientStorage(0);
        glPixelStorei(GL_UNPACK_ROW_LENGTH, static_cast<GLint>(canvas->width()));
        glPixelStorei(GL_UNPACK_ALIGNMENT, alignment);
        glGenTextures(1, &name);
        glEnable(GL_TEXTURE_RECTANGLE_ARB);
        glBindTexture(GL_TEXTURE_RECTANGLE_ARB, name);
        load.upload(GL_TEXTURE_RECTANGLE_ARB, *canvas, false);
        glDisable(GL_TEXTURE_RECTANGLE_ARB);
    }
    return load.finish(path->UTF8String(), *canvas) ? name : kNoTexture;
}

unsigned int VX_GLTextureLoaderCubeMap2D(NSString* path, CGSize* size, CGSize* texCoordSize, bool mipmap) {
    VX_NEEDS_CONTEXT();
    const Load load{"VX_GLTextureLoaderCubeMap2D", size, texCoordSize};
    if (!beginLoadOf(path))
        return 0;
    std::string why;
    const auto files = vx::findCubeMapFiles(*path, why);
    if (!why.empty()) {
        vx::tellOfFailure(load.function, path->UTF8String(), why);
        return 0;
    }
    constexpr int alignment = 4;
    GLuint name = 0;
    {
        const vx::KeptUnpackState kept;
        glGenTextures(1, &name);
        glBindTexture(GL_TEXTURE_CUBE_MAP, name);
        glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
        vx::setClientStorage(0);
        glPixelStorei(GL_UNPACK_ALIGNMENT, alignment);
        for (std::size_t face = 0; face < files.size(); ++face) {
            if (const auto canvas = load.read(files[face].c_str(), true, {alignment, 0})) {
                load.upload(vx::cubeMapFaces[face].target, *canvas, mipmap);
                load.finish(files[face].c_str(), *canvas);
            }
        }
        glTexParameteri(GL_TEXTURE_CUBE_MAP, GL_TEXTURE_MIN_FILTER,
                        mipmap ? GL_LINEAR_MIPMAP_LINEAR : GL_LINEAR);
        glTexParameteri(GL_TEXTURE_CUBE_MAP, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
        for (const GLenum wrap : {GL_TEXTURE_WRAP_S, GL_TEXTURE_WRAP_T, GL_TEXTURE_WRAP_R})
            glTexParameteri(GL_TEXTURE_CUBE_MAP, wrap, GL_CLAMP_TO_EDGE);
    }
    glBindTexture(GL_TEXTURE_CUBE_MAP, 0);
    return name;
}
