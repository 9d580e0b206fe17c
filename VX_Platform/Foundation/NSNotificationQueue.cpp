// SPDX-License-Identifier: MIT
#include <VX_Platform/Foundation/NSNotificationQueue.h>

#include <VX_Platform/Foundation/NSNotification.h>
#include <VX_Platform/Foundation/NSNotificationCenter.h>

NSNotificationQueue* NSNotificationQueue::defaultQueue() {
    thread_local NSRef<NSNotificationQueue> queue =
        NSRef<NSNotificationQueue>::adopt(new NSNotificationQueue);
    return queue.get();
}

void NSNotificationQueue::dealloc() {
    for (NSNotification* notification : m_Waiting)
        notification->release();
    NSObject::dealloc();
}

void NSNotificationQueue::enqueueNotification(NSNotification* notification, NSPostingStyle style) {
    if (style == NSPostNow)
        NSNotificationCenter::defaultCenter()->postNotification(notification);
    else
        m_Waiting.push_back(notification->retain());
}

void NSNotificationQueue::postWaiting() {
    std::vector<NSNotification*> batch;
    batch.swap(m_Waiting);
    for (NSNotification* notification : batch) {
        NSNotificationCenter::defaultCenter()->postNotification(notification);
        notification->release();
    }
}
