// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/shaders/private/LiveShaders.h>

#include <VX_OpenGL64/shaders/VX_GLFilter.h>
#include <VX_OpenGL64/shaders/private/ShaderFailure.h>
#include <VX_OpenGL64/shaders/private/UniformTransfer.h>
#include <VX_Platform/Foundation/NSLog.h>
#include <VX_Platform/Foundation/VX_Diagnostics.h>

#include <algorithm>
#include <utility>

namespace vx {

namespace {

/// The new shader, null where the new text has none, else the cached one.
template <class Cache, class Fresh>
auto latest(const std::string& name, const Cache& cache, const Fresh& fresh) {
    const auto made = fresh.find(name);
    const auto kept = cache.find(name);
    return made != fresh.end() ? made->second.get() : kept != cache.end() ? kept->second : nullptr;
}

} // namespace

void LiveShaders::followFile(const std::string& name, const std::string& path, const std::string& text,
                             bool isGood) {
    if (isGood)
        m_Pending.erase(name);
    else
        m_Pending[name] = {path, text};
    follow(name, text);
}

void LiveShaders::follow(const std::string& name, const std::optional<std::string>& text) {
    std::vector<std::string> paths;
    for (const std::string& directory : m_Manager.m_ResourcePaths)
        paths.push_back(directory + name);
    m_Watch.follow(name, std::move(paths), text);
}

void LiveShaders::followRow(VX_GLFilter& filter, const VX_GLGeometryShaderInformation& row,
                            VX_Program* program) {
    forgetEndedFilters();
    m_Rows.push_back({filter.m_Self, program, row.vertexShader, row.fragmentShader,
                      row.geometryShader ? row.geometryShader : "", row.inputType, row.outputType,
                      row.verticesOut});
}

void LiveShaders::forgetEndedFilters() {
    std::erase_if(m_Rows, [](const Row& row) { return row.filter.expired(); });
}

void LiveShaders::noteFailure(const std::string& line) {
    if (std::ranges::find(m_Failures, line) == m_Failures.end())
        m_Failures.push_back(line);
}

bool LiveShaders::rebuild() {
    if (!m_Watch.hasNews())
        return false;
    for (auto& [name, news] : m_Watch.takeNews())
        m_Pending.insert_or_assign(name, std::move(news));
    forgetEndedFilters();
    m_Failures.clear();
    m_Failing.clear();
    compilePending();
    for (Row& row : m_Rows) {
        if (hasPending(row) && !rebuild(row))
            m_Failing.insert({row.vertex, row.fragment, row.geometry});
    }
    takeOver(m_Manager.m_VShaders, m_Vertex);
    takeOver(m_Manager.m_PShaders, m_Fragment);
    takeOver(m_Manager.m_GShaders, m_Geometry);
    std::erase_if(m_Pending, [this](const auto& file) { return !m_Failing.contains(file.first); });
    if (VX_GetDiagnostics())
        for (const std::string& line : m_Failures)
            NSLog("%s", line.c_str());
    return true;
}

void LiveShaders::compilePending() {
    for (const auto& [name, news] : m_Pending) {
        if (!news.text) {
            noteFailure(news.path + ": cannot be read, or is not UTF-8");
            m_Failing.insert(name);
        }
        compile(name, m_Manager.m_VShaders, &Row::vertex, m_Vertex);
        compile(name, m_Manager.m_PShaders, &Row::fragment, m_Fragment);
        compile(name, m_Manager.m_GShaders, &Row::geometry, m_Geometry);
    }
}

// One file may be of several kinds.
template <class Shader>
void LiveShaders::compile(const std::string& name, const Cache<Shader>& cache, std::string Row::*role,
                          Fresh<Shader>& fresh) {
    if (!cache.contains(name) && std::ranges::find(m_Rows, name, role) == m_Rows.end())
        return;
    const FileWatch::News& news = m_Pending[name];
    auto shader = std::make_unique<Shader>();
    if (news.text && shader->loadAndCompile(news.text->c_str())) {
        fresh[name] = std::move(shader);
        return;
    }
    fresh[name] = nullptr;
    m_Failing.insert(name);
    for (const std::string& line : locateFailures(news.path, news.text.value_or(""), shader->failure()))
        noteFailure(line);
}

bool LiveShaders::hasPending(const Row& row) const {
    return m_Pending.contains(row.vertex) || m_Pending.contains(row.fragment) ||
           m_Pending.contains(row.geometry);
}

bool LiveShaders::rebuild(Row& row) {
    VX_Program program;
    VX_Program* const former = programOf(row);
    if (row.program && !former)
        return true; // the host has no use for it any more
    if (!link(program, row, former))
        return false;
    install(row, program, former);
    return true;
}

bool LiveShaders::link(VX_Program& program, const Row& row, const VX_Program* former) {
    VX_VertexShader* const vertex = latest(row.vertex, m_Manager.m_VShaders, m_Vertex);
    VX_FragmentShader* const fragment = latest(row.fragment, m_Manager.m_PShaders, m_Fragment);
    VX_GeometryShader* const geometry = latest(row.geometry, m_Manager.m_GShaders, m_Geometry);
    if (!vertex || !fragment || (!geometry && !row.geometry.empty()))
        return false;
    program.attachShader(vertex, fragment, true);
    if (former)
        keepAttributeLocations(former->m_Program, program.m_Program);
    if (geometry ? program.attachGeometryShader(geometry, row.inputType, row.outputType, row.verticesOut)
                 : program.execLink())
        return true;
    const std::string behind = geometry ? ", " + row.geometry : "";
    noteFailure(row.vertex + ", " + row.fragment + behind + " do not link: " + program.failure());
    return false;
}

// The host's pointers stay good.
void LiveShaders::install(Row& row, VX_Program& program, VX_Program* former) {
    if (former) {
        transferUniforms(former->m_Program, program.m_Program);
        std::swap(former->m_Program, program.m_Program);
        return;
    }
    const std::shared_ptr<VX_GLFilter*> filter = row.filter.lock();
    std::ptrdiff_t before = 0;
    for (const Row* other = m_Rows.data(); other != &row; ++other)
        before += !other->filter.owner_before(row.filter) && !row.filter.owner_before(other->filter) &&
                  programOf(*other);
    row.program = new VX_Program;
    std::swap(row.program->m_Program, program.m_Program);
    std::vector<VX_Program*>& programs = (*filter)->m_Programs;
    programs.insert(programs.begin() + std::min(before, std::ssize(programs)), row.program);
}

// Null where a row has none, or the host has taken it away.
VX_Program* LiveShaders::programOf(const Row& row) {
    const std::shared_ptr<VX_GLFilter*> filter = row.filter.lock();
    const std::vector<VX_Program*>& programs = (*filter)->m_Programs;
    return std::ranges::find(programs, row.program) == programs.end() ? nullptr : row.program;
}

template <class Shader>
void LiveShaders::takeOver(Cache<Shader>& cache, Fresh<Shader>& fresh) {
    for (auto& [name, shader] : fresh) {
        if (m_Failing.contains(name))
            continue;
        const auto cached = cache.find(name);
        if (cached == cache.end())
            cache.emplace(name, shader.release());
        else
            takeOver(*cached->second, *shader);
    }
    fresh.clear();
}

void LiveShaders::takeOver(VX_VertexShader& cached, VX_VertexShader& fresh) {
    std::swap(cached.m_Shader, fresh.m_Shader);
}

void LiveShaders::takeOver(VX_FragmentShader& cached, VX_FragmentShader& fresh) {
    std::swap(cached.m_Shader, fresh.m_Shader);
}

void LiveShaders::takeOver(VX_GeometryShader& cached, VX_GeometryShader& fresh) {
    std::swap(cached.m_Shader, fresh.m_Shader);
    std::swap(cached.m_Source, fresh.m_Source);
    std::swap(cached.m_Variants, fresh.m_Variants);
}

} // namespace vx
