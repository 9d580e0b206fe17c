// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/textures/tags/VX_GLTagBoardMaker.h>
#include <VX_Platform/AppKit/NSAttributedString.h>
#include <VX_Platform/AppKit/NSColor.h>
#include <VX_Platform/AppKit/NSFont.h>
#include <VX_Platform/Foundation/NSException.h>
#include <VX_Platform/Foundation/NSMutableDictionary.h>
#include <tests/textures/tags/TagPictures.h>

#include <algorithm>
#include <cmath>

namespace {

constexpr const char* kWords = "Some words to wrap";
constexpr const char* kDots = "\xC2\xA8"; // at the top of the line

NSString* string(const char* text) {
    return NSString::stringWithUTF8String(text);
}

struct TagBoardTest : TagTest {
    NSSize measure(const char* text) const {
        const auto attributes = NSInit(new NSMutableDictionary);
        attributes->setObject(NSFont::fontWithName(string("Arial Black"), 30), NSFontAttributeName);
        return NSInit(new NSAttributedString, string(text), attributes.get())->size();
    }
    /// All five, by number.
    VX_GLTagTexture* make(int kind, const char* text, float width = 100) {
        NSColor* paper = NSColor::colorWithDeviceRed(0, 0, 1, 0.2);
        NSString* words = string(text);
        return kind == 0   ? maker->renderText(words, 30, ink)
               : kind == 1 ? maker->renderTextForSingleLine(words, 30, paper, ink, width)
               : kind == 2 ? maker->renderTextForMipmapLimited(words, 30, ink, width)
               : kind == 3 ? maker->renderTextForMipmapLimitedSingleLine(words, 30, paper, ink, width)
                           : maker->renderTextForMipmap(words, 30, ink);
    }
    PixelRows pictureOf(int kind, const char* text, float width = 100) {
        VX_GLTagTexture* tag = make(kind, text, width);
        const PixelRows rows = picture(*tag);
        tag->Release();
        return rows;
    }

    NSColor* ink = NSColor::colorWithDeviceRed(1, 0.6, 0, 1);
    NSRef<VX_GLTagBoardMaker> maker = NSInit(new VX_GLTagBoardMaker);
};

} // namespace

TEST_F(TagBoardTest, SizesPlacesAndParametersAreThoseOfEachKind) {
    const NSSize line = measure(kWords);
    const struct Row {
        int kind;
        float width;
        double contentWidth, contentHeight;
    } rows[] = {{0, 0, std::ceil(line.width + 10), std::ceil(line.height + 10)},
                {1, 400.5, 401, std::ceil(line.height)},
                {2, 100, 100, line.height * (std::floor(line.width / 100) + 1)},
                {2, float(line.width), line.width, line.height},
                {3, 100, line.width, line.height},
                {4, 0, line.width + 8, line.height + 8}};
    for (const auto& [kind, width, contentWidth, contentHeight] : rows) {
        glPixelStorei(GL_UNPACK_ALIGNMENT, 8);
        VX_GLTagTexture* tag = make(kind, kWords, width);
        const bool isMipmap = kind > 1;
        const double wide = isMipmap ? std::exp2(std::ceil(std::log2(contentWidth))) : contentWidth;
        const double high = isMipmap ? std::exp2(std::ceil(std::log2(contentHeight))) : contentHeight;
        const GLenum binding = isMipmap ? GL_TEXTURE_BINDING_2D : GL_TEXTURE_BINDING_RECTANGLE_ARB;
        EXPECT_EQ(stateOf(GL_UNPACK_ROW_LENGTH, GL_UNPACK_ALIGNMENT, binding), ints(wide, 1, tag->texture()));
        EXPECT_EQ(
            ints(tag->target(), tag->textureSize().width, tag->textureSize().height, tag->retainCount()),
            ints(isMipmap ? GL_TEXTURE_2D : GL_TEXTURE_RECTANGLE_ARB, wide, high, 1));
        EXPECT_EQ(parametersOf(*tag),
                  isMipmap ? ints(GL_LINEAR, GL_LINEAR_MIPMAP_NEAREST, GL_REPEAT, GL_REPEAT, 1, GL_RGBA)
                           : ints(GL_LINEAR, GL_LINEAR, GL_CLAMP_TO_EDGE, GL_CLAMP_TO_EDGE, 0, GL_RGBA));
        EXPECT_NEAR(tag->contentSize().width, contentWidth, 1e-4);
        EXPECT_NEAR(tag->contentSize().height, contentHeight, 1e-4);
        EXPECT_NEAR(tag->aspect(), contentHeight / contentWidth, 1e-6);
        const double coords[] = {(wide - contentWidth) / 2, (high - contentHeight) / 2, contentWidth,
                                 contentHeight};
        for (int i = 0; i < 4; ++i)
            EXPECT_NEAR(tag->texCoords()[i], coords[i] / (isMipmap ? (i % 2 ? high : wide) : 1), 1e-6) << i;
        const std::vector<int> ink = picture(*tag).inked();
        EXPECT_TRUE(ink[2] >= coords[1] && ink[3] < coords[1] + contentHeight && ink[3] > ink[2] + 15)
            << kind;
        EXPECT_TRUE(ink[0] >= coords[0] && ink[1] < coords[0] + contentWidth) << kind;
        EXPECT_EQ(picture(*tag, isMipmap).width, int(wide) / (isMipmap ? 2 : 1));
        tag->Release();
    }
    EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
}

