// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/Foundation/NSObject.h>
#include <VX_Platform/Foundation/NSString.h>

class NSColor;
class VX_GLTagTexture;

/// Makes textures from text. One thread at a time.
///
/// Each operation returns a new tag with a count of 1, the caller's to `Release`; nothing of it is kept here.
/// `text` may have several lines; `size` is the font's, in pixels. Arguments are borrowed. The picture's
/// colours are multiplied by alpha: blend with glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA).
///
/// A GL context must be current on the calling thread. Left changed: the texture is bound to its target on
/// the active unit, GL_UNPACK_ALIGNMENT is 1 and GL_UNPACK_ROW_LENGTH the picture's width. A pixel unpack
/// buffer must not be bound. GL: glPixelStorei, glGenTextures, glBindTexture, glTexParameteri (and
/// glTexParameterf for mipmaps), glTexImage2D.
///
/// Errors: null, and no GL call, for a font that is not there, but for `renderText`, which raises
/// NSInvalidArgumentException then; all raise it for a null text or text colour. A picture beyond 32767
/// pixels a side has no pixels.
class VX_EXPORT VX_GLTagBoardMaker : public NSObject {
public:
    VX_RETURNS_OWN_TYPE(VX_GLTagBoardMaker)

    /// Sets the font name to "Arial Black", which where it is not installed stands for the heaviest sans that
    /// is. Returns the maker. No context is needed here.
    VX_GLTagBoardMaker* init() override;
    /// Releases the font name.
    void dealloc() override;

    /// Takes a copy of the name of a font family; it is looked for by each operation. Null is a font that is
    /// not there.
    void setFontName(NSString* name);
    /// Borrowed.
    NSString* fontName() const { return m_FontName.get(); }

    /// A rectangle texture of the text's size and 5 pixels more on each side, clear but for the text.
    VX_GLTagTexture* renderText(NSString* text, float size, NSColor* color);
    /// A rectangle texture `width` pixels wide and as high as the text, filled with `bkColor` (black for
    /// null); the text stands in the middle and is cut off at the sides when it is wider.
    VX_GLTagTexture* renderTextForSingleLine(NSString* text, float size, NSColor* bkColor, NSColor* color,
                                             float width);

    // `renderTextForMipmap` and its kin make a 2D texture with mipmaps whose sides are powers of two, with
    // the text in the middle; the tag shows the text's part of it.

    /// Clear but for the text, which is wrapped to `maxWidth` pixels when it is wider. The height is reckoned
    /// before: that of one line for each width that the text fills, and one more.
    VX_GLTagTexture* renderTextForMipmapLimited(NSString* text, float size, NSColor* color, float maxWidth);
    /// Filled with `bkColor` (black for null), of the text's own size however wide that is: `maxWidth` is not
    /// used.
    VX_GLTagTexture* renderTextForMipmapLimitedSingleLine(NSString* text, float size, NSColor* bkColor,
                                                          NSColor* color, float maxWidth);
    /// Clear but for the text, with 4 pixels more on each side, where the text's lower left corner lies in
    /// the picture's own.
    VX_GLTagTexture* renderTextForMipmap(NSString* text, float size, NSColor* color);

protected:
    ~VX_GLTagBoardMaker() override;

private:
    NSRef<NSString> m_FontName;
};
