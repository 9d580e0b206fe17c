// SPDX-License-Identifier: MIT
#include <examples/pictures/Item.h>

#include <VX_OpenGL64/textures/VX_GLTexture.h>
#include <VX_OpenGL64/textures/VX_GLTexture2D.h>
#include <VX_OpenGL64/textures/VX_GLTextureCubeMap2D.h>

#include <VX_Platform/Foundation/NSString.h>

#include <epoxy/gl.h>

#include <cstdio>
#include <fstream>

namespace {

std::string fileName(const std::string& path) {
    return path.substr(path.find_last_of('/') + 1);
}

std::string withSize(const std::string& path, int width, int height) {
    return fileName(path) + "  " + std::to_string(width) + " x " + std::to_string(height);
}

/// Stretched over its texture with the bottom row first, colours multiplied by alpha.
class PictureItem : public Item {
public:
    explicit PictureItem(const std::string& path) : m_Path(path) {}
    bool prepare() override { return m_Texture.loadMipmapTextureFromPath(m_Path.c_str(), true); }
    float aspect() const override { return float(m_Texture.orgheight()) / float(m_Texture.orgwidth()); }
    std::string caption() const override {
        return withSize(m_Path, m_Texture.orgwidth(), m_Texture.orgheight());
    }
    void draw(const Place& place) override {
        glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
        m_Texture.enableTexture(true);
        drawQuad(place, 0, 0, 1, 1);
        m_Texture.enableTexture(false);
    }

private:
    std::string m_Path;
    VX_GLTexture m_Texture;
};

/// Blocks as they lie in the file: the top row first, alpha by itself.
class DDSItem : public Item {
public:
    explicit DDSItem(const std::string& path) : m_Path(path) {}
    bool prepare() override {
        return m_Texture.LoadDDSFromPath(NSString::stringWithUTF8String(m_Path.c_str()));
    }
    float aspect() const override { return float(m_Texture.Size().height / m_Texture.Size().width); }
    std::string caption() const override {
        return withSize(m_Path, int(m_Texture.Size().width), int(m_Texture.Size().height));
    }
    void draw(const Place& place) override {
        glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
        glEnable(GL_TEXTURE_2D);
        glBindTexture(GL_TEXTURE_2D, m_Texture.Name());
        drawQuad(place, 0, 1, 1, -1);
        glDisable(GL_TEXTURE_2D);
    }

private:
    std::string m_Path;
    VX_GLTexture2D m_Texture;
};

/// The six faces unfolded, each as its own file shows it.
class CubeMapItem : public Item {
public:
    explicit CubeMapItem(const std::string& path) : m_Path(path) {}
    bool prepare() override {
        if (m_Texture.LoadFromPath(NSString::stringWithUTF8String(m_Path.c_str()), true))
            return true;
        std::fprintf(stderr, "%s: the six files of its cube map set are not there\n", m_Path.c_str());
        return false;
    }
    float aspect() const override { return 3.0f / 4.0f; }
    std::string caption() const override { return fileName(m_Path) + "  cube map"; }
    void draw(const Place& place) override;

private:
    std::string m_Path;
    VX_GLTextureCubeMap2D m_Texture;
};

/// Where a face lies in the cross, in faces from its bottom left, and the directions into the cube at its
/// bottom left corner, along its bottom edge and up its left one.
struct CrossFace {
    int column, row;
    float corner[3], right[3], up[3];
};

constexpr CrossFace kCross[] = {
    {0, 1, {-1, -1, -1}, {0, 0, 2}, {0, 2, 0}}, {1, 1, {-1, -1, 1}, {2, 0, 0}, {0, 2, 0}},
    {2, 1, {1, -1, 1}, {0, 0, -2}, {0, 2, 0}},  {3, 1, {1, -1, -1}, {-2, 0, 0}, {0, 2, 0}},
    {1, 2, {-1, 1, 1}, {2, 0, 0}, {0, 0, -2}},  {1, 0, {-1, -1, -1}, {2, 0, 0}, {0, 0, 2}},
};

void cubeVertex(const CrossFace& face, const Place& place, float s, float t) {
    glTexCoord3f(face.corner[0] + s * face.right[0] + t * face.up[0],
                 face.corner[1] + s * face.right[1] + t * face.up[1],
                 face.corner[2] + s * face.right[2] + t * face.up[2]);
    glVertex2f(place.x + (float(face.column) + s) * place.width / 4,
               place.y + (float(face.row) + t) * place.height / 3);
}

void CubeMapItem::draw(const Place& place) {
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glEnable(GL_TEXTURE_CUBE_MAP);
    glBindTexture(GL_TEXTURE_CUBE_MAP, m_Texture.Name());
    glBegin(GL_QUADS);
    for (const CrossFace& face : kCross) {
        cubeVertex(face, place, 0, 0);
        cubeVertex(face, place, 1, 0);
        cubeVertex(face, place, 1, 1);
        cubeVertex(face, place, 0, 1);
    }
    glEnd();
    glDisable(GL_TEXTURE_CUBE_MAP);
}

bool isDDS(const std::string& path) {
    char magic[4] = {};
    std::ifstream(path, std::ios::binary).read(magic, sizeof magic);
    return std::string(magic, sizeof magic) == "DDS ";
}

} // namespace

void drawQuad(const Place& place, float u, float v, float du, float dv) {
    glBegin(GL_QUADS);
    glTexCoord2f(u, v);
    glVertex2f(place.x, place.y);
    glTexCoord2f(u + du, v);
    glVertex2f(place.x + place.width, place.y);
    glTexCoord2f(u + du, v + dv);
    glVertex2f(place.x + place.width, place.y + place.height);
    glTexCoord2f(u, v + dv);
    glVertex2f(place.x, place.y + place.height);
    glEnd();
}

std::unique_ptr<Item> makeFileItem(const std::string& path) {
    if (isDDS(path))
        return std::make_unique<DDSItem>(path);
    return std::make_unique<PictureItem>(path);
}

std::unique_ptr<Item> makeCubeMapItem(const std::string& path) {
    return std::make_unique<CubeMapItem>(path);
}
