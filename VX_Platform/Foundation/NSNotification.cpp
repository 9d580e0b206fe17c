// SPDX-License-Identifier: MIT
#include <VX_Platform/Foundation/NSNotification.h>

NSNotification* NSNotification::notificationWithName(const char* name, NSObject* object) {
    auto* notification = new NSNotification;
    notification->m_Name = NSRef<NSString>::adopt((new NSString)->initWithUTF8String(name));
    notification->m_Object = NSRef<NSObject>::retain(object);
    return notification->autorelease();
}
