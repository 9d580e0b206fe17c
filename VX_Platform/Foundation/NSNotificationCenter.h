// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/Foundation/NSObject.h>

#include <functional>
#include <mutex>
#include <string>
#include <vector>

class NSNotification;

/// Delivers notifications to observers. Any thread; an observer is called on the thread that posts, with no
/// lock of the centre held, so that it may add and remove observers.
class VX_EXPORT NSNotificationCenter : public NSObject {
public:
    VX_RETURNS_OWN_TYPE(NSNotificationCenter)

    using Handler = std::function<void(NSNotification*)>;

    /// The process's centre; borrowed, never ends.
    static NSNotificationCenter* defaultCenter();

    /// Registers `handler` in the name of `observer`, which is not retained and must be removed before it
    /// ends. A null name stands for every name, a null object for every object.
    void addObserver(const void* observer, Handler handler, const char* name, const NSObject* object);
    /// Removes all that `observer` registered.
    void removeObserver(const void* observer);
    /// Removes what `observer` registered for the name and object; null stands for any.
    void removeObserver(const void* observer, const char* name, const NSObject* object);
    /// Calls the observers of the notification, in the order of their registration, before it returns.
    void postNotification(NSNotification* notification);

private:
    struct Entry {
        const void* observer;
        std::string name;
        bool anyName;
        const NSObject* object;
        Handler handler;
    };

    std::vector<Entry> m_Entries;
    std::mutex m_Lock;
};
