// SPDX-License-Identifier: MIT
#pragma once

#include <examples/gallery/FrameGraph.h>
#include <examples/gallery/Overlay.h>
#include <examples/gallery/Scenes.h>

#include <VX_Platform/Foundation/NSObject.h>

#include <mutex>
#include <vector>

/// Runs one of the scenes and changes it between two frames.
class Gallery : public VX_GLRenderpipeline {
public:
    /// `scene` is a place in `scenes`.
    Gallery(int scene, bool showsText);

    /// From the next frame on. Any thread.
    void show(int scene);
    /// G, H and the scene's keys. Any thread.
    void press(unsigned key);
    /// As for `Scene::setMouse`. Any thread.
    void moveMouse(const glm::vec2& place);

    void callBackRender() override;
    void renderPipeline(CGRect* bounds) override;
    void renderSubPipeline(CGRect* bounds, VX_GLSharedView* view) override;
    void afterGLFlushBuffer(const CVTimeStamp* time) override;
    void doStopRender() override;

private:
    struct Input {
        int scene = 0;
        glm::vec2 mouse{0.5f, 0.5f};
        std::vector<unsigned> keys;
    };
    Input takeInput();
    void startScene(int number);
    void stopScene();
    void takeKey(unsigned key);
    void drawOverlay(int width, int height);

    std::mutex m_InputLock;
    Input m_Input;
    NSRef<Scene> m_Scene;
    int m_Number = -1;
    bool m_ShowsText;
    bool m_ShowsGraph = false;
    Overlay m_Overlay;
    FrameGraph m_Graph;
};
