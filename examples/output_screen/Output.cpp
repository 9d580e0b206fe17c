// SPDX-License-Identifier: MIT
#include <examples/output_screen/Output.h>

#include <VX_Platform/AppKit/NSScreen.h>

namespace {

// Whoever closes the window on the display gets the view back in its own.
class DisplayWindow : public VX_GLFilledScreenWindow {
public:
    explicit DisplayWindow(std::function<void()> goBack) : m_GoBack(std::move(goBack)) {}
    bool windowShouldClose() override {
        m_GoBack();
        return false;
    }

private:
    std::function<void()> m_GoBack;
};

} // namespace

Output::Output(VX_GLHost& host, NSWindow::EventHandler keys)
    : m_View(host.view()), m_Home(NSRef<NSWindow>::retain(host.window())), m_Keys(std::move(keys)) {}

Output::~Output() {
    if (!m_Window)
        return;
    // The window's end ends the view, and leaves the view's reference to its pipeline to us.
    const auto pipeline = NSRef<VX_GLRenderpipeline>::adopt(m_View->renderpipeline());
    m_Window = nullptr;
}

void Output::makeWindow(CGRect frame) {
    const auto window = NSInit(new DisplayWindow([this] { goBack(); }), frame, NSBorderlessWindowMask);
    window->setEventHandler(m_Keys);
    m_Window = window;
    m_View->retain(); // the window releases it when it ends
}

void Output::moveTo(const NSScreen* display) {
    goBack();
    if (m_Window)
        m_Window->setFrame(display->frame());
    else
        makeWindow(display->frame());
    m_Window->attachGLViewWithPixelFormat(m_View, m_View->GetPixelFormatAttributes(),
                                          m_View->renderpipeline());
    m_Window->makeKeyAndOrderFront();
    m_IsOut = true;
}

void Output::goBack() {
    if (!m_IsOut)
        return;
    m_IsOut = false;
    m_Window->detachGLViewWithPixelFormat(m_View->GetPixelFormatAttributes());
    m_View->setFrame({{}, m_Home->frame().size}); // which may have another size by now
    m_Home->makeKeyAndOrderFront();               // the keyboard comes back as well
}
