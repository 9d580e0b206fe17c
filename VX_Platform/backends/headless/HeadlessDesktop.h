// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/backends/FillingWindow.h>

#include <mutex>

namespace vx {

class HeadlessWindow;

/// What a window system would keep: displays, windows in their order from back to front, and which of them
/// has the keyboard. Told of on the main thread, asked from any.
class HeadlessDesktop {
public:
    explicit HeadlessDesktop(PlatformEvents& events) : m_Events(events) {}

    bool plug(const std::string& name, CGRect bounds, double refreshRate);
    bool unplug(const std::string& name);
    std::vector<DisplayInfo> displays() const;
    /// The display that shows the window; the first for a window that is not there.
    DisplayInfo displayOf(const WindowBackend* window) const;

    void add(HeadlessWindow* window, CGRect frame);
    void remove(HeadlessWindow* window);
    void move(HeadlessWindow* window, CGRect frame);
    CGRect frameOf(const HeadlessWindow* window) const;
    /// In front of the others, and with the keyboard if that is wanted.
    void raise(HeadlessWindow* window, bool withKeyboard);
    /// The keyboard goes to the frontmost of the windows that are still shown.
    void lower(HeadlessWindow* window);

private:
    struct Entry {
        HeadlessWindow* window;
        CGRect frame;
        bool shown;
    };

    Entry* entryOf(const WindowBackend* window);
    const Entry* entryOf(const WindowBackend* window) const;
    HeadlessWindow* frontmost() const;
    void moveKeyTo(HeadlessWindow* window);

    PlatformEvents& m_Events;
    mutable std::mutex m_Lock;
    std::vector<DisplayInfo> m_Displays;
    std::vector<Entry> m_Windows;
    HeadlessWindow* m_Key = nullptr;
};

/// A window of that desktop.
class HeadlessWindow : public FillingWindow {
public:
    HeadlessWindow(std::shared_ptr<HeadlessDesktop> desktop, CGRect frame);
    ~HeadlessWindow() override;

    void setTitle(const char*) override {}
    void setFrame(CGRect frame) override { m_Desktop->move(this, frame); }
    CGRect frame() const override { return m_Desktop->frameOf(this); }
    bool show(bool withKeyboard) override {
        m_Desktop->raise(this, withKeyboard);
        return true;
    }
    void hide() override { m_Desktop->lower(this); }
    void setStyle(WindowStyle) override {}
    NativeWindow nativeWindow() const override { return {}; }

private:
    std::vector<DisplayInfo> displays() const override { return m_Desktop->displays(); }

    std::shared_ptr<HeadlessDesktop> m_Desktop;
};

} // namespace vx
