// SPDX-License-Identifier: MIT
#pragma once

#include <epoxy/gl.h>

#include <string>
#include <vector>

namespace vx::test {

/// The entry points that were called while they were hooked, in order.
inline std::vector<std::string> glCalls;

template <auto* Entry>
class GLHook;
template <class Result, class... Arguments, Result (**Entry)(Arguments...)>
class GLHook<Entry> {
public:
    explicit GLHook(const char* name) : m_Former(std::exchange(*Entry, call)) {
        s_Name = name;
        s_Driver = m_Former;
    }
    ~GLHook() { *Entry = m_Former; }

private:
    static Result call(Arguments... arguments) {
        glCalls.push_back(s_Name);
        struct Unhooked { // the first call of all puts the driver's own in that place
            Unhooked() { *Entry = s_Driver; }
            ~Unhooked() { s_Driver = std::exchange(*Entry, call); }
        } unhooked;
        return (*Entry)(arguments...);
    }
    Result (*m_Former)(Arguments...);
    static inline const char* s_Name;
    static inline Result (*s_Driver)(Arguments...);
};
#define VX_HOOK(function)                               \
    const GLHook<&epoxy_##function> hooked_##function { \
#function                                       \
    }

/// The calls by which texture operations begin to change something, and glGetError.
struct TextureCalls {
    TextureCalls() { glCalls.clear(); }
    VX_HOOK(glEnable);
    VX_HOOK(glGenTextures);
    VX_HOOK(glPixelStorei);
    VX_HOOK(glBindTexture);
    VX_HOOK(glGetError);
};

} // namespace vx::test
