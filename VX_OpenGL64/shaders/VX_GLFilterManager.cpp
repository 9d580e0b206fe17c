// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/shaders/VX_GLFilterManager.h>

#include <VX_OpenGL64/shaders/VX_FragmentShader.h>
#include <VX_OpenGL64/shaders/VX_GLFilter.h>
#include <VX_OpenGL64/shaders/VX_GeometryShader.h>
#include <VX_OpenGL64/shaders/VX_VertexShader.h>
#include <VX_OpenGL64/shaders/private/LiveShaders.h>
#include <VX_OpenGL64/shaders/private/ShaderFailure.h>
#include <VX_Platform/AppKit/NSAlert.h>
#include <VX_Platform/Foundation/NSFileManager.h>
#include <VX_Platform/Foundation/NSLog.h>
#include <VX_Platform/Foundation/NSString.h>
#include <VX_Platform/Foundation/VX_Diagnostics.h>
#include <VX_Platform/OpenGL/NSOpenGLContext.h>
#include <VX_Platform/OpenGL/private/CurrentContext.h>

#include <system_error>
#include <utility>

namespace {

template <class Shader>
Shader* compiled(const char* source, std::string* failure = nullptr) {
    auto* shader = new Shader;
    if (shader->loadAndCompile(source))
        return shader;
    if (failure)
        *failure = shader->failure();
    delete shader;
    return nullptr;
}

template <class Cache>
auto found(const Cache& cache, const char* fileName) {
    const auto entry = cache.find(fileName);
    return entry == cache.end() ? nullptr : entry->second;
}

std::string joined(const std::vector<std::string>& words) {
    std::string text;
    for (const std::string& word : words)
        text += (text.empty() ? "" : ", ") + word;
    return text;
}

NSString* pathText(const std::string& path) {
    return NSString::stringWithCString(path.c_str(), NSUTF8StringEncoding);
}

} // namespace

VX_GLFilterManager::VX_GLFilterManager() = default;

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

std::string VX_GLFilterManager::foundPath(const std::string& fileName) const {
    for (const std::string& directory : m_ResourcePaths) {
        std::string candidate = directory + fileName;
        if (NSFileManager::defaultManager()->fileExistsAtPath(pathText(candidate)))
            return candidate;
    }
    return {};
}

std::string VX_GLFilterManager::QueryShaderPath(std::string fileName) {
    if (std::string path = foundPath(fileName); !path.empty())
        return path;
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
    if (!text && path.empty())
        vx::fatal(
            m_ResourcePaths.empty()
                ? "VX_GLFilterManager::LoadShaderFileToString: no directory to look for \"%s\" in; call "
                  "AddResourcePath first"
                : "VX_GLFilterManager::LoadShaderFileToString: no file \"%s\" in %s",
            fileName, joined(m_ResourcePaths).c_str());
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
    m_Failures.clear();
    checkShareGroup();
    if (filter->NeedFrameBuffer())
        setUpRenderTarget(*filter, width, height, internalFormat, type);

    const VX_GLShaderInformation* row = filter->ShadersInformation();
    for (; row && row->vertexShader && row->fragmentShader; ++row)
        makeProgram(*filter, {row->vertexShader, row->fragmentShader, nullptr, 0, 0, 0});

    const VX_GLGeometryShaderInformation* stages = filter->GeometryShadersInformation();
    for (; stages && stages->vertexShader && stages->fragmentShader && stages->geometryShader; ++stages)
        makeProgram(*filter, *stages);
    return filter->Setup() ? filter : nullptr;
}

void VX_GLFilterManager::fail(const std::string& line) {
    // A driver's words end with a line feed.
    m_Failures.push_back(line.substr(0, line.find_last_not_of(" \r\n") + 1));
    if (m_Live)
        m_Live->noteFailure(m_Failures.back());
    if (VX_GetDiagnostics())
        NSLog("%s", m_Failures.back().c_str());
}

/// GL names mean nothing in another share group, and GL attaches them without a word, or another object.
void VX_GLFilterManager::checkShareGroup() {
    NSOpenGLContext* context = NSOpenGLContext::currentContext();
    if (!context)
        return;
    const void* former = std::exchange(m_ShareGroup, &context->capabilities());
    if (former && former != m_ShareGroup && !(m_VShaders.empty() && m_PShaders.empty() && m_GShaders.empty()))
        fail(
            "VX_GLFilterManager::SetupFilter: the cached shaders belong to a context that shares nothing "
            "with the current one; every share group needs a manager of its own");
}

/// The cached shader, else the one compiled from the file; a failure is logged unless `kind` is null.
template <class Shader>
Shader* VX_GLFilterManager::shaderOf(std::map<std::string, Shader*, std::less<>>& cache, const char* fileName,
                                     const char* kind) {
    if (Shader* shader = found(cache, fileName)) {
        if (m_Live)
            m_Live->followFile(fileName);
        return shader;
    }
    const std::string source = LoadShaderFileToString(fileName);
    if (source.empty())
        NSLog("Can't open shader file: %s", fileName);
    std::string failure;
    Shader* shader = compiled<Shader>(source.c_str(), &failure);
    if (shader)
        cache.emplace(fileName, shader);
    else if (kind)
        NSLog("Failed %s: %s", kind, fileName);
    const std::string path = foundPath(fileName);
    for (const std::string& line : vx::locateFailures(path, source, failure))
        fail(line);
    if (m_Live)
        m_Live->followFile(fileName, path, source, shader);
    return shader;
}

void VX_GLFilterManager::makeProgram(VX_GLFilter& filter, const VX_GLGeometryShaderInformation& row) {
    VX_VertexShader* vertex = shaderOf(m_VShaders, row.vertexShader, "vshader");
    VX_FragmentShader* fragment = shaderOf(m_PShaders, row.fragmentShader, "pshader");
    VX_GeometryShader* geometry =
        row.geometryShader ? shaderOf(m_GShaders, row.geometryShader, nullptr) : nullptr;
    VX_Program* const program =
        filter.CreateProgram(vertex, fragment, geometry, row.inputType, row.outputType, row.verticesOut);
    if (m_Live)
        m_Live->followRow(filter, row, program);
    if (program)
        return;
    std::vector<std::string> files{row.vertexShader, row.fragmentShader};
    if (row.geometryShader)
        files.push_back(row.geometryShader);
    fail(joined(files) + " do not link: " + filter.failure());
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

bool VX_GLFilterManager::WatchShaderFiles(bool watch) {
    if (!watch)
        m_Live.reset();
    try {
        if (watch && !m_Live)
            m_Live = std::make_unique<vx::LiveShaders>(*this);
    } catch (const std::system_error& failure) {
        NSLog("VX_GLFilterManager::WatchShaderFiles: no thread to watch files on: %s", failure.what());
    }
    return m_Live != nullptr;
}

bool VX_GLFilterManager::RebuildChangedPrograms() {
    VX_NEEDS_CONTEXT();
    return m_Live && m_Live->rebuild();
}

const std::vector<std::string>& VX_GLFilterManager::RebuildFailures() const {
    static const std::vector<std::string> none;
    return m_Live ? m_Live->failures() : none;
}

VX_Program* VX_GLFilterManager::MakeProgramForFilter(VX_GLFilter* filter, const char* vertexSource,
                                                     const char* fragmentSource) {
    VX_VertexShader* vertex = CreateVShader(vertexSource);
    VX_FragmentShader* fragment = CreatePShader(fragmentSource);
    return filter->CreateProgram(vertex, fragment, nullptr, 0, 0, 0);
}
