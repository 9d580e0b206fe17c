// SPDX-License-Identifier: MIT
#include <VX_Platform/backends/x11/SDLInput.h>

#include <VX_Platform/backends/x11/SDLWindow.h>

#include <SDL.h>

#include <map>

namespace vx {

namespace {

unsigned modifiersOf(int held) {
    return (held & KMOD_SHIFT ? kShift : 0u) | (held & KMOD_CTRL ? kControl : 0u) |
           (held & KMOD_ALT ? kAlternate : 0u) | (held & KMOD_GUI ? kCommand : 0u);
}

unsigned keyOf(SDL_Keycode code) {
    static const std::map<SDL_Keycode, Key> named = {
        {SDLK_UP, Key::upArrow},       {SDLK_DOWN, Key::downArrow}, {SDLK_LEFT, Key::leftArrow},
        {SDLK_RIGHT, Key::rightArrow}, {SDLK_INSERT, Key::insert},  {SDLK_DELETE, Key::deleteForward},
        {SDLK_HOME, Key::home},        {SDLK_END, Key::end},        {SDLK_PAGEUP, Key::pageUp},
        {SDLK_PAGEDOWN, Key::pageDown}};
    if (code == SDLK_KP_ENTER)
        return '\r';
    if (const auto found = named.find(code); found != named.end())
        return static_cast<unsigned>(found->second);
    if (code >= SDLK_F1 && code <= SDLK_F12)
        return static_cast<unsigned>(Key::f1) + static_cast<unsigned>(code - SDLK_F1);
    // SDL's codes are the characters themselves but for keys that have none.
    const bool isCharacter = (code & SDLK_SCANCODE_MASK) == 0;
    return isCharacter ? static_cast<unsigned>(code) : 0;
}

InputEvent fromKey(const SDL_KeyboardEvent& key) {
    InputEvent event;
    event.kind = key.type == SDL_KEYDOWN ? InputEvent::Kind::keyDown : InputEvent::Kind::keyUp;
    event.key = keyOf(key.keysym.sym);
    event.isRepeat = key.repeat != 0;
    // As they were at the key; by now they may have been let go.
    event.modifiers = modifiersOf(key.keysym.mod);
    return event;
}

int buttonOf(int button) {
    switch (button) {
        case SDL_BUTTON_LEFT:
            return 0;
        case SDL_BUTTON_RIGHT:
            return 1;
        case SDL_BUTTON_MIDDLE:
            return 2;
        default:
            return button - 1;
    }
}

InputEvent fromButton(const SDL_MouseButtonEvent& button) {
    InputEvent event;
    event.kind =
        button.type == SDL_MOUSEBUTTONDOWN ? InputEvent::Kind::buttonDown : InputEvent::Kind::buttonUp;
    event.location = CGPointMake(button.x, button.y);
    event.button = buttonOf(button.button);
    event.clickCount = button.clicks;
    return event;
}

// The button that a motion drags with: the left one ahead of the right one ahead of the others.
int draggingButton(Uint32 held) {
    for (const int button :
         {SDL_BUTTON_LEFT, SDL_BUTTON_RIGHT, SDL_BUTTON_MIDDLE, SDL_BUTTON_X1, SDL_BUTTON_X2})
        if (held & SDL_BUTTON(button))
            return buttonOf(button);
    return -1;
}

InputEvent fromMotion(const SDL_MouseMotionEvent& motion) {
    InputEvent event;
    event.kind = InputEvent::Kind::motion;
    event.location = CGPointMake(motion.x, motion.y);
    event.button = draggingButton(motion.state);
    event.deltaX = motion.xrel;
    event.deltaY = motion.yrel;
    return event;
}

InputEvent fromWheel(const SDL_MouseWheelEvent& wheel) {
    InputEvent event;
    event.kind = InputEvent::Kind::scroll;
    event.location = CGPointMake(wheel.mouseX, wheel.mouseY);
    event.deltaX = wheel.preciseX;
    event.deltaY = wheel.preciseY;
    return event;
}

void send(PlatformEvents& events, Uint32 windowID, InputEvent event) {
    SDLWindow* window = SDLWindow::withID(windowID);
    if (!window)
        return;
    if (event.kind != InputEvent::Kind::keyDown && event.kind != InputEvent::Kind::keyUp)
        event.modifiers = modifiersOf(SDL_GetModState());
    events.input(*window, event);
}

} // namespace

void reportSDLEvent(const SDL_Event& event, PlatformEvents& events) {
    switch (event.type) {
        case SDL_KEYDOWN:
        case SDL_KEYUP:
            send(events, event.key.windowID, fromKey(event.key));
            break;
        case SDL_MOUSEBUTTONDOWN:
        case SDL_MOUSEBUTTONUP:
            send(events, event.button.windowID, fromButton(event.button));
            break;
        case SDL_MOUSEMOTION:
            send(events, event.motion.windowID, fromMotion(event.motion));
            break;
        case SDL_MOUSEWHEEL:
            send(events, event.wheel.windowID, fromWheel(event.wheel));
            break;
        case SDL_WINDOWEVENT:
            if (SDLWindow* window = SDLWindow::withID(event.window.windowID))
                window->report(event.window);
            break;
        default:
            break;
    }
}

} // namespace vx
