// SPDX-License-Identifier: MIT
#pragma once

#include <epoxy/gl.h>

#include <string>
#include <type_traits>
#include <vector>

namespace vx::test {

/// The calls of hooked entry points, in order, as text.
inline std::vector<std::string> glCalls;

template <class... Values>
std::string glCall(const char* name, Values... values) {
    std::string text = name;
    [[maybe_unused]] const auto add = [&text](auto value) {
        if constexpr (std::is_pointer_v<decltype(value)>)
            text += " *";
        else if constexpr (std::is_floating_point_v<decltype(value)>)
            text += " " + std::to_string(static_cast<int>(value)) + ".0";
        else
            text += " " + std::to_string(static_cast<long>(value));
    };
    (add(values), ...);
    return text;
}

/// Notes the calls of one entry point while it lives. They go on to the driver, but for those that speak of
/// Apple's extensions: a state that is asked for is then 7.
template <auto* Entry>
class GLHook;

template <class Result, class... Arguments, Result (**Entry)(Arguments...)>
class GLHook<Entry> {
public:
    explicit GLHook(const char* name) {
        s_Name = name;
        s_Former = *Entry;
        *Entry = call;
    }
    ~GLHook() { *Entry = s_Former; }

private:
    static Result call(Arguments... arguments) {
        if ((isApples(arguments) || ...)) {
            (answer(arguments), ...);
            if (std::string(s_Name) != "glGetIntegerv")
                glCalls.push_back(glCall(s_Name, arguments...));
            return Result();
        }
        if (std::string(s_Name) != "glGetIntegerv")
            glCalls.push_back(glCall(s_Name, arguments...));
        const struct Unhooked { // the first call of all puts the driver's own in that place
            Unhooked() { *Entry = s_Former; }
            ~Unhooked() {
                s_Former = *Entry;
                *Entry = call;
            }
        } unhooked;
        return (*Entry)(arguments...);
    }
    template <class Value>
    static bool isApples(Value value) {
        if constexpr (std::is_same_v<Value, GLenum>)
            return value == GL_UNPACK_CLIENT_STORAGE_APPLE || value == GL_TEXTURE_STORAGE_HINT_APPLE;
        return false;
    }
    template <class Value>
    static void answer(Value value) {
        if constexpr (std::is_same_v<Value, GLint*>)
            *value = 7;
    }

    static inline const char* s_Name;
    static inline Result (*s_Former)(Arguments...);
};

#define VX_HOOK(function)                               \
    const GLHook<&epoxy_##function> hooked_##function { \
#function                                       \
    }

/// What the texture operations call to change something, and glGetError.
struct TextureCalls {
    TextureCalls() { glCalls.clear(); }
    VX_HOOK(glGetIntegerv);
    VX_HOOK(glEnable);
    VX_HOOK(glDisable);
    VX_HOOK(glGenTextures);
    VX_HOOK(glDeleteTextures);
    VX_HOOK(glBindTexture);
    VX_HOOK(glPixelStorei);
    VX_HOOK(glTexParameteri);
    VX_HOOK(glTexParameterf);
    VX_HOOK(glTexImage2D);
    VX_HOOK(glCompressedTexImage2D);
    VX_HOOK(glGetError);
};

} // namespace vx::test
