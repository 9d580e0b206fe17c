// SPDX-License-Identifier: MIT
#include <VX_Platform/backends/x11/SDLWindow.h>

#include <VX_Platform/AppKit/NSEvent.h>
#include <VX_Platform/AppKit/NSWindow.h>
#include <VX_Platform/Foundation/NSLog.h>

#include <SDL.h>
#include <SDL_syswm.h>

#include <algorithm>
#include <map>

namespace vx {

namespace {

constexpr const char* kOwnerKey = "vx_window";

class SDLWindow : public WindowBackend {
public:
    SDLWindow(NSWindow* owner, SDL_Window* window) : m_Window(window) {
        SDL_SetWindowData(window, kOwnerKey, owner);
    }
    ~SDLWindow() override { SDL_DestroyWindow(m_Window); }

    void setTitle(const char* title) override { SDL_SetWindowTitle(m_Window, title); }

    void setFrame(CGRect frame) override {
        SDL_SetWindowPosition(m_Window, static_cast<int>(frame.origin.x), static_cast<int>(frame.origin.y));
        SDL_SetWindowSize(m_Window, std::max(1, static_cast<int>(frame.size.width)),
                          std::max(1, static_cast<int>(frame.size.height)));
        static_cast<NSWindow*>(SDL_GetWindowData(m_Window, kOwnerKey))->backendFrameChanged(this->frame());
    }

    CGRect frame() const override {
        int x = 0, y = 0, width = 0, height = 0;
        SDL_GetWindowPosition(m_Window, &x, &y);
        SDL_GetWindowSize(m_Window, &width, &height);
        return CGRectMake(x, y, width, height);
    }

    void show() override {
        SDL_ShowWindow(m_Window);
        SDL_RaiseWindow(m_Window);
    }
    void hide() override { SDL_HideWindow(m_Window); }
    void setBordered(bool bordered) override {
        SDL_SetWindowBordered(m_Window, bordered ? SDL_TRUE : SDL_FALSE);
    }

