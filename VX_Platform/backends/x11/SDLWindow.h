// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/backends/Platform.h>

#include <functional>

struct SDL_Window;
struct SDL_WindowEvent;

namespace vx {

/// A top-level window of SDL, hidden at first. Main thread only.
class SDLWindow : public WindowBackend {
public:
    /// What the displays are now.
    using Displays = std::function<std::vector<DisplayInfo>()>;

    /// Null, with a line in the log, when SDL makes none.
    static std::unique_ptr<SDLWindow> make(PlatformEvents& events, Displays displays, CGRect frame,
                                           WindowStyle style);
    ~SDLWindow() override;

    /// The window of that SDL id if it is one of ours, or null.
    static SDLWindow* withID(std::uint32_t id);

    void setTitle(const char* title) override;
    void setFrame(CGRect frame) override;
    CGRect frame() const override;
    void show() override;
    void hide() override;
    void setStyle(WindowStyle style) override;
    bool fillDisplay(const std::string& display) override;
    void leaveDisplay() override;
    NativeWindow nativeWindow() const override;

    /// Tells the platform's events of what SDL says about the window.
    void report(const SDL_WindowEvent& event);

private:
    SDLWindow(PlatformEvents& events, Displays displays, SDL_Window* window, WindowStyle style);
    void place(CGRect frame);
    void applyStyle(WindowStyle style);

    PlatformEvents& m_Events;
    Displays m_Displays;
    SDL_Window* m_Window;
    WindowStyle m_Style;
    CGRect m_FrameBefore;
    bool m_FillsDisplay = false;
};

} // namespace vx
