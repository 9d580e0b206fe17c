// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vx {

/// What is told of a driver without the extension that has no GLSL 1.50 either.
inline constexpr const char* NoGeometryShaders = "the driver has no geometry shaders";

/// The program parameters of a geometry shader: GL primitive types, and the most vertices it emits.
struct GeometryLayout {
    int inputType;
    int outputType;
    int verticesOut;
};

/// Whether a geometry shader's text goes to a driver without GL_EXT_geometry_shader4 as it stands: it has the
/// word `layout` outside comments.
bool hasOwnLayout(std::string_view text);

/// Why a shader's layout cannot say these parameters; empty where it can.
std::string layoutFault(const GeometryLayout& layout);

/// The text for a driver without GL_EXT_geometry_shader4, with the parameters, which have no fault, as its
/// layout. A text in the extension's dialect becomes one of GLSL `version` of the compatibility profile; one
/// of
/// `#version 150` or higher gets the layout alone; one with its own layout stays as it is. Line numbers stay.
std::string adaptGeometryShader(std::string_view text, const GeometryLayout& layout, int version);

/// Texts of which one compiles if the shader has no fault but one that depends on parameters that are not
/// known yet, the likeliest first.
std::vector<std::string> geometryShaderDrafts(std::string_view text, int version);

} // namespace vx
