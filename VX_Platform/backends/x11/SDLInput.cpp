// SPDX-License-Identifier: MIT
#include <VX_Platform/backends/x11/SDLInput.h>

#include <VX_Platform/backends/x11/KeyText.h>
#include <VX_Platform/backends/x11/SDLWindow.h>

#include <SDL.h>

#include <algorithm>
#include <map>
#include <vector>

namespace vx {

namespace {

unsigned modifiersOf(int held) {
    return (held & KMOD_SHIFT ? kShift : 0u) | (held & KMOD_CTRL ? kControl : 0u) |
           (held & KMOD_ALT ? kAlternate : 0u) | (held & KMOD_GUI ? kCommand : 0u);
}

// What the keypad's keys are while it types no numbers.
SDL_Keycode withoutNumbers(SDL_Keycode code) {
    static const std::map<SDL_Keycode, SDL_Keycode> moves = {
        {SDLK_KP_0, SDLK_INSERT},     {SDLK_KP_1, SDLK_END},  {SDLK_KP_2, SDLK_DOWN},
        {SDLK_KP_3, SDLK_PAGEDOWN},   {SDLK_KP_4, SDLK_LEFT}, {SDLK_KP_6, SDLK_RIGHT},
        {SDLK_KP_7, SDLK_HOME},       {SDLK_KP_8, SDLK_UP},   {SDLK_KP_9, SDLK_PAGEUP},
        {SDLK_KP_PERIOD, SDLK_DELETE}};
    const auto found = moves.find(code);
    return found == moves.end() ? code : found->second;
}

unsigned namedKey(SDL_Keycode code) {
    static const std::map<SDL_Keycode, Key> named = {
        {SDLK_UP, Key::upArrow},       {SDLK_DOWN, Key::downArrow}, {SDLK_LEFT, Key::leftArrow},
        {SDLK_RIGHT, Key::rightArrow}, {SDLK_INSERT, Key::insert},  {SDLK_DELETE, Key::deleteForward},
        {SDLK_HOME, Key::home},        {SDLK_END, Key::end},        {SDLK_PAGEUP, Key::pageUp},
        {SDLK_PAGEDOWN, Key::pageDown}};
    if (const auto found = named.find(code); found != named.end())
        return static_cast<unsigned>(found->second);
    const bool isFunction = code >= SDLK_F1 && code <= SDLK_F12;
    return isFunction ? static_cast<unsigned>(Key::f1) + static_cast<unsigned>(code - SDLK_F1) : 0;
}

bool isNamed(unsigned key) {
    return key >= static_cast<unsigned>(Key::upArrow) && key <= static_cast<unsigned>(Key::pageDown);
}

// The character on a key of the keypad, 0 for other keys.
unsigned keypadCharacter(SDL_Keycode code) {
    static const std::map<SDL_Keycode, char> characters = {
        {SDLK_KP_0, '0'},      {SDLK_KP_1, '1'},        {SDLK_KP_2, '2'},      {SDLK_KP_3, '3'},
        {SDLK_KP_4, '4'},      {SDLK_KP_5, '5'},        {SDLK_KP_6, '6'},      {SDLK_KP_7, '7'},
        {SDLK_KP_8, '8'},      {SDLK_KP_9, '9'},        {SDLK_KP_PERIOD, '.'}, {SDLK_KP_COMMA, ','},
        {SDLK_KP_DIVIDE, '/'}, {SDLK_KP_MULTIPLY, '*'}, {SDLK_KP_MINUS, '-'},  {SDLK_KP_PLUS, '+'},
        {SDLK_KP_EQUALS, '='}, {SDLK_KP_ENTER, '\r'}};
    const auto found = characters.find(code);
    return found == characters.end() ? 0 : static_cast<unsigned>(found->second);
}

unsigned keyOf(SDL_Keycode code, int held) {
    const bool numbers = bool(held & KMOD_NUM) != bool(held & KMOD_SHIFT);
    if (!numbers)
        code = withoutNumbers(code);
    if (const unsigned named = namedKey(code))
        return named;
    if (const unsigned character = keypadCharacter(code))
        return character;
    // SDL's codes are the characters themselves but for keys that have none.
    const bool isCharacter = (code & SDLK_SCANCODE_MASK) == 0;
    return isCharacter ? static_cast<unsigned>(code) : 0;
}

std::string textOfKey(const SDL_Keysym& key, _XDisplay* keyboard) {
    const int held = key.mod;
    const unsigned character = keyOf(key.sym, held);
    const bool types = character >= ' ' && character != 0x7f && !isNamed(character);
    if (!types || (held & (KMOD_CTRL | KMOD_LALT | KMOD_GUI)))
        return {};
    if (keypadCharacter(key.sym))
        return std::string(1, static_cast<char>(character));
    return textOf(keyboard, {character, (held & KMOD_SHIFT) != 0, (held & KMOD_CAPS) != 0,
                             (held & (KMOD_RALT | KMOD_MODE)) != 0});
}

InputEvent fromKey(const SDL_KeyboardEvent& key) {
    InputEvent event;
    event.kind = key.type == SDL_KEYDOWN ? InputEvent::Kind::keyDown : InputEvent::Kind::keyUp;
    event.key = keyOf(key.keysym.sym, key.keysym.mod);
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

void send(PlatformEvents& events, SDLWindow& window, InputEvent event) {
    if (event.kind != InputEvent::Kind::keyDown && event.kind != InputEvent::Kind::keyUp)
        event.modifiers = modifiersOf(SDL_GetModState());
    events.input(window, event);
}

Uint32 windowOf(const SDL_Event& event) {
    switch (event.type) {
        case SDL_KEYDOWN:
        case SDL_KEYUP:
            return event.key.windowID;
        case SDL_TEXTINPUT:
            return event.text.windowID;
        case SDL_MOUSEBUTTONDOWN:
        case SDL_MOUSEBUTTONUP:
            return event.button.windowID;
        case SDL_MOUSEMOTION:
            return event.motion.windowID;
        case SDL_MOUSEWHEEL:
            return event.wheel.windowID;
        case SDL_WINDOWEVENT:
            return event.window.windowID;
        default:
            return 0;
    }
}

// In the order in which they came.
class Reporter {
public:
    Reporter(PlatformEvents& events, _XDisplay* keyboard, const std::vector<SDL_Event>& all)
        : m_Events(events), m_Keyboard(keyboard), m_All(all) {}

    void report() {
        for (m_Next = 0; m_Next < m_All.size();) {
            const SDL_Event& event = m_All[m_Next++];
            // What was told before may have ended it.
            if (SDLWindow* window = SDLWindow::withID(windowOf(event)))
                report(event, *window);
        }
    }

private:
    void report(const SDL_Event& event, SDLWindow& window) {
        switch (event.type) {
            case SDL_KEYDOWN:
                return reportPress(event.key, window);
            case SDL_KEYUP:
                return send(m_Events, window, fromKey(event.key));
            case SDL_TEXTINPUT:
                return reportText(event.text.text, window);
            case SDL_MOUSEBUTTONDOWN:
            case SDL_MOUSEBUTTONUP:
                return send(m_Events, window, fromButton(event.button));
            case SDL_MOUSEMOTION:
                return send(m_Events, window, fromMotion(event.motion));
            case SDL_MOUSEWHEEL:
                return send(m_Events, window, fromWheel(event.wheel));
            case SDL_WINDOWEVENT:
                return window.report(event.window);
            default:
                break;
        }
    }

    void reportPress(const SDL_KeyboardEvent& key, SDLWindow& window) {
        InputEvent event = fromKey(key);
        const bool hasText = m_Next < m_All.size() && m_All[m_Next].type == SDL_TEXTINPUT;
        if (!SDL_IsTextInputActive())
            event.text = textOfKey(key.keysym, m_Keyboard);
        else if (hasText && m_All[m_Next].text.windowID == key.windowID)
            event.text = m_All[m_Next++].text.text;
        send(m_Events, window, event);
    }

    // Of no key: an input method's.
    void reportText(const char* text, SDLWindow& window) {
        InputEvent event;
        event.kind = InputEvent::Kind::keyDown;
        event.text = text;
        send(m_Events, window, event);
    }

    PlatformEvents& m_Events;
    _XDisplay* m_Keyboard;
    const std::vector<SDL_Event>& m_All;
    std::size_t m_Next = 0;
};

// Far below what SDL's queue holds: where no host takes the others, ours must still find room.
constexpr int kMostOthers = 8192;

struct Sorting {
    std::vector<SDL_Event> ours;
    int others = 0;
    int surplus = 0;
};

// 1 leaves the event in the queue.
int SDLCALL sortOut(void* context, SDL_Event* event) {
    auto& sorting = *static_cast<Sorting*>(context);
    if (SDLWindow::withID(windowOf(*event))) {
        sorting.ours.push_back(*event);
        return 0;
    }
    return ++sorting.others > sorting.surplus;
}

} // namespace

bool reportSDLEvents(PlatformEvents& events, _XDisplay* keyboard) {
    static int others = 0;
    Sorting sorting;
    sorting.surplus = others - kMostOthers;
    SDL_FilterEvents(sortOut, &sorting);
    others = std::min(sorting.others, kMostOthers);
    Reporter(events, keyboard, sorting.ours).report();
    return !sorting.ours.empty();
}

} // namespace vx
