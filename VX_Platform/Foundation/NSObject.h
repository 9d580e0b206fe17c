// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/VX_Export.h>

#include <atomic>
#include <concepts>
#include <cstddef>
#include <utility>

class NSString;

/// Gives a class `retain` and `autorelease` that return its own type. Stands first in the public part of a
/// class derived from `NSObject`.
#define VX_RETURNS_OWN_TYPE(Class) \
    Class* retain() {              \
        NSObject::retain();        \
        return this;               \
    }                              \
    Class* autorelease() {         \
        NSObject::autorelease();   \
        return this;               \
    }

/// Root of the classes that live by reference counts.
///
/// Ownership: what comes from `new`, `retain`, `copy` or an operation documented to give it away is the
/// caller's to `release`; everything else is borrowed. Counts are atomic, so objects may be retained and
/// released from any thread; nothing else about them is synchronised unless their class says so.
///
/// Created as `(new Class)->init...()` and ended by `release`. Objects live on the heap only: `delete`, a
/// smart pointer that deletes, and the stack do not compile for the library's classes. A class derived from
/// them that has a public destructor ends the process with a message in these cases.
class VX_EXPORT NSObject {
public:
    /// Zero-filled storage, also for the fields of a host's subclass.
    static void* operator new(std::size_t size);
    static void operator delete(void* storage);

    NSObject(const NSObject&) = delete;
    NSObject& operator=(const NSObject&) = delete;

    /// Sets the new object up, once. Returns the object, or releases it and returns null.
    virtual NSObject* init();

    /// Adds one to the count. Returns the object, now the caller's to release once more. Any thread.
    NSObject* retain();

    /// Takes one from the count; the last one calls `dealloc`. Any thread, which `dealloc` then runs on.
    /// Releasing more often than retaining is a caller's bug and ends the process with a message.
    void release();

    /// Releases the object once, when the calling thread's innermost `NSAutoreleasePool` ends. Returns the
    /// object, from now on borrowed. Any thread.
    NSObject* autorelease();

    /// Returns the present count, for tests and diagnostics; it means nothing while other threads hold
    /// references, and is negative during `dealloc`.
    int retainCount() const;

    /// Called by the last `release`, on its thread. An override gives up what it owns and ends with the
    /// base's `dealloc`, after which the object is gone; a `retain` in it does not keep the object.
    virtual void dealloc();

    /// Returns whether the two stand for the same value: the same object, unless a class says otherwise.
    /// False for null.
    virtual bool isEqual(const NSObject* other) const;

    /// Returns the text for "%@" in formats; borrowed, autoreleased.
    virtual NSString* description() const;

protected:
    NSObject() = default;
    virtual ~NSObject();

private:
    mutable std::atomic<int> m_RetainCount{1};
};

template <class T>
class NSRef;

/// Sets a new object up by the `init...` operation that takes these arguments (`init`, `initWithFrame` or
/// `initWithContentRect`) and keeps its own type: `NSInit(new MyWindow, frame, styleMask)`. Takes the object
/// over. Returns a handle that owns it, empty when the operation failed.
template <class T, class... Arguments>
NSRef<T> NSInit(T* object, Arguments&&... arguments);

/// Owning handle on a counted object, empty when null. Copies retain, moves hand over, the end releases. Any
/// thread; one handle belongs to one thread at a time.
template <class T>
class NSRef {
public:
    NSRef() = default;
    /// Empty.
    NSRef(std::nullptr_t) {}

    /// Takes over a reference that the caller owns.
    static NSRef adopt(T* object) {
        NSRef ref;
        ref.m_Object = object;
        return ref;
    }

    /// Adds a reference of its own.
    static NSRef retain(T* object) {
        if (object)
            object->retain();
        return adopt(object);
    }

    /// A copy retains; a move hands the reference over and leaves `other` empty.
    NSRef(const NSRef& other) : NSRef(retain(other.m_Object)) {}
    NSRef(NSRef&& other) noexcept : m_Object(std::exchange(other.m_Object, nullptr)) {}
    /// The same from a handle of a derived class.
    template <std::derived_from<T> Derived>
    NSRef(const NSRef<Derived>& other) : NSRef(retain(other.get())) {}
    template <std::derived_from<T> Derived>
    NSRef(NSRef<Derived>&& other) noexcept : m_Object(std::exchange(other.m_Object, nullptr)) {}
    /// Takes the new object, then releases the former one.
    NSRef& operator=(NSRef other) noexcept {
        T* old = m_Object;
        m_Object = other.m_Object;
        other.m_Object = old;
        return *this;
    }
    ~NSRef() {
        if (m_Object)
            m_Object->release();
    }

    /// Returns the object, borrowed, or null.
    T* get() const { return m_Object; }
    /// The object, which must be there.
    T* operator->() const { return m_Object; }
    T& operator*() const { return *m_Object; }
    /// Returns whether there is an object.
    explicit operator bool() const { return m_Object != nullptr; }

private:
    template <class Base>
    friend class NSRef;

    T* m_Object = nullptr;
};

template <class T, class... Arguments>
NSRef<T> NSInit(T* object, Arguments&&... arguments) {
    NSObject* made = nullptr;
    if constexpr (requires { object->initWithContentRect(std::forward<Arguments>(arguments)...); })
        made = object->initWithContentRect(std::forward<Arguments>(arguments)...);
    else if constexpr (requires { object->initWithFrame(std::forward<Arguments>(arguments)...); })
        made = object->initWithFrame(std::forward<Arguments>(arguments)...);
    else
        made = object->init(std::forward<Arguments>(arguments)...);
    return NSRef<T>::adopt(made ? object : nullptr);
}
