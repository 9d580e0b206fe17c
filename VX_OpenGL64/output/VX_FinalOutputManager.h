// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/CoreGraphics/CGGeometry.h>
#include <VX_Platform/Foundation/NSObject.h>
#include <VX_Platform/Foundation/NSString.h>

class NSMutableDictionary;

/// How the final picture goes to the screen: resolution or fit, bars, display type, target screen and offset.
/// It holds, converts and persists these settings; the host acts on them. For the host's thread; needs no GL
/// context.
class VX_EXPORT VX_FinalOutputManager : public NSObject {
public:
    VX_RETURNS_OWN_TYPE(VX_FinalOutputManager)

    /// 640 x 480, all flags false, no target screen, offset (0, 0).
    VX_FinalOutputManager* init() override;

    /// Whether the picture fills the target screen; the resolution is then not in force.
    void SetShouldFitScreen(bool fit) { m_ShouldFitScreen = fit; }
    bool ShouldFitScreen() const { return m_ShouldFitScreen; }
    /// Whether the output has no title bar.
    void SetNoTitleBar(bool hide) { m_NoTitleBar = hide; }
    bool NoTitleBar() const { return m_NoTitleBar; }
    /// Whether the display has no menu bar.
    void SetNoMenuBar(bool hide) { m_NoMenuBar = hide; }
    bool NoMenuBar() const { return m_NoMenuBar; }
    /// A number whose values belong to the host.
    void SetFinalDisplayType(int type) { m_FinalDisplayType = type; }
    int GetFinalDisplayType() const { return m_FinalDisplayType; }
    /// Offset of the output in pixels: width is x, height is y.
    void SetPositionOffset(CGSize offset) { m_Offset = offset; }
    CGSize GetPositionOffset() const { return m_Offset; }
    /// A frame to go back to, held for the host and not persisted.
    void SetRecoverWindowGeometry(CGRect frame) { m_RecoverWindowGeometry = frame; }
    CGRect GetRecoverWindowGeometry() const { return m_RecoverWindowGeometry; }

    /// Output size in pixels.
    CGSize GetResolution() const;
    /// Each side is truncated toward zero; outside the 32-bit integers it becomes the nearest of them.
    void SetResolution(CGSize size);

    /// Name of the target display; stores a copy, unless it is the very text already held. Null for none.
    void SetTargetScreenName(NSString* name);
    /// The stored text, borrowed, or null.
    NSString* GetTargetScreenName() const { return m_TargetScreenName.get(); }

    /// The inverse of `ToString`: "Screen Fit" sets the fit, any other text (and null) clears it and is read
    /// as "%d x %d". Numbers that are not there leave the fields as they were.
    void SetResolutionByString(NSString* text);
    /// "Screen Fit" or width and height as "%d x %d". Borrowed, autoreleased.
    NSString* ToString() const;

    /// Writes the nine settings into the dictionary, replacing what was under their keys.
    void Save(NSMutableDictionary* dictionary) const;
    /// Overwrites every setting from the dictionary; a missing number reads as 0 and a missing flag as false,
    /// not as the defaults of `init`. Null changes nothing.
    void Load(NSMutableDictionary* dictionary);

protected:
    ~VX_FinalOutputManager() override = default;

private:
    bool m_ShouldFitScreen = false;
    bool m_NoTitleBar = false;
    bool m_NoMenuBar = false;
    int m_Width = 640;
    int m_Height = 480;
    int m_FinalDisplayType = 0;
    NSRef<NSString> m_TargetScreenName;
    CGSize m_Offset;
    CGRect m_RecoverWindowGeometry;
};
