// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/output/VX_FinalOutputManager.h>

#include <VX_Platform/Foundation/NSMutableDictionary.h>
#include <VX_Platform/Foundation/NSNumber.h>

#include <cstdio>

namespace {

constexpr const char* kScreenFit = "Screen Fit";

// A missing key, or one that holds no number, reads as 0.
NSNumber* numberIn(const NSMutableDictionary* dictionary, const char* key) {
    auto* number = dynamic_cast<NSNumber*>(dictionary->objectForKey(key));
    return number ? number : NSNumber::numberWithInt(0);
}

NSRef<NSString> copyOf(NSString* text) {
    return NSRef<NSString>::adopt(text ? text->copy() : nullptr);
}

} // namespace

VX_FinalOutputManager* VX_FinalOutputManager::init() {
    return this;
}

CGSize VX_FinalOutputManager::GetResolution() const {
    return CGSizeMake(m_Width, m_Height);
}

void VX_FinalOutputManager::SetResolution(CGSize size) {
    m_Width = NSNumber::numberWithDouble(size.width)->intValue();
    m_Height = NSNumber::numberWithDouble(size.height)->intValue();
}

void VX_FinalOutputManager::SetTargetScreenName(NSString* name) {
    if (name != m_TargetScreenName.get())
        m_TargetScreenName = copyOf(name);
}

void VX_FinalOutputManager::SetResolutionByString(NSString* text) {
    m_ShouldFitScreen = text && text->string() == kScreenFit;
    if (text && !m_ShouldFitScreen)
        std::sscanf(text->UTF8String(), "%d x %d", &m_Width, &m_Height);
}

NSString* VX_FinalOutputManager::ToString() const {
    if (m_ShouldFitScreen)
        return NSString::stringWithUTF8String(kScreenFit);
    return NSString::stringWithFormat("%d x %d", m_Width, m_Height);
}

void VX_FinalOutputManager::Save(NSMutableDictionary* dictionary) const {
    dictionary->setObject(NSNumber::numberWithBool(m_ShouldFitScreen), "ShouldFitScreen");
    dictionary->setObject(NSNumber::numberWithBool(m_NoTitleBar), "NoTitleBar");
    dictionary->setObject(NSNumber::numberWithBool(m_NoMenuBar), "NoMenuBar");
    dictionary->setObject(NSNumber::numberWithInt(m_Width), "Width");
    dictionary->setObject(NSNumber::numberWithInt(m_Height), "Height");
    dictionary->setObject(NSNumber::numberWithInt(m_FinalDisplayType), "DisplayType");
    dictionary->setObject(m_TargetScreenName ? m_TargetScreenName.get() : NSString::stringWithUTF8String(""),
                          "TargetScreenName");
    // Narrowed on purpose: the stored form of an offset is a 32-bit float.
    dictionary->setObject(NSNumber::numberWithFloat(static_cast<float>(m_Offset.width)), "OffsetX");
    dictionary->setObject(NSNumber::numberWithFloat(static_cast<float>(m_Offset.height)), "OffsetY");
}

void VX_FinalOutputManager::Load(NSMutableDictionary* dictionary) {
    if (!dictionary)
        return;
    m_ShouldFitScreen = numberIn(dictionary, "ShouldFitScreen")->boolValue();
    m_NoTitleBar = numberIn(dictionary, "NoTitleBar")->boolValue();
    m_NoMenuBar = numberIn(dictionary, "NoMenuBar")->boolValue();
    m_Width = numberIn(dictionary, "Width")->intValue();
    m_Height = numberIn(dictionary, "Height")->intValue();
    m_FinalDisplayType = numberIn(dictionary, "DisplayType")->intValue();
    m_TargetScreenName = copyOf(dynamic_cast<NSString*>(dictionary->objectForKey("TargetScreenName")));
    m_Offset.width = numberIn(dictionary, "OffsetX")->floatValue();
    m_Offset.height = numberIn(dictionary, "OffsetY")->floatValue();
}
