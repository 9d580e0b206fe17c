// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/Foundation/NSObject.h>

#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

class NSNotification;

/// Delivers notifications to observers. Any thread; an observer is called on the thread that posts, with no
/// lock of the centre held, so that it may add and remove observers.
class VX_EXPORT NSNotificationCenter : public NSObject {
public:
    VX_RETURNS_OWN_TYPE(NSNotificationCenter)

    /// What an observer does; the notification is borrowed for the call.
    using Handler = std::function<void(NSNotification*)>;

    /// Returns the process's centre; borrowed, never ends. Any thread.
    static NSNotificationCenter* defaultCenter();

    /// Registers `handler` in the name of `observer`, an address that is never followed; who it stands for
    /// removes it before ending. A null name stands for every name, a null object for every object; the
    /// object is not retained. Any thread; from a handler too, and then for later notifications alone.
    void addObserver(const void* observer, Handler handler, const char* name, const NSObject* object);
    /// Removes all that `observer` registered; harmless when that is nothing. Once removed on the thread that
    /// posts, from a handler too, a handler is not called again. Any thread; a call in progress on another is
    /// not waited for.
    void removeObserver(const void* observer);
    /// The same for what `observer` registered for that name and that object; null stands for any.
    void removeObserver(const void* observer, const char* name, const NSObject* object);
    /// Calls those observers of the notification that are registered now, in the order of their registration,
    /// before it returns. Any thread; the handlers run on it.
    void postNotification(NSNotification* notification);

protected:
    ~NSNotificationCenter() override = default;

private:
    struct Entry {
        const void* observer;
        std::string name;
        bool anyName;
        const NSObject* object;
        Handler handler;
    };

    bool holds(const std::shared_ptr<const Entry>& entry);

    std::vector<std::shared_ptr<const Entry>> m_Entries;
    std::mutex m_Lock;
};
