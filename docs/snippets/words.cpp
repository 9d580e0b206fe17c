// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/VX_OpenGL64.h>

#include <epoxy/gl.h>

#include <memory>

// Drawn anew whenever it is told to: any text, lines and fills, in 2D.
class Gauge : public VX_GLDynamicTexture {
public:
    Gauge() : VX_GLDynamicTexture(240, 60) {}
    double m_Value = 0.0;

private:
    void Draw() override { // the origin is at the top left
        NSColor::colorWithDeviceRed(0.9, 0.5, 0.2, 1.0)->set();
        NSRectFill(CGRectMake(0, 40, 240 * m_Value, 20));
        const auto attributes = NSInit(new NSMutableDictionary);
        attributes->setObject(NSColor::whiteColor(), NSForegroundColorAttributeName);
        NSString* words = NSString::stringWithFormat("%.0f per cent", 100 * m_Value);
        NSInit(new NSAttributedString, words, attributes.get())->drawAtPoint({4, 10});
    }
};

class WordsPipeline : public VX_GLRenderpipeline {
    void doStartRender() override {
        const auto maker = NSInit(new VX_GLTagBoardMaker); // its font is Arial Black, or what comes nearest
        m_Title = maker->renderText(NSString::stringWithUTF8String("Γειά, سلام, नमस्ते, 今日は"), 32.0f,
                                    NSColor::whiteColor());
        m_Gauge = std::make_unique<Gauge>();
    }
    void doStopRender() override {
        VX_GLTagTexture::Release(m_Title); // null where there is no font at all
        m_Title = nullptr;
        m_Gauge.reset();
        VX_GLRenderpipeline::doStopRender();
    }
    void renderPipeline(CGRect* bounds) override {
        const float width = float(bounds->size.width), height = float(bounds->size.height);
        const double time = m_TargetGLView->GetFrameTime();
        m_Gauge->m_Value = time - int(time);
        m_Gauge->UpdateRectangleTexture();

        glViewport(0, 0, int(width), int(height));
        glClearColor(0.1f, 0.2f, 0.3f, 1.0f);
        glClear(GL_COLOR_BUFFER_BIT);
        glMatrixMode(GL_PROJECTION);
        glLoadIdentity();
        glOrtho(0.0, width, 0.0, height, -1.0, 1.0); // one unit is one pixel
        glEnable(GL_BLEND);
        glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
        if (m_Title) // around its middle, as wide as it was made
            m_Title->RenderRH_W({width / 2, height * 0.6f, 0.0f}, float(m_Title->contentSize().width));
        glMatrixMode(GL_PROJECTION); // a tag leaves GL_TEXTURE
        m_Gauge->RenderRH_W3({20.0f, 20.0f, 0.0f}, 240.0f);
    }
    VX_GLTagTexture* m_Title = nullptr;
    std::unique_ptr<Gauge> m_Gauge;
};

int main() {
    const auto pipeline = NSInit(new WordsPipeline);
    const auto host = VX_GLHost::open(pipeline.get(), {.title = "Words"});
    return host ? host->run() : 1;
}
