// SPDX-License-Identifier: MIT
// An SDL 2 window: a picture of the toolkit's above a bar that SDL draws. A click on the bar gives the
// picture the bar's colour, left and right change the speed, V ends the view and makes it anew. `host_sdl2 2`
// opens two windows.
#include <VX_OpenGL64/VX_OpenGL64.h>
#include <examples/hosts/support/HostScene.h>

#include <SDL.h>
#include <SDL_syswm.h>
#include <X11/Xlib.h> // behind the others: its macros take common words

#include <algorithm>
#include <memory>
#include <vector>

namespace {

constexpr int kBarHeight = 48;

class PictureWindow {
public:
    PictureWindow() { openView(); }
    ~PictureWindow() {
        m_View.reset(); // ahead of its window
        SDL_DestroyWindow(m_Window);
    }
    Uint32 id() const { return SDL_GetWindowID(m_Window); }

    /// False when the window is to be closed.
    bool take(const SDL_Event& event) {
        if (event.type == SDL_MOUSEBUTTONDOWN && event.button.y >= height() - kBarHeight)
            m_Scene->takeNextGround();
        else if (event.type == SDL_KEYDOWN)
            press(event.key.keysym.sym);
        return event.type != SDL_WINDOWEVENT || event.window.event != SDL_WINDOWEVENT_CLOSE;
    }
    void drawBar() {
        SDL_Surface* const surface = SDL_GetWindowSurface(m_Window);
        if (!surface)
            return;
        const int speed = surface->w / 2 + m_Scene->speed() * surface->w / 360;
        const SDL_Rect bar{0, surface->h - kBarHeight, surface->w, kBarHeight};
        const SDL_Rect mark{speed - 3, bar.y + 8, 6, kBarHeight - 16};
        SDL_FillRect(surface, &bar, 0xff000000 | m_Scene->nextGround());
        SDL_FillRect(surface, &mark, 0xffffffff);
        SDL_UpdateWindowSurfaceRects(m_Window, &bar, 1); // the view's part is the view's
    }

private:
    void openView() {
        SDL_SysWMinfo info;
        SDL_VERSION(&info.version);
        SDL_GetWindowWMInfo(m_Window, &info);
        XSync(info.info.x11.display, False); // the server has to know the window by now
        m_View = VX_GLHost::open(m_Scene.get(), {.inside = vx::NativeWindow::x11(info.info.x11.window),
                                                 .margins = {.bottom = kBarHeight}});
    }
    void press(SDL_Keycode key) {
        if (key == SDLK_LEFT || key == SDLK_RIGHT)
            m_Scene->setSpeed(std::clamp(m_Scene->speed() + (key == SDLK_LEFT ? -20 : 20), -180, 180));
        else if (key == SDLK_v)
            m_View ? m_View.reset() : openView();
    }
    int height() const {
        int height = 0;
        SDL_GetWindowSize(m_Window, nullptr, &height);
        return height;
    }

    SDL_Window* m_Window = SDL_CreateWindow("SDL 2", SDL_WINDOWPOS_UNDEFINED, SDL_WINDOWPOS_UNDEFINED, 640,
                                            408, SDL_WINDOW_RESIZABLE);
    NSRef<HostScene> m_Scene = NSInit(new HostScene);
    std::unique_ptr<VX_GLHost> m_View;
};

} // namespace

int main(int count, char** words) {
    SDL_SetHint(SDL_HINT_VIDEODRIVER, "x11");
    SDL_SetHint(SDL_HINT_FRAMEBUFFER_ACCELERATION,
                "0"); // a bar by GL would bring another window and a context of its own
    SDL_Init(SDL_INIT_VIDEO);
    std::vector<std::unique_ptr<PictureWindow>> windows(count > 1 && *words[1] == '2' ? 2 : 1);
    for (auto& window : windows)
        window = std::make_unique<PictureWindow>();
    while (!windows.empty()) {
        NSApplication::sharedApplication()->runStep(
            0.02); // waits for events, and leaves them to the next line
        for (SDL_Event event; SDL_PollEvent(&event);)
            std::erase_if(windows, [&](const auto& window) {
                return event.type == SDL_QUIT ||
                       (window->id() == event.window.windowID && !window->take(event));
            });
        for (const auto& window : windows)
            window->drawBar();
    }
    SDL_Quit();
}
