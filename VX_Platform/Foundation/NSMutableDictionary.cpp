// SPDX-License-Identifier: MIT
#include <VX_Platform/Foundation/NSMutableDictionary.h>

#include <VX_Platform/Foundation/NSLog.h>
#include <VX_Platform/Foundation/NSString.h>

NSMutableDictionary* NSMutableDictionary::init() {
    return this;
}

void NSMutableDictionary::dealloc() {
    for (auto& [key, object] : m_Objects)
        object->release();
    NSObject::dealloc();
}

void NSMutableDictionary::setObject(NSObject* object, const NSString* key) {
    setObject(object, key ? key->UTF8String() : nullptr);
}

void NSMutableDictionary::setObject(NSObject* object, const char* key) {
    if (!object || !key)
        vx::fatal("NSMutableDictionary::setObject: %s is null (key \"%s\")", key ? "the object" : "the key",
                  key);
    object->retain();
    NSObject*& place = m_Objects[key];
    NSObject* old = place;
    place = object;
    if (old)
        old->release();
}

NSObject* NSMutableDictionary::objectForKey(const NSString* key) const {
    return key ? objectForKey(key->UTF8String()) : nullptr;
}

NSObject* NSMutableDictionary::objectForKey(const char* key) const {
    const auto found = key ? m_Objects.find(key) : m_Objects.end();
    return found == m_Objects.end() ? nullptr : found->second;
}

void NSMutableDictionary::removeObjectForKey(const char* key) {
    const auto found = m_Objects.find(key);
    if (found == m_Objects.end())
        return;
    NSObject* old = found->second;
    m_Objects.erase(found);
    old->release();
}

void NSMutableDictionary::enumerate(const std::function<void(const char*, NSObject*)>& visit) const {
    for (const auto& [key, object] : m_Objects)
        visit(key.c_str(), object);
}
