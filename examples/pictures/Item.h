// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <vector>

/// A place on the sheet, in pixels from its bottom left corner.
struct Place {
    float x, y, width, height;

    /// The largest place of that shape (height over width) in the middle of this one.
    Place fitted(float aspect) const;
};

/// One thing that the sheet shows. All but the constructor runs with the context current.
class Item {
public:
    virtual ~Item() = default;

    /// Makes what it draws with. False when there is nothing to show; the log has told why.
    virtual bool prepare() = 0;
    /// Height over width.
    virtual float aspect() const = 0;
    /// What stands below it.
    virtual std::string caption() const = 0;
    virtual void draw(const Place& place) = 0;
};

/// Puts the corner (u, v) of the texture that is bound at the place's bottom left, and (u + du, v + dv) at
/// its top right.
void drawQuad(const Place& place, float u, float v, float du, float dv);

using Items = std::vector<std::unique_ptr<Item>>;

/// A picture or a DDS file.
std::unique_ptr<Item> makeFileItem(const std::string& path);
/// A picture by each of the loaders, as it lies in its texture.
void addLoaderItems(Items& items, const std::string& path);
/// The cube map set that a file of one of its faces stands for.
std::unique_ptr<Item> makeCubeMapItem(const std::string& path);
/// The text by each of the five operations of the tag board maker.
void addTextItems(Items& items, const std::string& text, const char* font);
/// The calibration picture of a composition of that size.
std::unique_ptr<Item> makePatternItem(int width, int height);
