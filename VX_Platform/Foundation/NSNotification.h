// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/Foundation/NSObject.h>
#include <VX_Platform/Foundation/NSString.h>

/// A named event about an object, which it retains. One thread at a time until it is posted.
class VX_EXPORT NSNotification : public NSObject {
public:
    VX_RETURNS_OWN_TYPE(NSNotification)

    /// `name` in UTF-8, copied; `object` is retained and may be null. Returns a borrowed, autoreleased
    /// notification. Any thread.
    static NSNotification* notificationWithName(const char* name, NSObject* object);

    /// Names an object without retaining it, in the place of the other, for one that ends: to be taken back
    /// with null once it has been posted.
    void setUnretainedObject(NSObject* object) { m_Unretained = object; }

    /// Return the name and the object or null; borrowed, they live as long as the notification.
    NSString* name() const { return m_Name.get(); }
    NSObject* object() const { return m_Unretained ? m_Unretained : m_Object.get(); }

protected:
    ~NSNotification() override = default;

private:
    NSRef<NSString> m_Name;
    NSRef<NSObject> m_Object;
    NSObject* m_Unretained = nullptr;
};
