// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/shaders/VX_GLFilterManager.h>

#include <VX_OpenGL64/shaders/VX_FragmentShader.h>
#include <VX_OpenGL64/shaders/VX_GLFilter.h>
#include <VX_OpenGL64/shaders/VX_GeometryShader.h>
#include <VX_OpenGL64/shaders/VX_VertexShader.h>
#include <VX_Platform/AppKit/NSAlert.h>
#include <VX_Platform/Foundation/NSFileManager.h>
#include <VX_Platform/Foundation/NSLog.h>
#include <VX_Platform/Foundation/NSString.h>

#include <utility>

namespace {

template <class Shader>
Shader* compiled(const char* source) {
    auto* shader = new Shader;
    if (shader->loadAndCompile(source))
        return shader;
    delete shader;
    return nullptr;
}

template <class Cache>
auto found(const Cache& cache, const char* fileName) {
    const auto entry = cache.find(fileName);
    return entry == cache.end() ? nullptr : entry->second;
}

std::string textOf(VX_GLFilterManager& manager, const char* fileName) {
    std::string source = manager.LoadShaderFileToString(fileName);
    if (source.empty())
        NSLog("Can't open shader file: %s", fileName);
    return source;
}

/// The cached shader, else the one compiled from the file; a failure is logged unless `kind` is null.
template <class Shader>
Shader* shaderOf(VX_GLFilterManager& manager, std::map<std::string, Shader*, std::less<>>& cache,
                 const char* fileName, const char* kind) {
    if (Shader* shader = found(cache, fileName))
        return shader;
    Shader* shader = compiled<Shader>(textOf(manager, fileName).c_str());
    if (shader)
        cache.emplace(fileName, shader);
    else if (kind)
        NSLog("Failed %s: %s", kind, fileName);
    return shader;
}

NSString* pathText(const std::string& path) {
    return NSString::stringWithCString(path.c_str(), NSUTF8StringEncoding);
}

} // namespace

VX_GLFilterManager::~VX_GLFilterManager() {
    for (const auto& [name, shader] : m_VShaders)
        delete shader;
    m_VShaders.clear();
    for (const auto& [name, shader] : m_PShaders)
        delete shader;
    m_PShaders.clear();
    m_GShaders.clear(); // without deleting them: docs/kept-behaviour.md
}

bool VX_GLFilterManager::SetResolution(int width, int height) {
    m_Width = width;
    m_Height = height;
    return true;
}

void VX_GLFilterManager::AddResourcePath(const char* directory) {
    m_ResourcePaths.push_back(std::string(directory) + "/");
}

std::string VX_GLFilterManager::QueryShaderPath(std::string fileName) {
    for (const std::string& directory : m_ResourcePaths) {
        std::string candidate = directory + fileName;
        if (NSFileManager::defaultManager()->fileExistsAtPath(pathText(candidate)))
            return candidate;
    }
    NSAlert::alertWithMessageText(NSString::stringWithUTF8String("Can't load shader"),
                                  NSString::stringWithUTF8String("OK"), nullptr, nullptr, "%@",
                                  NSString::stringWithFormat("%s", fileName.c_str()))
        ->runModal();
    return {};
}

std::string VX_GLFilterManager::LoadShaderFileToString(const char* fileName) {
    const std::string path = QueryShaderPath(fileName);
    NSString* text = NSString::stringWithContentsOfFile(pathText(path), NSUTF8StringEncoding, nullptr);
    // The alert was the one warning: docs/kept-behaviour.md.
    if (!text)
        vx::fatal("VX_GLFilterManager::LoadShaderFileToString: no UTF-8 text in file \"%s\" (path \"%s\")",
                  fileName, path.c_str());
    return text->UTF8String();
}

VX_VertexShader* VX_GLFilterManager::CreateVShader(const char* source) {
    return compiled<VX_VertexShader>(source);
}

VX_FragmentShader* VX_GLFilterManager::CreatePShader(const char* source) {
    return compiled<VX_FragmentShader>(source);
}

VX_GeometryShader* VX_GLFilterManager::CreateGShader(const char* source) {
    return compiled<VX_GeometryShader>(source);
}

VX_VertexShader* VX_GLFilterManager::QueryVShader(const char* fileName) {
    return found(m_VShaders, fileName);
}

VX_FragmentShader* VX_GLFilterManager::QueryPShader(const char* fileName) {
    return found(m_PShaders, fileName);
}

VX_GeometryShader* VX_GLFilterManager::QueryGShader(const char* fileName) {
    return found(m_GShaders, fileName);
}

void VX_GLFilterManager::RegisterVShader(const char* fileName, VX_VertexShader* shader) {
    m_VShaders.emplace(fileName, shader);
}

void VX_GLFilterManager::RegisterPShader(const char* fileName, VX_FragmentShader* shader) {
    m_PShaders.emplace(fileName, shader);
}

void VX_GLFilterManager::RegisterGShader(const char* fileName, VX_GeometryShader* shader) {
    m_GShaders.emplace(fileName, shader);
}

VX_GLFilter* VX_GLFilterManager::SetupFilter(VX_GLFilter* filter, int width, int height,
                                             unsigned int internalFormat, unsigned int type) {
    if (filter->NeedFrameBuffer())
        setUpRenderTarget(*filter, width, height, internalFormat, type);

    const VX_GLShaderInformation* row = filter->ShadersInformation();
    for (; row && row->vertexShader && row->fragmentShader; ++row) {
        VX_VertexShader* vertex = shaderOf(*this, m_VShaders, row->vertexShader, "vshader");
        VX_FragmentShader* fragment = shaderOf(*this, m_PShaders, row->fragmentShader, "pshader");
        filter->CreateProgram(vertex, fragment, nullptr, 0, 0, 0);
    }

    const VX_GLGeometryShaderInformation* stages = filter->GeometryShadersInformation();
    for (; stages && stages->vertexShader && stages->fragmentShader && stages->geometryShader; ++stages) {
        VX_VertexShader* vertex = shaderOf(*this, m_VShaders, stages->vertexShader, "vshader");
        VX_FragmentShader* fragment = shaderOf(*this, m_PShaders, stages->fragmentShader, "pshader");
        VX_GeometryShader* geometry = shaderOf(*this, m_GShaders, stages->geometryShader, nullptr);
        filter->CreateProgram(vertex, fragment, geometry, stages->inputType, stages->outputType,
                              stages->verticesOut);
    }
    return filter->Setup() ? filter : nullptr;
}

void VX_GLFilterManager::setUpRenderTarget(VX_GLFilter& filter, int width, int height,
                                           unsigned int internalFormat, unsigned int type) {
    if (width >= 1 && height >= 1)
        filter.SetResolution(width, height);
    else
        filter.SetResolution(m_Width, m_Height);
    const int count = filter.GetMinRTCount();
    for (int index = 0; index < count; ++index) {
        if (filter.IsRT2D())
            filter.Create2DRT(internalFormat, type, -1, -1);
        else
            filter.CreateRT(internalFormat, type, -1, -1);
    }
}

VX_Program* VX_GLFilterManager::MakeProgramForFilter(VX_GLFilter* filter, const char* vertexSource,
                                                     const char* fragmentSource) {
    VX_VertexShader* vertex = CreateVShader(vertexSource);
    VX_FragmentShader* fragment = CreatePShader(fragmentSource);
    return filter->CreateProgram(vertex, fragment, nullptr, 0, 0, 0);
}
