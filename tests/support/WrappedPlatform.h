// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/AppKit/NSApplication.h>
#include <VX_Platform/AppKit/private/RunningPlatform.h>

#include <atomic>
#include <functional>

namespace vx::test {

/// Stands in the place of the headless platform while it lives, and lets a test decide what its surfaces say.
class WrappedPlatform : public std::enable_shared_from_this<WrappedPlatform>, public Platform {
public:
    static std::shared_ptr<WrappedPlatform> use() {
        NSApplication::useHeadlessPlatform();
        auto wrapped = std::make_shared<WrappedPlatform>();
        wrapped->m_Real = runningPlatform();
        replacePlatform(wrapped);
        return wrapped;
    }
    /// Brings the platform back that was there before.
    void giveBack() { replacePlatform(m_Real); }

    std::atomic<bool> takesFrames{true};
    std::function<std::unique_ptr<RefreshSource>()> makeSource;

    const char* name() const override { return m_Real->name(); }
    GLDriver& gl() override { return m_Real->gl(); }
    std::vector<DisplayInfo> displays() override { return m_Real->displays(); }
    std::unique_ptr<WindowBackend> makeWindow(CGRect frame, WindowStyle style) override {
        return m_Real->makeWindow(frame, style);
    }
    std::unique_ptr<WindowBackend> adoptWindow(const NativeWindow& native) override {
        return m_Real->adoptWindow(native);
    }
    std::unique_ptr<vx::Surface> makeSurface(GLDriver::Handle config, WindowBackend* window,
                                             CGRect frame) override {
        return std::make_unique<Surface>(shared_from_this(), m_Real->makeSurface(config, window, frame));
    }
    bool drawsWithoutWindow() const override { return true; }
    int presentAlert(const AlertContents& contents) override { return m_Real->presentAlert(contents); }
    void handleEvents(double seconds) override { m_Real->handleEvents(seconds); }
    void wake() override { m_Real->wake(); }
    bool plugDisplay(const std::string& name, CGRect bounds, double refreshRate) override {
        return m_Real->plugDisplay(name, bounds, refreshRate);
    }
    bool unplugDisplay(const std::string& name) override { return m_Real->unplugDisplay(name); }

private:
    class Surface : public vx::Surface {
    public:
        Surface(std::shared_ptr<WrappedPlatform> platform, std::unique_ptr<vx::Surface> real)
            : m_Platform(std::move(platform)), m_Real(std::move(real)) {}
        GLDriver::Handle handle() const override { return m_Real->handle(); }
        const WindowBackend* window() const override { return m_Real->window(); }
        void follow(CGRect frame) override { m_Real->follow(frame); }
        DisplayInfo display() const override { return m_Real->display(); }
        std::unique_ptr<RefreshSource> makeRefreshSource() const override {
            return m_Platform->makeSource ? m_Platform->makeSource() : nullptr;
        }
        bool takesFrame() override { return m_Platform->takesFrames; }

    private:
        std::shared_ptr<WrappedPlatform> m_Platform;
        std::unique_ptr<vx::Surface> m_Real;
    };

    std::shared_ptr<Platform> m_Real;
};

} // namespace vx::test
