// SPDX-License-Identifier: MIT
#include <VX_Platform/Foundation/NSNotification.h>

#include <VX_Platform/Foundation/NSString.h>

NSNotification* NSNotification::notificationWithName(const char* name, NSObject* object) {
    auto* notification = new NSNotification;
    notification->m_Name = (new NSString)->initWithUTF8String(name);
    notification->m_Object = object ? object->retain() : nullptr;
    return notification->autorelease();
}

void NSNotification::dealloc() {
    if (m_Name)
        m_Name->release();
    if (m_Object)
        m_Object->release();
    NSObject::dealloc();
}
