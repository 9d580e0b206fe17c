// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/Foundation/NSObject.h>

#include <vector>

/// Ordered list that retains its objects. One thread at a time.
///
/// Walked with a range-based `for` over `objects()`. A change of the list during the walk is a caller's bug
/// and ends the process with a message.
class VX_EXPORT NSMutableArray : public NSObject {
public:
    VX_RETURNS_OWN_TYPE(NSMutableArray)

    NSMutableArray* init() override;
    void dealloc() override;

    int count() const { return static_cast<int>(m_Objects.size()); }
    /// The object at `index`, borrowed. An index outside the list is a caller's bug and ends the process.
    NSObject* objectAtIndex(int index) const;
    /// Appends and retains the object; null is a caller's bug and ends the process.
    void addObject(NSObject* object);
    void removeObjectAtIndex(int index);
    void removeAllObjects();
    bool containsObject(const NSObject* object) const;

    class VX_EXPORT Walk {
    public:
        explicit Walk(const NSMutableArray* array) : m_Array(array), m_Changes(array->m_Changes) {}
        Walk& begin() { return *this; }
        std::nullptr_t end() { return nullptr; }
        bool operator!=(std::nullptr_t) const;
        NSObject* operator*() const { return m_Array->m_Objects[m_Index]; }
        void operator++() { ++m_Index; }

    private:
        const NSMutableArray* m_Array;
        unsigned long m_Changes;
        std::size_t m_Index = 0;
    };

    Walk objects() const { return Walk(this); }

private:
    std::vector<NSObject*> m_Objects;
    unsigned long m_Changes = 0;
};
