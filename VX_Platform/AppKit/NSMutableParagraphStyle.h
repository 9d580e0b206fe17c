// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/Foundation/NSObject.h>

/// What becomes of a line that is wider than its rectangle: it breaks between words (inside one that is too
/// long), or it goes on and is cut off at the edge.
enum NSLineBreakMode { NSLineBreakByWordWrapping = 0, NSLineBreakByClipping = 2 };

/// How the lines of a text are laid out, for NSParagraphStyleAttributeName. One thread at a time.
class VX_EXPORT NSMutableParagraphStyle : public NSObject {
public:
    VX_RETURNS_OWN_TYPE(NSMutableParagraphStyle)

    /// Words wrap at first.
    void setLineBreakMode(NSLineBreakMode mode) { m_LineBreakMode = mode; }
    NSLineBreakMode lineBreakMode() const { return m_LineBreakMode; }

protected:
    ~NSMutableParagraphStyle() override;

private:
    NSLineBreakMode m_LineBreakMode = NSLineBreakByWordWrapping;
};
