// SPDX-License-Identifier: MIT
#include <VX_Platform/Foundation/NSMutableDictionary.h>

#include <VX_Platform/Foundation/NSException.h>
#include <VX_Platform/Foundation/NSMutableArray.h>
#include <VX_Platform/Foundation/NSString.h>

NSMutableDictionary* NSMutableDictionary::dictionary() {
    return (new NSMutableDictionary)->autorelease();
}

NSMutableDictionary* NSMutableDictionary::init() {
    return this;
}

void NSMutableDictionary::setObject(NSObject* object, const NSString* key) {
    setObject(object, key ? key->UTF8String() : nullptr);
}

void NSMutableDictionary::setObject(NSObject* object, const char* key) {
    if (!object || !key)
        NSException::raise(NSInvalidArgumentException,
                           "NSMutableDictionary::setObject: the %s is null, key %s", key ? "object" : "key",
                           key);
    m_Objects[key] = NSRef<NSObject>::retain(object);
}

NSObject* NSMutableDictionary::objectForKey(const NSString* key) const {
    return key ? objectForKey(key->UTF8String()) : nullptr;
}

NSObject* NSMutableDictionary::objectForKey(const char* key) const {
    const auto found = key ? m_Objects.find(key) : m_Objects.end();
    return found == m_Objects.end() ? nullptr : found->second.get();
}

void NSMutableDictionary::removeObjectForKey(const char* key) {
    const auto removed = NSRef<NSObject>::retain(objectForKey(key)); // ends when the pair is gone
    if (removed)
        m_Objects.erase(key);
}

NSMutableArray* NSMutableDictionary::allKeys() const {
    NSMutableArray* const keys = (new NSMutableArray)->init()->autorelease();
    for (const auto& [key, object] : m_Objects)
        keys->addObject(NSString::stringWithUTF8String(key.c_str()));
    return keys;
}

void NSMutableDictionary::enumerate(const std::function<void(const char*, NSObject*)>& visit) const {
    for (const auto& [key, object] : m_Objects)
        visit(key.c_str(), object.get());
}
