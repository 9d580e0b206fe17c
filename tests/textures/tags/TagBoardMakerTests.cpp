// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/textures/tags/VX_GLTagBoardMaker.h>
#include <VX_Platform/AppKit/NSAttributedString.h>
#include <VX_Platform/AppKit/NSColor.h>
#include <VX_Platform/AppKit/NSFont.h>
#include <VX_Platform/Foundation/NSException.h>
#include <VX_Platform/Foundation/NSMutableDictionary.h>
#include <tests/textures/tags/TagPictures.h>

#include <cmath>
#include <functional>

namespace {

constexpr const char* kWords = "Some words to wrap";
constexpr unsigned kBackground = 0x00003333; // 0.2 of blue

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
        switch (kind) {
            case 0:
                return maker->renderText(string(text), 30, ink);
            case 1:
                return maker->renderTextForSingleLine(string(text), 30, paper, ink, width);
            case 2:
                return maker->renderTextForMipmapLimited(string(text), 30, ink, width);
            case 3:
                return maker->renderTextForMipmapLimitedSingleLine(string(text), 30, paper, ink, width);
            default:
                return maker->renderTextForMipmap(string(text), 30, ink);
        }
    }

    NSColor* ink = NSColor::colorWithDeviceRed(1, 0.6, 0, 1);
    NSRef<VX_GLTagBoardMaker> maker = NSInit(new VX_GLTagBoardMaker);
};

} // namespace

TEST_F(TagBoardTest, SizesPlacesAndParametersAreThoseOfEachKind) {
    const NSSize line = measure(kWords);
    const double lines = std::floor(line.width / 100) + 1;
    const struct Row {
        int kind;
        float width;
        double contentWidth, contentHeight;
    } rows[] = {{0, 0, std::ceil(line.width + 10), std::ceil(line.height + 10)},
                {1, 100, 100, std::ceil(line.height)},
                {1, 400.5, 401, std::ceil(line.height)},
                {2, 100, 100, line.height * lines},
                {2, float(line.width), line.width, line.height},
                {3, 100, line.width, line.height},
                {3, 900, line.width, line.height},
                {4, 0, line.width + 8, line.height + 8}};
    for (const Row& row : rows) {
        SCOPED_TRACE(&row - rows);
        glPixelStorei(GL_UNPACK_ALIGNMENT, 8);
        VX_GLTagTexture* tag = make(row.kind, kWords, row.width);
        const bool isMipmap = row.kind > 1;
        const double wide = isMipmap ? std::exp2(std::ceil(std::log2(row.contentWidth))) : row.contentWidth;
        const double high = isMipmap ? std::exp2(std::ceil(std::log2(row.contentHeight))) : row.contentHeight;
        EXPECT_EQ(ints(tag->target(), tag->textureSize().width, tag->textureSize().height),
                  ints(isMipmap ? GL_TEXTURE_2D : GL_TEXTURE_RECTANGLE_ARB, wide, high));
        EXPECT_EQ(stateOf(GL_UNPACK_ROW_LENGTH, GL_UNPACK_ALIGNMENT,
                          isMipmap ? GL_TEXTURE_BINDING_2D : GL_TEXTURE_BINDING_RECTANGLE_ARB),
                  ints(wide, 1, tag->texture()));
        EXPECT_EQ(parametersOf(*tag),
                  isMipmap ? ints(GL_LINEAR, GL_LINEAR_MIPMAP_NEAREST, GL_REPEAT, GL_REPEAT, 1, GL_RGBA)
                           : ints(GL_LINEAR, GL_LINEAR, GL_CLAMP_TO_EDGE, GL_CLAMP_TO_EDGE, 0, GL_RGBA));
        EXPECT_NEAR(tag->contentSize().width, row.contentWidth, 1e-4);
        EXPECT_NEAR(tag->contentSize().height, row.contentHeight, 1e-4);
        EXPECT_NEAR(tag->aspect(), row.contentHeight / row.contentWidth, 1e-6);
        const double scale[] = {isMipmap ? wide : 1, isMipmap ? high : 1};
        const double coords[] = {(wide - row.contentWidth) / 2, (high - row.contentHeight) / 2,
                                 row.contentWidth, row.contentHeight};
        for (int i = 0; i < 4; ++i)
            EXPECT_NEAR(tag->texCoords()[i], coords[i] / scale[i % 2], 1e-6) << i;

        const TagPicture picture(*tag);
        EXPECT_EQ(picture.at(0, 0), row.kind % 2 ? kBackground : 0u);
        const std::vector<int> ink = picture.inked();
        EXPECT_TRUE(ink[2] >= coords[1] && ink[3] < coords[1] + row.contentHeight && ink[3] > ink[2] + 15);
        EXPECT_TRUE(ink[0] >= coords[0] && ink[1] < coords[0] + row.contentWidth);
        EXPECT_EQ(TagPicture(*tag, isMipmap).width, int(wide) / (isMipmap ? 2 : 1));
        EXPECT_EQ(tag->retainCount(), 1);
        tag->Release();
        EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
    }
}

