// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/VX_OpenGL64.h>

#include <epoxy/gl.h>

#include <atomic>
#include <memory>

class RipplePipeline : public VX_GLRenderpipeline {
public:
    // Written by events on the main thread, read by frames on another one.
    std::atomic<float> m_X{320.0f}, m_Y{180.0f};

private:
    void doStartRender() override {
        VX_VertexShader vertex;
        VX_FragmentShader fragment;
        m_Program = std::make_unique<VX_Program>();
        m_Works = vertex.loadAndCompile(
                      "#version 120\n"
                      "void main() { gl_Position = ftransform(); }\n") &&
                  fragment.loadAndCompile(
                      "#version 120\n"
                      "uniform vec2 pointer;\n"
                      "uniform float time;\n"
                      "void main() {\n"
                      "    float away = distance(gl_FragCoord.xy, pointer);\n"
                      "    float wave = 0.5 + 0.5 * sin(away * 0.15 - time * 6.0);\n"
                      "    float fade = exp(-away * 0.006);\n"
                      "    vec3 ring = vec3(0.9, 0.6, 0.3) * wave * fade;\n"
                      "    gl_FragColor = vec4(vec3(0.05, 0.1, 0.2) + ring, 1.0);\n"
                      "}\n") &&
                  m_Program->attachShader(&vertex, &fragment, false);
    }
    void doStopRender() override {
        m_Program.reset();
        VX_GLRenderpipeline::doStopRender();
    }
    void renderPipeline(CGRect* bounds) override {
        glViewport(0, 0, int(bounds->size.width), int(bounds->size.height));
        if (!m_Works) // the log has said why
            return;
        m_Program->activeProgram();
        m_Program->set2f("pointer", m_X, float(bounds->size.height) - m_Y); // GL counts upward
        m_Program->set1f("time", float(m_TargetGLView->GetFrameTime()));
        glRectf(-1.0f, -1.0f, 1.0f, 1.0f);
        m_Program->deactiveProgram();
    }
    std::unique_ptr<VX_Program> m_Program;
    bool m_Works = false;
};

int main() {
    const auto pipeline = NSInit(new RipplePipeline);
    const auto host = VX_GLHost::open(pipeline.get(), {.title = "Ripples"});
    if (!host)
        return 1;
    host->window()->setEventHandler([&](NSEvent* event) {
        if (event->type() == NSMouseMoved || event->type() == NSLeftMouseDragged) {
            pipeline->m_X = float(event->locationInWindow().x);
            pipeline->m_Y = float(event->locationInWindow().y);
        }
        return false;
    });
    return host->run();
}
