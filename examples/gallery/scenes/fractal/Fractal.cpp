// SPDX-License-Identifier: MIT
// One program over the whole picture: a fractal, each pixel by itself.
#include <examples/gallery/Passes.h>
#include <examples/gallery/Scene.h>

#include <epoxy/gl.h>

namespace fractal {

class Fractal : public Scene {
public:
    Fractal() : Scene("fractal") {}

    void doStartRender() override {
        openShaders();
        m_Passes = std::make_unique<Passes>(m_Shaders.get(), Passes::Rows{{"fractal.vert", "fractal.frag"}});
    }
    void doStopRender() override {
        m_Passes.reset();
        Scene::doStopRender();
    }
    void renderPipeline(CGRect* bounds) override {
        beginFrame(bounds);
        if (!m_Passes->fit(m_Width, m_Height))
            return;
        VX_Program* const program = m_Passes->use(0);
        program->set1f("time", time());
        program->set2f("mouse", m_Mouse.x, m_Mouse.y);
        m_Passes->drawOver();
        program->deactiveProgram();
    }
    std::vector<std::string> keys() const override { return {"Mouse: another shape, and nearer"}; }

private:
    std::unique_ptr<Passes> m_Passes;
};

} // namespace fractal

Scene* makeFractal() {
    return new fractal::Fractal;
}
