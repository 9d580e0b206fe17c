// SPDX-License-Identifier: MIT
#include <examples/gallery/Passes.h>

#include <VX_OpenGL64/shaders/VX_GLFilterManager.h>
#include <VX_OpenGL64/targets/VX_GLRenderTarget.h>

#include <epoxy/gl.h>

#include <utility>

Passes::Passes(VX_GLFilterManager* manager, Rows rows, int textures, unsigned format,
               GeometryRows geometryRows)
    : VX_GLFilter(manager),
      m_Rows(std::move(rows)),
      m_GeometryRows(std::move(geometryRows)),
      m_Textures(textures),
      m_Format(format) {
    m_Rows.push_back({nullptr, nullptr});
    m_GeometryRows.push_back({nullptr, nullptr, nullptr, 0, 0, 0});
    if (textures > 0)
        m_RenderTarget = new VX_GLRenderTarget;
}

bool Passes::fit(int width, int height) {
    const bool isOther = width != m_Width || height != m_Height;
    m_Width = width;
    m_Height = height;
    if (!std::exchange(m_IsSetUp, true))
        m_Manager->SetupFilter(this, width, height, m_Format, GL_UNSIGNED_BYTE);
    else if (m_Textures > 0 && isOther)
        makeTextures();
    if (m_Textures > 0 && isOther)
        clearTextures();
    return m_Programs.size() + 2 == m_Rows.size() + m_GeometryRows.size();
}

void Passes::makeTextures() {
    SetResolution(m_Width, m_Height);
    for (int i = 0; i < m_Textures; ++i)
        CreateRT(m_Format, GL_UNSIGNED_BYTE, -1, -1);
}

void Passes::clearTextures() {
    glClearColor(0.0f, 0.0f, 0.0f, 0.0f);
    for (int i = 0; i < m_Textures; ++i) {
        Bind(i);
        glClear(GL_COLOR_BUFFER_BIT);
    }
    Unbind();
}

VX_Program* Passes::use(int row) {
    VX_Program* const program = m_Programs[static_cast<std::size_t>(row)];
    program->activeProgram();
    program->set1i("texture0", 0);
    program->set1i("texture1", 1);
    program->set1i("texture2", 2);
    program->set1i("texture3", 3);
    program->set2f("size", static_cast<float>(m_Width), static_cast<float>(m_Height));
    return program;
}

void Passes::read(int unit, int index) {
    glActiveTexture(GL_TEXTURE0 + static_cast<unsigned>(unit));
    glBindTexture(GL_TEXTURE_RECTANGLE_ARB, GetRTexture(index));
    glActiveTexture(GL_TEXTURE0);
}

void Passes::drawOver() {
    const float width = static_cast<float>(m_Width), height = static_cast<float>(m_Height);
    glBegin(GL_TRIANGLE_STRIP);
    for (const auto& [x, y] : {std::pair(-1.0f, -1.0f), {1.0f, -1.0f}, {-1.0f, 1.0f}, {1.0f, 1.0f}}) {
        glTexCoord2f(0.5f * (x + 1.0f) * width, 0.5f * (y + 1.0f) * height);
        glVertex2f(x, y);
    }
    glEnd();
}
