// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/Foundation/NSObject.h>

#include <vector>

class NSNotification;

enum NSPostingStyle { NSPostWhenIdle = 1, NSPostASAP = 2, NSPostNow = 3 };

/// Notifications of one thread that wait to be posted to the default centre.
class VX_EXPORT NSNotificationQueue : public NSObject {
public:
    VX_RETURNS_OWN_TYPE(NSNotificationQueue)

    /// The calling thread's queue; borrowed, lives as long as the thread.
    static NSNotificationQueue* defaultQueue();

    void dealloc() override;

    /// `NSPostNow` posts at once; the other styles keep the notification until the thread's next
    /// `postWaiting`.
    void enqueueNotification(NSNotification* notification, NSPostingStyle style);

    /// Posts what waits, in order. What an observer enqueues meanwhile waits for the next call. The run loop
    /// calls this at the end of each step; a host with a loop of its own may do so too.
    void postWaiting();

private:
    std::vector<NSNotification*> m_Waiting;
};
