// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/Foundation/NSObject.h>

#include <functional>
#include <map>
#include <string>

class NSMutableArray;

/// Objects by text key; copies its keys and retains its objects. One thread at a time.
class VX_EXPORT NSMutableDictionary : public NSObject {
public:
    VX_RETURNS_OWN_TYPE(NSMutableDictionary)

    /// Returns an empty dictionary, borrowed and autoreleased.
    static NSMutableDictionary* dictionary();
    /// Sets an empty dictionary up and returns it.
    NSMutableDictionary* init() override;

    /// Returns the number of pairs.
    int count() const { return static_cast<int>(m_Objects.size()); }
    /// Puts the object, retained, under the key, in UTF-8 and up to its first NUL, and releases what was
    /// there. Null for either raises NSInvalidArgumentException.
    void setObject(NSObject* object, const NSString* key);
    void setObject(NSObject* object, const char* key);
    /// Returns the object under the key, borrowed; null when there is none, or for a null key.
    NSObject* objectForKey(const NSString* key) const;
    NSObject* objectForKey(const char* key) const;
    /// Releases the object under the key; nothing when there is none, or for a null key.
    void removeObjectForKey(const char* key);
    /// Returns the keys (`NSString`) in the order of their bytes, borrowed, autoreleased.
    NSMutableArray* allKeys() const;
    /// Calls `visit` for each pair in the order of the keys' bytes, both borrowed. The dictionary must not
    /// change meanwhile.
    void enumerate(const std::function<void(const char* key, NSObject* object)>& visit) const;

protected:
    ~NSMutableDictionary() override = default;

private:
    std::map<std::string, NSRef<NSObject>, std::less<>> m_Objects;
};
