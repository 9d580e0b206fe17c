// SPDX-License-Identifier: MIT
#pragma once

#include <VX_OpenGL64/shaders/VX_GLFilter.h>
#include <VX_OpenGL64/shaders/VX_Program.h>

#include <vector>

/// A filter that is told its programs and textures where it is made. With textures it has a render target
/// with depth of the picture's size. Needs the context throughout.
class Passes : public VX_GLFilter {
public:
    using Rows = std::vector<VX_GLShaderInformation>;
    using GeometryRows = std::vector<VX_GLGeometryShaderInformation>;

    /// `format` is that of the textures (GL_RGBA8, GL_RGBA16F_ARB); they are rectangle textures.
    Passes(VX_GLFilterManager* manager, Rows rows, int textures = 0, unsigned format = 0x8058,
           GeometryRows geometryRows = {});

    const VX_GLShaderInformation* ShadersInformation() override { return m_Rows.data(); }
    const VX_GLGeometryShaderInformation* GeometryShadersInformation() override {
        return m_GeometryRows.data();
    }
    bool NeedFrameBuffer() override { return m_Textures > 0; }
    int GetMinRTCount() override { return m_Textures; }

    /// At the beginning of each frame: the textures follow the picture's size. Whether all programs are
    /// there, which they are not when a shader was wrong from the start. The textures are black after a
    /// change of size.
    bool fit(int width, int height);
    /// The program of that row, now the current one, its "texture0" to "texture3" reading texture units 0 to
    /// 3 and its "size" the pixels of the picture; geometry rows count after the others.
    VX_Program* use(int row);
    /// Texture `index`, for the unit.
    void read(int unit, int index);
    /// Draws with the current program over the whole of the texture that is bound, or of the screen.
    void drawOver();

private:
    void makeTextures();
    void clearTextures();

    Rows m_Rows;
    GeometryRows m_GeometryRows;
    int m_Textures;
    unsigned m_Format;
    bool m_IsSetUp = false;
    int m_Width = 0;
    int m_Height = 0;
};
