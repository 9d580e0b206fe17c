// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct xcb_connection_t;
struct xcb_screen_t;

namespace vx::test {

/// Plays the user of the X server that DISPLAY names: finds windows, presses keys and buttons, looks at the
/// screen. On a connection of its own.
class X11Input {
public:
    struct Window {
        std::uint32_t id = 0;
        int x = 0, y = 0, width = 0, height = 0; ///< on the screen
    };

    X11Input();
    ~X11Input();
    X11Input(const X11Input&) = delete;
    X11Input& operator=(const X11Input&) = delete;

    /// The visible top-level windows with that title.
    std::vector<Window> windows(const std::string& title);
    /// Presses and releases the first key that has the keysym, with another one held down if that is not 0.
    void press(std::uint32_t keysym, std::uint32_t held = 0);
    /// Moves the pointer to a point on the screen; presses and releases a button of X (1 left, 2 middle, 3
    /// right) where it is.
    void moveTo(int x, int y);
    void hold(int button = 1);
    void letGo(int button = 1);
    void click(int x, int y, int button = 1);
    /// Asks the window to close, as a window manager does.
    void close(const Window& window);

    /// The window that shows the whole screen.
    std::uint32_t root() const;
    /// A part of the window, of its own coordinates, as rows of 0xrrggbb, top row first.
    std::vector<std::uint32_t> pixels(const Window& part);

private:
    std::uint32_t atom(const char* name);
    std::string titleOf(std::uint32_t window);
    int keycode(std::uint32_t keysym);
    void fake(int type, int detail, int x, int y);

    xcb_connection_t* m_Connection;
    xcb_screen_t* m_Screen;
};

} // namespace vx::test