TEST_F(TagBoardTest, TextStandsInTheMiddleUprightInItsColour) {
    const NSSize line = measure("\xC2\xA8"); // dots at the top of the line
    for (int kind = 0; kind < 5; ++kind) {
        VX_GLTagTexture* tag = make(kind, "\xC2\xA8");
        const TagPicture picture(*tag);
        const std::vector<int> ink = picture.inked();
        EXPECT_NEAR(ink[0] + ink[1] + 1 + (kind == 4 ? 8 : 0), picture.width, 2) << kind;
        EXPECT_LT(ink[3], picture.height / 2) << kind << ": not upright";
        EXPECT_GT(ink[2], (picture.height - line.height) / 2) << kind;
        EXPECT_EQ(picture.at(ink[0] + 3, ink[2] + 3), 0xff9900ffu) << kind;
        for (const unsigned pixel : picture.pixels) // at the edges too
            ASSERT_TRUE((pixel >> 24) <= (pixel & 255)) << kind << ": not premultiplied";
        tag->Release();
    }
    VX_GLTagTexture* cut = make(1, "HHHHHHHHHH", 50);
    EXPECT_TRUE(TagPicture(*cut).inked()[0] < 6 && TagPicture(*cut).inked()[1] > 43);
    cut->Release();
}

TEST_F(TagBoardTest, ScriptsAreShapedAndRunTheirOwnWay) {
    const auto width = [&](const char* text) {
        VX_GLTagTexture* tag = make(0, text);
        const std::vector<int> ink = TagPicture(*tag).inked();
        tag->Release();
        return ink[1] - ink[0];
    };
    EXPECT_LT(width("\xD8\xB3\xD9\x84\xD8\xA7\xD9\x85"), width("\xD8\xB3 \xD9\x84 \xD8\xA7 \xD9\x85") - 30)
        << "the letters are not joined";
    VX_GLTagTexture* mixed = make(4, "\xD7\x90\xD7\x90\xD7\x90 ....."); // the dots follow, to the left
    const TagPicture picture(*mixed);
    const std::vector<int> ink = picture.inked();
    int left = 0, right = 0;
    for (int i = 0; i < picture.width * picture.height; ++i)
        ++(i % picture.width < (ink[0] + ink[1]) / 2 ? left : right) -= picture.pixels[i] == 0;
    EXPECT_LT(left, right);
    mixed->Release();
    EXPECT_GT(width("\xF0\x9F\x98\x80"), 10);
}

TEST_F(TagBoardTest, FontsThatAreMissingGiveNullOrRaise) {
    EXPECT_EQ(maker->fontName()->string(), "Arial Black");
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
    EXPECT_EQ(stateOf(GL_UNPACK_ALIGNMENT), ints(8));
    unsigned next = 0;
    glGenTextures(1, &next);
    EXPECT_EQ(next, 1u) << "a texture was made";

    maker = NSInit(new VX_GLTagBoardMaker);
    EXPECT_THROW(maker->renderText(nullptr, 30, ink), NSException);
    ink = nullptr;
    EXPECT_THROW(make(4, "x"), NSException);
    ink = NSColor::redColor();
    for (int kind = 0; kind < 5; ++kind)
        for (const float odd : {0.0f, -3.0f, NAN, HUGE_VALF})
            VX_GLTagTexture::Release(make(kind, "", odd)), VX_GLTagTexture::Release(make(kind, "x\ny", odd));
    EXPECT_EQ(stateOf(GL_UNPACK_ALIGNMENT), ints(1));
}