TEST_F(TagBoardTest, TextStandsInTheMiddleUprightInItsColour) {
    for (int kind = 0; kind < 5; ++kind) {
        const PixelRows rows = pictureOf(kind, kDots);
        const std::vector<int> box = rows.inked();
        EXPECT_NEAR(box[0] + box[1] + 1 + (kind == 4 ? 8 : 0), rows.width, 2) << kind;
        EXPECT_LT(box[3], rows.height / 2) << kind << ": not upright";
        EXPECT_GT(box[2], (rows.height - measure(kDots).height) / 2) << kind;
        EXPECT_EQ(rows.at(0, 0), kind % 2 ? 0x00003333u : 0u);
        EXPECT_GT(std::count(rows.pixels.begin(), rows.pixels.end(), 0xff9900ffu), 10) << kind;
        for (const unsigned pixel : rows.pixels)
            ASSERT_LE(pixel >> 24, pixel & 255) << kind << ": not multiplied by alpha";
    }
    const std::vector<int> cut = pictureOf(1, "HHHHHHHHHH", 50).inked();
    EXPECT_TRUE(cut[0] < 6 && cut[1] > 43);
}

TEST_F(TagBoardTest, ScriptsAreShapedAndRunTheirOwnWay) {
    const auto width = [&](const char* text) { return pictureOf(0, text).inked()[1]; };
    EXPECT_LT(width("\xD8\xB3\xD9\x84\xD8\xA7\xD9\x85"), width("\xD8\xB3 \xD9\x84 \xD8\xA7 \xD9\x85") - 30);
    const PixelRows mixed = pictureOf(4, "\xD7\x90\xD7\x90\xD7\x90 ....."); // the dots follow, to the left
    const std::vector<int> box = mixed.inked();
    int left = 0, right = 0;
    for (int i = 0; i < mixed.width * mixed.height; ++i)
        (i % mixed.width < (box[0] + box[1]) / 2 ? left : right) += mixed.pixels[i] != 0;
    EXPECT_LT(left, right);
    EXPECT_GT(width("\xF0\x9F\x98\x80"), 10);
}

TEST_F(TagBoardTest, FontsThatAreMissingGiveNullOrRaise) {
    NSString* name = string("No Such Family");
    maker->setFontName(name);
    NSString* held = maker->fontName();
    EXPECT_TRUE(held != name && held->isEqualToString(name)) << "a copy";
    maker->setFontName(held);
    EXPECT_EQ(maker->fontName(), held);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 8);
    EXPECT_THROW(make(0, "x"), NSException);
    for (int kind = 1; kind < 5; ++kind)
        EXPECT_EQ(make(kind, "x"), nullptr);
    unsigned next = 0;
    glGenTextures(1, &next);
    EXPECT_TRUE(stateOf(GL_UNPACK_ALIGNMENT) == ints(8) && next == 1) << "GL was not left alone";

    maker = NSInit(new VX_GLTagBoardMaker);
    EXPECT_THROW(maker->renderText(nullptr, 30, ink), NSException);
    EXPECT_THROW(maker->renderTextForMipmap(name, 30, nullptr), NSException);
    for (int kind = 0; kind < 5; ++kind) // memory stays safe
        for (const float odd : {0.0f, -3.0f, NAN, HUGE_VALF})
            for (const char* text : {"", "x\ny"})
                VX_GLTagTexture::Release(make(kind, text, odd));
}
