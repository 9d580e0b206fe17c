// SPDX-License-Identifier: MIT
#include <VX_Platform/Foundation/NSMutableArray.h>

#include <VX_Platform/Foundation/NSException.h>
#include <VX_Platform/Foundation/NSLog.h>

NSMutableArray* NSMutableArray::init() {
    return this;
}

void NSMutableArray::dealloc() {
    removeAllObjects();
    NSObject::dealloc();
}

NSObject* NSMutableArray::objectAtIndex(int index) const {
    if (index < 0 || index >= count())
        vx::fatal("NSMutableArray::objectAtIndex: index %d is outside a list of %d", index, count());
    return m_Objects[index].get();
}

void NSMutableArray::addObject(NSObject* object) {
    if (!object)
        NSException::raise(NSInvalidArgumentException, "NSMutableArray::addObject: the object is null");
    ++m_Changes;
    m_Objects.push_back(NSRef<NSObject>::retain(object));
}

void NSMutableArray::removeObjectAtIndex(int index) {
    const auto removed =
        NSRef<NSObject>::retain(objectAtIndex(index)); // ends when the list is in order again
    ++m_Changes;
    m_Objects.erase(m_Objects.begin() + index);
}

void NSMutableArray::removeAllObjects() {
    ++m_Changes;
    std::vector<NSRef<NSObject>> removed;
    removed.swap(m_Objects);
}

bool NSMutableArray::containsObject(const NSObject* object) const {
    for (const NSRef<NSObject>& candidate : m_Objects)
        if (candidate->isEqual(object))
            return true;
    return false;
}

bool NSMutableArray::Walk::operator!=(std::nullptr_t) const {
    if (m_Array->m_Changes != m_Changes)
        vx::fatal("NSMutableArray: list %p was changed while it was being walked",
                  static_cast<const void*>(m_Array));
    return m_Index < m_Array->m_Objects.size();
}
