// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/shaders/VX_GeometryShader.h>

#include <VX_OpenGL64/shaders/private/GeometryDialect.h>
#include <VX_OpenGL64/shaders/private/ShaderObject.h>
#include <VX_Platform/OpenGL/GLCapabilities.h>
#include <VX_Platform/OpenGL/private/CurrentContext.h>

#include <epoxy/gl.h>

#include <algorithm>
#include <cstdio>
#include <iterator>

namespace {

constexpr const char* ClassName = "VX_GeometryShader";

void printFailure(const char* line) {
    std::printf("%s\n", line);
    std::fflush(stdout);
}

/// The GLSL that a text in the dialect becomes.
int versionOf(const vx::GLCapabilities& driver) {
    return driver.glsl330 ? 330 : 150;
}

/// The first of the texts that compiles; 0 where none does, with what the driver has the least against in
/// `failure`.
GLuint compileAny(const std::vector<std::string>& texts, std::string& failure) {
    const auto remarks = [](const std::string& log) { return std::count(log.begin(), log.end(), '\n'); };
    std::vector<std::string> logs;
    for (const std::string& text : texts) {
        if (const GLuint shader =
                vx::compileText(GL_GEOMETRY_SHADER_EXT, text.c_str(), logs.emplace_back())) {
            failure.clear();
            return shader;
        }
    }
    failure = *std::min_element(logs.begin(), logs.end(), [&](const std::string& a, const std::string& b) {
        return remarks(a) < remarks(b);
    });
    return 0;
}

} // namespace

VX_GeometryShader::~VX_GeometryShader() {
    freeShader();
}

bool VX_GeometryShader::loadAndCompile(const char* source) {
    VX_NEEDS_CONTEXT();
    freeVariants();
    m_Source.clear();
    const vx::GLCapabilities& driver = vx::currentGLCapabilities();
    const bool isAdapted = !driver.geometryShader4 && !vx::hasOwnLayout(source);
    m_Failure = vx::NoGeometryShaders;
    m_Shader = !driver.geometryShaders ? 0
               : isAdapted ? compileAny(vx::geometryShaderDrafts(source, versionOf(driver)), m_Failure)
                           : compileAny({source}, m_Failure);
    if (m_Shader && isAdapted)
        m_Source = source;
    if (!m_Shader)
        printFailure((std::string(ClassName) + "::loadAndCompile Failed: " + m_Failure).c_str());
    return m_Shader != 0;
}

void VX_GeometryShader::freeShader() {
    freeVariants();
    m_Source.clear();
    vx::deleteShader(m_Shader, ClassName);
}

void VX_GeometryShader::freeVariants() {
    for (auto each = m_Variants.begin(); each != m_Variants.end();) {
        vx::deleteShader(each->second, ClassName);
        each = each->second ? std::next(each) : m_Variants.erase(each);
    }
}

unsigned int VX_GeometryShader::shaderFor(const std::array<int, 3>& parameters, std::string& failure) {
    if (m_Source.empty())
        return m_Shader;
    if (const auto made = m_Variants.find(parameters); made != m_Variants.end())
        return made->second;
    const vx::GeometryLayout layout{parameters[0], parameters[1], parameters[2]};
    failure = vx::layoutFault(layout);
    if (!failure.empty())
        return 0;
    const std::string text =
        vx::adaptGeometryShader(m_Source, layout, versionOf(vx::currentGLCapabilities()));
    const GLuint shader = vx::compileText(GL_GEOMETRY_SHADER_EXT, text.c_str(), failure);
    if (shader)
        m_Variants.emplace(parameters, shader);
    return shader;
}

int VX_GeometryShader::GetMaxVertices() {
    VX_NEEDS_CONTEXT();
    if (!vx::currentGLCapabilities().geometryShaders)
        return 0;
    GLint vertices = 0;
    glGetIntegerv(GL_MAX_GEOMETRY_OUTPUT_VERTICES_EXT, &vertices);
    return vertices;
}
