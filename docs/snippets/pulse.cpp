// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/VX_OpenGL64.h>

#include <epoxy/gl.h>

#include <cmath>

class PulsePipeline : public VX_GLRenderpipeline {
    void renderPipeline(CGRect*) override {
        const double time = m_TargetGLView->GetFrameTime();
        glClearColor(0.1f, 0.3f, float(0.5 + 0.4 * std::sin(3.0 * time)), 1.0f);
        glClear(GL_COLOR_BUFFER_BIT);
    }
};

int main() {
    const auto pipeline = NSInit(new PulsePipeline);
    const auto host = VX_GLHost::open(pipeline.get(), {.title = "Pulse", .width = 800, .height = 450});
    if (!host)
        return 1;
    host->window()->setEventHandler([&](NSEvent* event) {
        if (event->type() == NSKeyDown && event->key() == 'q')
            host->window()->performClose();
        return false; // the views see it as well
    });
    return host->run();
}
