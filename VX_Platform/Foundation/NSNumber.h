// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/Foundation/NSObject.h>

/// Immutable number: a boolean, a 32-bit integer or a float, readable as any of them. The class functions
/// give borrowed, autoreleased objects.
class VX_EXPORT NSNumber : public NSObject {
public:
    VX_RETURNS_OWN_TYPE(NSNumber)

    static NSNumber* numberWithBool(bool value);
    static NSNumber* numberWithInt(int value);
    static NSNumber* numberWithFloat(float value);
    static NSNumber* numberWithDouble(double value);

    bool boolValue() const { return m_Value != 0.0; }
    /// Truncated toward zero; the nearest 32-bit integer where the value lies outside, 0 for one that is no
    /// number.
    int intValue() const;
    float floatValue() const { return static_cast<float>(m_Value); }
    double doubleValue() const { return m_Value; }

    bool isEqual(const NSObject* other) const override;
    NSString* description() const override;

private:
    static NSNumber* make(double value);

    // Every 32-bit integer and float is exact in it.
    double m_Value = 0.0;
};
