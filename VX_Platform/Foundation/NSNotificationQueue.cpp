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
    std::vector<NSRef<NSNotification>> batch;
    batch.swap(m_Waiting);
    for (const NSRef<NSNotification>& notification : batch)
        NSNotificationCenter::defaultCenter()->postNotification(notification.get());
}
