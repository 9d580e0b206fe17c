// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/backends/FillingWindow.h>
#include <VX_Platform/backends/x11/SDLSession.h>

#include <functional>

struct SDL_Window;
struct SDL_WindowEvent;

namespace vx {

/// A top-level window of SDL, hidden at first. Main thread only.
class SDLWindow : public FillingWindow {
public:
    /// What the displays are now.
    using Displays = std::function<std::vector<DisplayInfo>()>;

    /// Null, with a line in the log, when SDL makes none.
    static std::unique_ptr<SDLWindow> make(const SDLSession& session, PlatformEvents& events,
                                           Displays displays, CGRect frame, WindowStyle style);
    ~SDLWindow() override;

    /// The window of that SDL id if it is one of ours, or null.
    static SDLWindow* withID(std::uint32_t id);
    /// The same for an X11 window.
    static SDLWindow* withNative(std::uintptr_t handle);

    void setTitle(const char* title) override;
    void setFrame(CGRect frame) override;
    CGRect frame() const override;
    bool show(bool withKeyboard) override;
    void hide() override;
    void setStyle(WindowStyle style) override;
    NativeWindow nativeWindow() const override;

    /// Tells the platform's events of what SDL says about the window.
    void report(const SDL_WindowEvent& event);
    /// Another client has ended the window.
    void noteEnd();

private:
    SDLWindow(const SDLSession& session, PlatformEvents& events, Displays displays, SDL_Window* window,
              WindowStyle style);
    /// Whether there is still a window: what SDL asks for one that is gone ends the process, or waits for
    /// ever.
    bool isThere() const { return !m_Ended && !m_Session.hasEnded(); }
    void place(CGRect frame);
    void applyStyle();
    void takeFocusWithoutManager();
    std::vector<DisplayInfo> displays() const override { return m_Displays(); }
    void fillingChanged() override { applyStyle(); }
    void coverPanels(bool cover) override;

    const SDLSession& m_Session;
    PlatformEvents& m_Events;
    Displays m_Displays;
    SDL_Window* m_Window;
    WindowStyle m_Style;
    bool m_Ended = false;
};

} // namespace vx
