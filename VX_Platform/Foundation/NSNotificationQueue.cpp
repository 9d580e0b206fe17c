// SPDX-License-Identifier: MIT
#include <VX_Platform/Foundation/NSNotificationQueue.h>

#include <VX_Platform/Foundation/NSNotificationCenter.h>

NSNotificationQueue* NSNotificationQueue::defaultQueue() {
    thread_local NSRef<NSNotificationQueue> queue =
        NSRef<NSNotificationQueue>::adopt(new NSNotificationQueue);
    return queue.get();
}

void NSNotificationQueue::enqueueNotification(NSNotification* notification, NSPostingStyle style) {
    if (style == NSPostNow)
        NSNotificationCenter::defaultCenter()->postNotification(notification);
    else
        m_Waiting.push_back(NSRef<NSNotification>::retain(notification));
}

void NSNotificationQueue::postWaiting() {
    // One by one, since an observer may throw, or run a step of the loop.
    for (std::size_t present = m_Waiting.size(); present > 0 && !m_Waiting.empty(); --present) {
        const NSRef<NSNotification> notification = std::move(m_Waiting.front());
        m_Waiting.pop_front();
        NSNotificationCenter::defaultCenter()->postNotification(notification.get());
    }
}