    unsigned long nativeWindow() const override {
        SDL_SysWMinfo info;
        SDL_VERSION(&info.version);
        return SDL_GetWindowWMInfo(m_Window, &info) ? info.info.x11.window : 0;
    }

private:
    SDL_Window* m_Window;
};

NSWindow* ownerOf(Uint32 windowID) {
    SDL_Window* window = SDL_GetWindowFromID(windowID);
    return window ? static_cast<NSWindow*>(SDL_GetWindowData(window, kOwnerKey)) : nullptr;
}

unsigned modifiers() {
    const SDL_Keymod held = SDL_GetModState();
    return (held & KMOD_SHIFT ? NSShiftKeyMask : 0u) | (held & KMOD_CTRL ? NSControlKeyMask : 0u) |
           (held & KMOD_ALT ? NSAlternateKeyMask : 0u) | (held & KMOD_GUI ? NSCommandKeyMask : 0u);
}

unsigned keyOf(SDL_Keycode code) {
    static const std::map<SDL_Keycode, unsigned> named = {
        {SDLK_UP, NSUpArrowFunctionKey},     {SDLK_DOWN, NSDownArrowFunctionKey},
        {SDLK_LEFT, NSLeftArrowFunctionKey}, {SDLK_RIGHT, NSRightArrowFunctionKey},
        {SDLK_INSERT, NSInsertFunctionKey},  {SDLK_DELETE, NSDeleteFunctionKey},
        {SDLK_HOME, NSHomeFunctionKey},      {SDLK_END, NSEndFunctionKey},
        {SDLK_PAGEUP, NSPageUpFunctionKey},  {SDLK_PAGEDOWN, NSPageDownFunctionKey},
        {SDLK_KP_ENTER, NSReturnKey}};
    if (const auto found = named.find(code); found != named.end())
        return found->second;
    if (code >= SDLK_F1 && code <= SDLK_F12)
        return NSF1FunctionKey + static_cast<unsigned>(code - SDLK_F1);
    // SDL's codes are the characters themselves but for keys that have none.
    const bool isCharacter = (code & SDLK_SCANCODE_MASK) == 0;
    return isCharacter ? static_cast<unsigned>(code) : 0;
}

void sendKey(const SDL_KeyboardEvent& key) {
    NSWindow* window = ownerOf(key.windowID);
    NSEvent::Fields fields;
    fields.type = key.type == SDL_KEYDOWN ? NSKeyDown : NSKeyUp;
    fields.key = keyOf(key.keysym.sym);
    fields.isRepeat = key.repeat != 0;
    fields.modifiers = modifiers();
    if (window)
        window->sendEvent(NSEvent::eventWithFields(fields, window));
}

void sendButton(const SDL_MouseButtonEvent& button) {
    NSWindow* window = ownerOf(button.windowID);
    if (!window)
        return;
    const bool down = button.type == SDL_MOUSEBUTTONDOWN;
    NSEvent::Fields fields;
    fields.modifiers = modifiers();
    fields.location = CGPointMake(button.x, button.y);
    fields.clickCount = button.clicks;
    if (button.button == SDL_BUTTON_LEFT)
        fields.type = down ? NSLeftMouseDown : NSLeftMouseUp;
    else if (button.button == SDL_BUTTON_RIGHT)
        fields.type = down ? NSRightMouseDown : NSRightMouseUp;
    else
        fields.type = down ? NSOtherMouseDown : NSOtherMouseUp;
    fields.button = button.button == SDL_BUTTON_LEFT    ? 0
                    : button.button == SDL_BUTTON_RIGHT ? 1
                                                        : button.button;
    window->sendEvent(NSEvent::eventWithFields(fields, window));
}

NSEventType motionType(Uint32 buttons) {
    if (buttons & SDL_BUTTON_LMASK)
        return NSLeftMouseDragged;
    if (buttons & SDL_BUTTON_RMASK)
        return NSRightMouseDragged;
    return buttons ? NSOtherMouseDragged : NSMouseMoved;
}

void sendMotion(const SDL_MouseMotionEvent& motion) {
    NSWindow* window = ownerOf(motion.windowID);
    if (!window)
        return;
    NSEvent::Fields fields;
    fields.type = motionType(motion.state);
    fields.modifiers = modifiers();
    fields.location = CGPointMake(motion.x, motion.y);
    fields.deltaX = motion.xrel;
    fields.deltaY = motion.yrel;
    window->sendEvent(NSEvent::eventWithFields(fields, window));
}

void sendWheel(const SDL_MouseWheelEvent& wheel) {
    NSWindow* window = ownerOf(wheel.windowID);
    if (!window)
        return;
    NSEvent::Fields fields;
    fields.type = NSScrollWheel;
    fields.modifiers = modifiers();
    fields.location = CGPointMake(wheel.mouseX, wheel.mouseY);
    fields.deltaX = wheel.preciseX;
    fields.deltaY = wheel.preciseY;
    window->sendEvent(NSEvent::eventWithFields(fields, window));
}

void tellWindow(const SDL_WindowEvent& event) {
    NSWindow* window = ownerOf(event.windowID);
    if (!window)
        return;
    NSRef<NSWindow> keep = NSRef<NSWindow>::retain(window);
    switch (event.event) {
        case SDL_WINDOWEVENT_SIZE_CHANGED:
        case SDL_WINDOWEVENT_MOVED:
            window->backendFrameChanged(window->backend()->frame());
            break;
        case SDL_WINDOWEVENT_FOCUS_GAINED:
        case SDL_WINDOWEVENT_FOCUS_LOST:
            window->backendFocusChanged(event.event == SDL_WINDOWEVENT_FOCUS_GAINED);
            break;
        case SDL_WINDOWEVENT_CLOSE:
            window->performClose();
            break;
        default:
            break;
    }
}

} // namespace

std::unique_ptr<WindowBackend> makeSDLWindow(NSWindow* owner, CGRect frame, bool bordered) {
    Uint32 flags = SDL_WINDOW_HIDDEN | SDL_WINDOW_RESIZABLE;
    if (!bordered)
        flags |= SDL_WINDOW_BORDERLESS;
    SDL_Window* window =
        SDL_CreateWindow("", static_cast<int>(frame.origin.x), static_cast<int>(frame.origin.y),
                         std::max(1, static_cast<int>(frame.size.width)),
                         std::max(1, static_cast<int>(frame.size.height)), flags);
    if (!window) {
        NSLog("A window of %.0f x %.0f cannot be made: %s", frame.size.width, frame.size.height,
              SDL_GetError());
        return nullptr;
    }
    return std::make_unique<SDLWindow>(owner, window);
}

void dispatchSDLEvent(const SDL_Event& event) {
    switch (event.type) {
        case SDL_KEYDOWN:
        case SDL_KEYUP:
            sendKey(event.key);
            break;
        case SDL_MOUSEBUTTONDOWN:
        case SDL_MOUSEBUTTONUP:
            sendButton(event.button);
            break;
        case SDL_MOUSEMOTION:
            sendMotion(event.motion);
            break;
        case SDL_MOUSEWHEEL:
            sendWheel(event.wheel);
            break;
        case SDL_WINDOWEVENT:
            tellWindow(event.window);
            break;
        default:
            break;
    }
}

} // namespace vx
