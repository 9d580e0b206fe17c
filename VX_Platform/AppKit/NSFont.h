// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/Foundation/NSObject.h>
#include <VX_Platform/Foundation/NSString.h>

#include <string>

/// A family of fonts at a size. Letters that it lacks come from other fonts. Immutable, any thread.
class VX_EXPORT NSFont : public NSObject {
public:
    VX_RETURNS_OWN_TYPE(NSFont)

    /// `name` is that of a family that fontconfig has, whatever the case of its letters; "Arial Black", where
    /// it is not installed, stands for the heaviest sans that is. `size` is in pixels of the canvas: above
    /// 10000 counts as that, and 0 or less as 12. Returns a borrowed, autoreleased font; null for null and
    /// for a family that is not there. What a thread has once asked for is remembered by it.
    static NSFont* fontWithName(NSString* name, double size);

    /// Returns the name that it was asked for by; borrowed.
    NSString* fontName() const { return m_Name.get(); }
    /// Returns the size in pixels of the canvas.
    double pointSize() const { return m_Size; }
    /// Returns the family that serves that name; borrowed, autoreleased.
    NSString* familyName() const;
    /// Returns the path of the file that its letters come from first; borrowed, autoreleased. Null where
    /// fontconfig tells of none.
    NSString* fileName() const;

protected:
    ~NSFont() override = default;

private:
    friend class NSAttributedString;

    NSRef<NSString> m_Name;
    std::string m_Family;
    int m_Weight = 400;
    double m_Size = 12.0;
};
