// SPDX-License-Identifier: MIT
#include <VX_Platform/backends/x11/KeyText.h>

#include <X11/XKBlib.h>
#include <X11/keysym.h>
#include <xkbcommon/xkbcommon.h>

#include <memory>

namespace vx {

namespace {

struct FreeKeyboard {
    void operator()(XkbDescPtr keyboard) const { XkbFreeKeyboard(keyboard, XkbAllComponentsMask, True); }
};
using Keyboard = std::unique_ptr<XkbDescRec, FreeKeyboard>;

// A key in one of the keyboard's layouts.
struct Place {
    int code = 0;
    int group = 0;
};

KeySym symbolAt(const Keyboard& keyboard, const Place& place, int level) {
    XkbDescPtr keys = keyboard.get();
    return level < XkbKeyGroupWidth(keys, place.code, place.group)
               ? XkbKeySymEntry(keys, place.code, level, place.group)
               : NoSymbol;
}

template <class Matches>
Place find(const Keyboard& keyboard, Matches matches) {
    for (int code = keyboard->min_key_code; code <= keyboard->max_key_code; ++code)
        for (int group = 0; group < XkbKeyNumGroups(keyboard.get(), code); ++group)
            if (matches(symbolAt(keyboard, {code, group}, 0)))
                return {code, group};
    return {};
}

// Layouts with a third level have its modifier where others have the right alternate key.
unsigned thirdLevel(::Display* connection, const Keyboard& keyboard) {
    const bool isAlternate = find(keyboard, [](KeySym symbol) { return symbol == XK_Alt_R; }).code != 0;
    return isAlternate ? 0 : XkbKeysymToModifiers(connection, XK_ISO_Level3_Shift);
}

} // namespace

std::string textOf(::Display* connection, const TypedKey& key) {
    const Keyboard keyboard(XkbGetMap(connection, XkbAllClientInfoMask, XkbUseCoreKbd));
    if (!keyboard)
        return {};
    const Place place = find(
        keyboard, [&](KeySym symbol) { return xkb_keysym_to_utf32(xkb_keysym_t(symbol)) == key.character; });
    if (!place.code)
        return {};
    unsigned state = (key.shift ? ShiftMask : 0u) | (key.capsLock ? LockMask : 0u);
    if (key.rightAlternate)
        state |= thirdLevel(connection, keyboard);
    unsigned used = 0;
    KeySym symbol = NoSymbol;
    XkbTranslateKeyCode(keyboard.get(), KeyCode(place.code), XkbBuildCoreState(state, place.group), &used,
                        &symbol);
    char text[8] = "";
    xkb_keysym_to_utf8(xkb_keysym_t(symbol), text, sizeof text);
    return text;
}

} // namespace vx
