// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/VX_OpenGL64.h>

#include <epoxy/gl.h>

#include <memory>

class SepiaFilter : public VX_GLFilter {
public:
    explicit SepiaFilter(VX_GLFilterManager* manager) : VX_GLFilter(manager) {
        m_RenderTarget = new VX_GLRenderTarget; // the filter's from now on
    }
    const VX_GLShaderInformation* ShadersInformation() override {
        static const VX_GLShaderInformation table[] = {{"sepia.vert", "sepia.frag"}, {nullptr, nullptr}};
        return table;
    }
    bool works() const { return m_Programs.size() == 1; } // a program that failed is not in the list

    void draw(float strength) {
        m_RenderTarget->SetDefaultProjection(); // one unit is one pixel
        m_Programs[0]->activeProgram();
        m_Programs[0]->set1i("scene", 0);
        m_Programs[0]->set1f("strength", strength);
        DrawFullScreen(0);
        m_Programs[0]->deactiveProgram();
    }
};

class SepiaPipeline : public VX_GLRenderpipeline {
    void doStartRender() override {
        m_Manager = std::make_unique<VX_GLFilterManager>();
        m_Manager->AddResourcePath("docs/snippets");
        m_Manager->WatchShaderFiles(true); // a file that is saved takes effect at once
        m_Filter = std::make_unique<SepiaFilter>(m_Manager.get());
        m_Manager->SetupFilter(m_Filter.get(), 640, 360, GL_RGBA8, GL_UNSIGNED_BYTE);
    }
    void doStopRender() override { // the context is current, and GL objects need it
        m_Filter.reset();
        m_Manager.reset();
    }
    void renderPipeline(CGRect*) override {
        m_Manager->RebuildChangedPrograms();
        if (!m_Filter->works())
            return;
        m_Filter->Bind(0); // from here on into the filter's texture 0
        glClearColor(0.2f, 0.5f, 0.9f, 1.0f);
        glClear(GL_COLOR_BUFFER_BIT);
        m_Filter->Unbind(); // from here on to the screen
        m_Filter->draw(1.0f);
    }
    std::unique_ptr<VX_GLFilterManager> m_Manager;
    std::unique_ptr<SepiaFilter> m_Filter;
};

int main() {
    const auto pipeline = NSInit(new SepiaPipeline);
    const auto host = VX_GLHost::open(pipeline.get(), {.title = "Sepia", .resizable = false});
    return host ? host->run() : 1;
}
