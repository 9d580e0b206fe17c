// SPDX-License-Identifier: MIT
// A GLFW window: a picture of the toolkit's above a bar that the host draws with a context of GLFW's. A click
// on the bar gives the picture the bar's colour, left and right change the speed, V ends the view and makes
// it anew. `host_glfw 2` opens two windows.
#include <VX_OpenGL64/VX_OpenGL64.h>
#include <examples/hosts/support/HostScene.h>

#include <epoxy/gl.h>

#define GLFW_EXPOSE_NATIVE_X11
#include <GLFW/glfw3.h>
#include <GLFW/glfw3native.h> // behind the others: X11's macros take common words

#include <algorithm>
#include <memory>
#include <vector>

namespace {

constexpr int kBarHeight = 48;

class PictureWindow {
public:
    PictureWindow() {
        glfwSetWindowUserPointer(m_Window, this);
        glfwSetKeyCallback(m_Window, [](GLFWwindow* window, int key, int, int action, int) {
            if (action == GLFW_PRESS)
                of(window).press(key);
        });
        glfwSetMouseButtonCallback(m_Window, [](GLFWwindow* window, int, int action, int) {
            if (action == GLFW_PRESS)
                of(window).click();
        });
        openView();
    }
    ~PictureWindow() {
        m_View.reset(); // ahead of its window
        glfwDestroyWindow(m_Window);
    }
    bool isToClose() const { return glfwWindowShouldClose(m_Window); }

    void drawBar() {
        int width = 0;
        glfwGetFramebufferSize(m_Window, &width, nullptr);
        glfwMakeContextCurrent(m_Window);
        glfwSwapInterval(0); // the loop is not held up
        fill(0, 0, width, kBarHeight, m_Scene->nextGround());
        fill(width / 2 + m_Scene->speed() * width / 360 - 3, 8, 6, kBarHeight - 16, 0xffffff);
        glfwSwapBuffers(m_Window);
        glfwMakeContextCurrent(nullptr); // or the toolkit's contexts find none of their own in this thread
    }

private:
    static PictureWindow& of(GLFWwindow* window) {
        return *static_cast<PictureWindow*>(glfwGetWindowUserPointer(window));
    }
    static void fill(int x, int y, int width, int height, unsigned color) {
        glEnable(GL_SCISSOR_TEST);
        glScissor(x, y, width, height);
        glClearColor(float(color >> 16) / 255.0f, float(color >> 8 & 255) / 255.0f,
                     float(color & 255) / 255.0f, 1.0f);
        glClear(GL_COLOR_BUFFER_BIT);
    }
    void openView() {
        XSync(glfwGetX11Display(), False); // the server has to know the window by now
        m_View = VX_GLHost::open(m_Scene.get(), {.inside = vx::NativeWindow::x11(glfwGetX11Window(m_Window)),
                                                 .margins = {.bottom = kBarHeight}});
    }
    void press(int key) {
        if (key == GLFW_KEY_LEFT || key == GLFW_KEY_RIGHT)
            m_Scene->setSpeed(std::clamp(m_Scene->speed() + (key == GLFW_KEY_LEFT ? -20 : 20), -180, 180));
        else if (key == GLFW_KEY_V)
            m_View ? m_View.reset() : openView();
    }
    void click() {
        double y = 0;
        int height = 0;
        glfwGetCursorPos(m_Window, nullptr, &y);
        glfwGetWindowSize(m_Window, nullptr, &height);
        if (y >= height - kBarHeight)
            m_Scene->takeNextGround();
    }

    GLFWwindow* m_Window = glfwCreateWindow(640, 408, "GLFW", nullptr, nullptr);
    NSRef<HostScene> m_Scene = NSInit(new HostScene);
    std::unique_ptr<VX_GLHost> m_View;
};

} // namespace

int main(int count, char** words) {
#ifdef GLFW_PLATFORM_X11 // since 3.4; before that there is nothing else
    glfwInitHint(GLFW_PLATFORM, GLFW_PLATFORM_X11);
#endif
    glfwInit();
    std::vector<std::unique_ptr<PictureWindow>> windows(count > 1 && *words[1] == '2' ? 2 : 1);
    for (auto& window : windows)
        window = std::make_unique<PictureWindow>();
    while (!windows.empty()) {
        // Sizes, timers, notifications; frames come by themselves.
        glfwWaitEventsTimeout(0.02);
        NSApplication::sharedApplication()->runStep(0.0);
        std::erase_if(windows, [](const auto& window) { return window->isToClose(); });
        for (const auto& window : windows)
            window->drawBar();
    }
    glfwTerminate();
}
