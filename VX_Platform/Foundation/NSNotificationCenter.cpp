// SPDX-License-Identifier: MIT
#include <VX_Platform/Foundation/NSNotificationCenter.h>

#include <VX_Platform/Foundation/NSNotification.h>

#include <algorithm>

NSNotificationCenter* NSNotificationCenter::defaultCenter() {
    static NSNotificationCenter* center = new NSNotificationCenter;
    return center;
}

void NSNotificationCenter::addObserver(const void* observer, Handler handler, const char* name,
                                       const NSObject* object) {
    std::lock_guard guard(m_Lock);
    m_Entries.push_back(std::make_shared<const Entry>(
        Entry{observer, name ? name : "", name == nullptr, object, std::move(handler)}));
}

void NSNotificationCenter::removeObserver(const void* observer) {
    removeObserver(observer, nullptr, nullptr);
}

void NSNotificationCenter::removeObserver(const void* observer, const char* name, const NSObject* object) {
    std::lock_guard guard(m_Lock);
    std::erase_if(m_Entries, [&](const std::shared_ptr<const Entry>& entry) {
        return entry->observer == observer && (!name || (!entry->anyName && entry->name == name)) &&
               (!object || entry->object == object);
    });
}

bool NSNotificationCenter::holds(const std::shared_ptr<const Entry>& entry) {
    std::lock_guard guard(m_Lock);
    return std::find(m_Entries.begin(), m_Entries.end(), entry) != m_Entries.end();
}

void NSNotificationCenter::postNotification(NSNotification* notification) {
    const NSRef<NSNotification> keep = NSRef<NSNotification>::retain(notification);
    std::vector<std::shared_ptr<const Entry>> told;
    {
        std::lock_guard guard(m_Lock);
        for (const auto& entry : m_Entries)
            if ((entry->anyName || entry->name == notification->name()->UTF8String()) &&
                (!entry->object || entry->object == notification->object()))
                told.push_back(entry);
    }
    for (const auto& entry : told)
        if (holds(entry)) // an earlier handler may have removed it, and ended whom it stands for
            entry->handler(notification);
}
