// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <vector>

namespace vx {

/// Appends a new object, which the list owns from then on, and returns it.
template <class Object>
Object* appendNew(std::vector<Object*>& list) {
    auto object = std::make_unique<Object>();
    list.push_back(object.get());
    return object.release();
}

/// Deletes the objects from first to last and empties the list.
template <class Object>
void deleteAll(std::vector<Object*>& list) {
    for (Object* object : list)
        delete object;
    list.clear();
}

} // namespace vx
