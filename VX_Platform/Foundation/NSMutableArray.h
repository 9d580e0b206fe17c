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

    /// Sets an empty list up and returns it.
    NSMutableArray* init() override;
    /// Releases the objects.
    void dealloc() override;

    /// Returns the number of objects.
    int count() const { return static_cast<int>(m_Objects.size()); }
    /// Returns the object at `index`, counted from 0; borrowed. An index outside the list is a caller's bug
    /// and ends the process.
    NSObject* objectAtIndex(int index) const;
    /// Appends the object and retains it; one may be in the list more than once. Null raises
    /// NSInvalidArgumentException.
    void addObject(NSObject* object);
    /// Takes the object at `index` out, then releases it; those behind it move up. An index outside the list
    /// is a caller's bug and ends the process.
    void removeObjectAtIndex(int index);
    /// Empties the list, then releases what was in it.
    void removeAllObjects();
    /// Returns whether an object of the list `isEqual` to the given one, which may be null.
    bool containsObject(const NSObject* object) const;

    /// Where a walk over the list stands; made by `objects`.
    class VX_EXPORT Walk {
    public:
        /// What a range-based `for` calls.
        explicit Walk(const NSMutableArray* array) : m_Array(array), m_Changes(array->m_Changes) {}
        Walk& begin() { return *this; }
        std::nullptr_t end() { return nullptr; }
        bool operator!=(std::nullptr_t) const;
        NSObject* operator*() const { return m_Array->m_Objects[m_Index].get(); }
        void operator++() { ++m_Index; }

    private:
        const NSMutableArray* m_Array;
        unsigned long m_Changes;
        std::size_t m_Index = 0;
    };

    /// Returns a walk over the objects in order, for a range-based `for`; the list must outlive it.
    Walk objects() const { return Walk(this); }

protected:
    ~NSMutableArray() override = default;

private:
    std::vector<NSRef<NSObject>> m_Objects;
    unsigned long m_Changes = 0;
};
