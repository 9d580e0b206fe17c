// SPDX-License-Identifier: MIT
#include <VX_Platform/Foundation/NSNotificationCenter.h>

#include <VX_Platform/Foundation/NSNotification.h>
#include <VX_Platform/Foundation/NSString.h>

#include <algorithm>

NSNotificationCenter* NSNotificationCenter::defaultCenter() {
    static NSNotificationCenter* center = new NSNotificationCenter;
    return center;
}

void NSNotificationCenter::addObserver(const void* observer, Handler handler, const char* name,
                                       const NSObject* object) {
    std::lock_guard guard(m_Lock);
    m_Entries.push_back({observer, name ? name : "", name == nullptr, object, std::move(handler)});
}

void NSNotificationCenter::removeObserver(const void* observer) {
    removeObserver(observer, nullptr, nullptr);
}

void NSNotificationCenter::removeObserver(const void* observer, const char* name, const NSObject* object) {
    std::lock_guard guard(m_Lock);
    std::erase_if(m_Entries, [&](const Entry& entry) {
        return entry.observer == observer && (!name || (!entry.anyName && entry.name == name)) &&
               (!object || entry.object == object);
    });
}

void NSNotificationCenter::postNotification(NSNotification* notification) {
    std::vector<Handler> handlers;
    {
        std::lock_guard guard(m_Lock);
        for (const Entry& entry : m_Entries)
            if ((entry.anyName || entry.name == notification->name()->UTF8String()) &&
                (!entry.object || entry.object == notification->object()))
                handlers.push_back(entry.handler);
    }
    for (const Handler& handler : handlers)
        handler(notification);
}
