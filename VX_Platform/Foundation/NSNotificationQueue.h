// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/Foundation/NSNotification.h>

#include <deque>

/// When a queued notification is posted: the first two at the end of the run loop's step, the last at once.
enum NSPostingStyle { NSPostWhenIdle = 1, NSPostASAP = 2, NSPostNow = 3 };

/// Notifications of one thread that wait to be posted to the default centre.
class VX_EXPORT NSNotificationQueue : public NSObject {
public:
    VX_RETURNS_OWN_TYPE(NSNotificationQueue)

    /// Returns the calling thread's queue, for that thread alone; borrowed, lives as long as the thread. What
    /// still waits then is released without being posted.
    static NSNotificationQueue* defaultQueue();

    /// `NSPostNow` posts before it returns; the other styles keep the notification, retained, until the
    /// thread's next `postWaiting`.
    void enqueueNotification(NSNotification* notification, NSPostingStyle style);

    /// Posts what waits, in the order it came, and releases it. What an observer enqueues meanwhile waits for
    /// the next call, and so does the rest when an observer throws. The run loop calls this at the end of
    /// each step; a host with a loop of its own may do so too.
    void postWaiting();

protected:
    ~NSNotificationQueue() override = default;

private:
    std::deque<NSRef<NSNotification>> m_Waiting;
};
