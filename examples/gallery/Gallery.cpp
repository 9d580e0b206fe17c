// SPDX-License-Identifier: MIT
#include <examples/gallery/Gallery.h>

#include <VX_OpenGL64/host/VX_GLMainView.h>

#include <epoxy/gl.h>

#include <utility>

Gallery::Gallery(int scene, bool showsText) : m_ShowsText(showsText) {
    m_Input.scene = scene;
}

void Gallery::show(int scene) {
    const std::lock_guard guard(m_InputLock);
    m_Input.scene = scene;
}

void Gallery::press(unsigned key) {
    const std::lock_guard guard(m_InputLock);
    m_Input.keys.push_back(key);
}

void Gallery::moveMouse(const glm::vec2& place) {
    const std::lock_guard guard(m_InputLock);
    m_Input.mouse = place;
}

Gallery::Input Gallery::takeInput() {
    const std::lock_guard guard(m_InputLock);
    Input input = m_Input;
    m_Input.keys.clear();
    return input;
}

void Gallery::callBackRender() {
    const Input input = takeInput();
    if (input.scene != m_Number)
        startScene(input.scene);
    m_Scene->setMouse(input.mouse);
    for (const unsigned key : input.keys)
        takeKey(key);
    m_Scene->callBackRender();
}

// Each scene finds GL as a new context has it.
void Gallery::startScene(int number) {
    stopScene();
    m_Number = number;
    m_Scene = NSInit(scenes()[static_cast<std::size_t>(number)].make());
    m_Scene->setTargetGLView(m_TargetGLView);
    glPushClientAttrib(GL_CLIENT_ALL_ATTRIB_BITS);
    glPushAttrib(GL_ALL_ATTRIB_BITS);
    m_Scene->doStartRender();
}

void Gallery::stopScene() {
    if (!m_Scene)
        return;
    m_Scene->doStopRender();
    m_Scene = nullptr;
    m_Number = -1;
    glUseProgram(0);
    glPopAttrib();
    glPopClientAttrib();
    for (const GLenum matrix : {GL_TEXTURE, GL_PROJECTION, GL_MODELVIEW}) {
        glMatrixMode(matrix);
        glLoadIdentity();
    }
}

void Gallery::takeKey(unsigned key) {
    if (key == 'g')
        m_ShowsGraph = !m_ShowsGraph;
    else if (key == 'h')
        m_ShowsText = !m_ShowsText;
    else
        m_Scene->takeKey(key);
}

void Gallery::renderPipeline(CGRect* bounds) {
    m_Scene->renderPipeline(bounds);
    drawOverlay(static_cast<int>(bounds->size.width), static_cast<int>(bounds->size.height));
}

void Gallery::drawOverlay(int width, int height) {
    m_Graph.noteFrame();
    if (m_ShowsText)
        m_Overlay.drawTitle(scenes()[static_cast<std::size_t>(m_Number)].title, m_Scene->keys(), width,
                            height);
    if (m_ShowsGraph)
        m_Graph.draw(m_TargetGLView, width, height);
    m_Overlay.drawFailures(m_Scene->failures(), width, height);
}

void Gallery::renderSubPipeline(CGRect* bounds, VX_GLSharedView* view) {
    m_Scene->renderSubPipeline(bounds, view);
}

void Gallery::afterGLFlushBuffer(const CVTimeStamp* time) {
    m_Scene->afterGLFlushBuffer(time);
}

void Gallery::doStopRender() {
    stopScene();
    m_Overlay.clear();
    m_Graph.clear();
    VX_GLRenderpipeline::doStopRender();
}
