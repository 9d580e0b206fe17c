// SPDX-License-Identifier: MIT
#include <VX_Platform/Foundation/NSNumber.h>

#include <VX_Platform/Foundation/NSString.h>

#include <algorithm>
#include <cmath>
#include <limits>

NSNumber* NSNumber::make(double value) {
    auto* number = new NSNumber;
    number->m_Value = value;
    return number->autorelease();
}

NSNumber* NSNumber::numberWithBool(bool value) {
    return make(value ? 1.0 : 0.0);
}

NSNumber* NSNumber::numberWithInt(int value) {
    return make(value);
}

NSNumber* NSNumber::numberWithFloat(float value) {
    return make(value);
}

NSNumber* NSNumber::numberWithDouble(double value) {
    return make(value);
}

int NSNumber::intValue() const {
    if (std::isnan(m_Value))
        return 0;
    constexpr double lowest = std::numeric_limits<int>::min();
    constexpr double highest = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(m_Value, lowest, highest));
}

bool NSNumber::isEqual(const NSObject* other) const {
    auto* number = dynamic_cast<const NSNumber*>(other);
    return number && number->m_Value == m_Value;
}

NSString* NSNumber::description() const {
    return NSString::stringWithFormat("%.17g", m_Value);
}
