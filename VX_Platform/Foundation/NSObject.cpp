// SPDX-License-Identifier: MIT
#include <VX_Platform/Foundation/NSObject.h>

#include <VX_Platform/Foundation/NSAutoreleasePool.h>
#include <VX_Platform/Foundation/NSLog.h>
#include <VX_Platform/Foundation/NSString.h>

#include <cstdlib>
#include <exception>
#include <new>
#include <typeinfo>

namespace {
// A dying object may be retained and released once more by what its teardown calls; the count is moved far
// below zero so that this cannot start a second teardown.
constexpr int kDying = -(1 << 30);
} // namespace

void* NSObject::operator new(std::size_t size) {
    if (void* storage = std::calloc(1, size))
        return storage;
    throw std::bad_alloc();
}

void NSObject::operator delete(void* storage) {
    std::free(storage);
}

NSObject::~NSObject() {
    // A constructor that throws ends an object that nobody has seen.
    if (retainCount() > 0 && std::uncaught_exceptions() == 0)
        vx::fatal(
            "NSObject: object %p ended without its last release; objects live on the heap, by new and "
            "release",
            static_cast<void*>(this));
}

NSObject* NSObject::init() {
    return this;
}

NSObject* NSObject::retain() {
    m_RetainCount.fetch_add(1, std::memory_order_relaxed);
    return this;
}

void NSObject::release() {
    const int before = m_RetainCount.fetch_sub(1, std::memory_order_acq_rel);
    if (before == 1) {
        m_RetainCount.store(kDying, std::memory_order_relaxed);
        dealloc();
    } else if (before <= 0 && before > kDying / 2) {
        vx::fatal("NSObject::release: object %p released more often than retained", static_cast<void*>(this));
    }
}

NSObject* NSObject::autorelease() {
    NSAutoreleasePool::addObject(this);
    return this;
}

int NSObject::retainCount() const {
    return m_RetainCount.load(std::memory_order_relaxed);
}

void NSObject::dealloc() {
    delete this;
}

bool NSObject::isEqual(const NSObject* other) const {
    return this == other;
}

NSString* NSObject::description() const {
    return NSString::stringWithFormat("<%s: %p>", typeid(*this).name(), static_cast<const void*>(this));
}
