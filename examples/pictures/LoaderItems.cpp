// SPDX-License-Identifier: MIT
#include <examples/pictures/Item.h>

#include <VX_OpenGL64/textures/VX_GLTexture.h>
#include <VX_OpenGL64/textures/VX_GLTexture2D.h>
#include <VX_OpenGL64/textures/VX_GLTextureRect.h>
#include <VX_Platform/Foundation/NSString.h>

#include <epoxy/gl.h>

#include <functional>

namespace {

/// What a loader has made of a file.
struct Loaded {
    unsigned int target, name;
    /// Texture coordinates at which the picture ends.
    CGSize end;
    CGSize size;
};

/// A file by one loader, on a quad whose texture coordinates begin with (0, 0) at its bottom left: upright
/// where the loader hands the bottom row to GL first.
class LoaderItem : public Item {
public:
    using Load = std::function<Loaded(NSString* path)>;

    LoaderItem(const char* loader, const std::string& path, Load load)
        : m_Loader(loader), m_Path(path), m_Load(std::move(load)) {}
    bool prepare() override {
        m_Loaded = m_Load(NSString::stringWithUTF8String(m_Path.c_str()));
        return m_Loaded.size.width > 0;
    }
    float aspect() const override { return float(m_Loaded.size.height / m_Loaded.size.width); }
    std::string caption() const override { return m_Loader; }
    void draw(const Place& place) override {
        glBlendFunc(GL_ONE, GL_ZERO);
        glEnable(m_Loaded.target);
        glBindTexture(m_Loaded.target, m_Loaded.name);
        drawQuad(place, 0, 0, float(m_Loaded.end.width), float(m_Loaded.end.height));
        glDisable(m_Loaded.target);
    }

private:
    const char* m_Loader;
    std::string m_Path;
    Load m_Load;
    Loaded m_Loaded{};
};

Loaded loaded(const VX_GLTextureBase& texture, CGSize end) {
    return {texture.Target(), texture.Name(), end, texture.Size()};
}

Loaded loaded(VX_GLTexture& texture, CGSize end) {
    const CGSize size = CGSizeMake(texture.orgwidth(), texture.orgheight());
    return {texture.txType(), texture.name(), end, size};
}

} // namespace

void addLoaderItems(Items& items, const std::string& path) {
    const auto add = [&](const char* loader, LoaderItem::Load load) {
        items.push_back(std::make_unique<LoaderItem>(loader, path, std::move(load)));
    };
    add("VX_GLTexture2D", [texture = std::make_shared<VX_GLTexture2D>()](NSString* file) {
        texture->LoadFromPath(file, false);
        return loaded(*texture, texture->TexCoordSize());
    });
    add("VX_GLTextureRect", [texture = std::make_shared<VX_GLTextureRect>()](NSString* file) {
        texture->LoadFromPath(file);
        return loaded(*texture, texture->Size());
    });
    add("VX_GLTexture, 2D", [texture = std::make_shared<VX_GLTexture>()](NSString* file) {
        texture->load2DTextureFromPath(file->UTF8String());
        return loaded(*texture, CGSizeMake(1, 1));
    });
    add("VX_GLTexture, rectangle", [texture = std::make_shared<VX_GLTexture>()](NSString* file) {
        texture->loadRectangleExtTextureFromPath(file->UTF8String());
        return loaded(*texture, CGSizeMake(texture->width(), texture->height()));
    });
}
