// SPDX-License-Identifier: MIT
#include <VX_Platform/AppKit/NSFont.h>

#include <VX_Platform/drawing/FontMap.h>
#include <VX_Platform/drawing/TextLayout.h>

#include <algorithm>

NSFont* NSFont::fontWithName(NSString* name, double size) {
    if (!name)
        return nullptr;
    const vx::FontFace& face = vx::FontMap::current().face(name->string());
    if (face.family.empty())
        return nullptr;
    auto* font = new NSFont;
    font->m_Name = NSRef<NSString>::retain(name);
    font->m_Family = face.family;
    font->m_Weight = face.weight;
    if (size > 0.0)
        font->m_Size = std::min(size, vx::TextLayout::kMaxFontSize);
    return font->autorelease();
}

NSString* NSFont::familyName() const {
    return NSString::stringWithUTF8String(m_Family.c_str());
}

NSString* NSFont::fileName() const {
    const std::string file = vx::FontMap::fileOf({m_Family, m_Weight});
    return file.empty() ? nullptr : NSString::stringWithUTF8String(file.c_str());
}
