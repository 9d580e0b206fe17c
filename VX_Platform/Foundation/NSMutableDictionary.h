// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/Foundation/NSObject.h>

#include <functional>
#include <map>
#include <string>

/// Objects by text key; copies its keys and retains its objects. One thread at a time.
class VX_EXPORT NSMutableDictionary : public NSObject {
public:
    VX_RETURNS_OWN_TYPE(NSMutableDictionary)

    NSMutableDictionary* init() override;
    void dealloc() override;

    int count() const { return static_cast<int>(m_Objects.size()); }
    /// Puts the object under the key in the place of what was there. Null for either is a caller's bug and
    /// ends the process.
    void setObject(NSObject* object, const NSString* key);
    void setObject(NSObject* object, const char* key);
    /// The object under the key, borrowed, or null.
    NSObject* objectForKey(const NSString* key) const;
    NSObject* objectForKey(const char* key) const;
    void removeObjectForKey(const char* key);
    /// Calls `visit` for each pair in the order of the keys' bytes.
    void enumerate(const std::function<void(const char* key, NSObject* object)>& visit) const;

private:
    std::map<std::string, NSObject*, std::less<>> m_Objects;
};
