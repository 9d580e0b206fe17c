// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/Foundation/NSObject.h>

/// Immutable number: a boolean, a 32-bit integer or a float, readable as any of them. Any thread.
class VX_EXPORT NSNumber : public NSObject {
public:
    VX_RETURNS_OWN_TYPE(NSNumber)

    /// Return a borrowed, autoreleased number with the value, kept exactly; a boolean is 1 or 0.
    static NSNumber* numberWithBool(bool value);
    static NSNumber* numberWithInt(int value);
    static NSNumber* numberWithFloat(float value);
    static NSNumber* numberWithDouble(double value);

    /// Returns whether the number is not 0; one that is no number counts as true.
    bool boolValue() const { return m_Value != 0.0; }
    /// Returns the number truncated toward zero; the nearest 32-bit integer where it lies outside, 0 where it
    /// is no number.
    int intValue() const;
    /// Returns the nearest float, infinite where the number lies outside.
    float floatValue() const { return static_cast<float>(m_Value); }
    /// Returns the number itself.
    double doubleValue() const { return m_Value; }

    /// Returns whether the other is a number of the same value, however it was made.
    bool isEqual(const NSObject* other) const override;
    /// Returns the number in up to 17 digits, as "%.17g" writes it; borrowed, autoreleased.
    NSString* description() const override;

protected:
    ~NSNumber() override = default;

private:
    static NSNumber* make(double value);

    // Every 32-bit integer and float is exact in it.
    double m_Value = 0.0;
};
