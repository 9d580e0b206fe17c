// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/Foundation/NSObject.h>

/// A named event about an object; both are retained.
class VX_EXPORT NSNotification : public NSObject {
public:
    VX_RETURNS_OWN_TYPE(NSNotification)

    /// Borrowed, autoreleased. `object` may be null.
    static NSNotification* notificationWithName(const char* name, NSObject* object);

    void dealloc() override;

    /// Names an object without retaining it, for one that ends: to be taken back (null) once it has been
    /// posted.
    void setUnretainedObject(NSObject* object) { m_Unretained = object; }

    NSString* name() const { return m_Name; }
    NSObject* object() const { return m_Unretained ? m_Unretained : m_Object; }

private:
    NSString* m_Name = nullptr;
    NSObject* m_Object = nullptr;
    NSObject* m_Unretained = nullptr;
};
