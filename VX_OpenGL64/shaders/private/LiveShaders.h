// SPDX-License-Identifier: MIT
#pragma once

#include <VX_OpenGL64/shaders/VX_FragmentShader.h>
#include <VX_OpenGL64/shaders/VX_GLFilterManager.h>
#include <VX_OpenGL64/shaders/VX_GeometryShader.h>
#include <VX_OpenGL64/shaders/VX_Program.h>
#include <VX_OpenGL64/shaders/VX_VertexShader.h>
#include <VX_Platform/Foundation/private/FileWatch.h>

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace vx {

/// Keeps a filter manager's programs as their files are. A text counts in the manager's caches once every
/// program that it is part of links with it: until then filters that are set up meanwhile get the last good
/// one.
class LiveShaders {
public:
    /// `manager` is borrowed; throws `std::system_error` without a thread to be had.
    explicit LiveShaders(VX_GLFilterManager& manager) : m_Manager(manager) {}

    /// Takes note of a file that a filter uses.
    void followFile(const std::string& name) { follow(name, std::nullopt); }
    /// The same of one that has just been read from `path`; `isGood` tells whether it compiled.
    void followFile(const std::string& name, const std::string& path, const std::string& text, bool isGood);
    /// Takes note of a row of the filter, the owner of `program`, which is null where it failed.
    void followRow(VX_GLFilter& filter, const VX_GLGeometryShaderInformation& row, VX_Program* program);

    /// Builds anew what has changed; true when anything has, for better or worse. Needs the context.
    bool rebuild();

    /// A line on what a filter's setup has met.
    void noteFailure(const std::string& line);
    /// What fails as the files are now, one line each.
    const std::vector<std::string>& failures() const { return m_Failures; }

private:
    struct Row {
        std::weak_ptr<VX_GLFilter*> filter;
        VX_Program* program;
        std::string vertex, fragment, geometry;
        int inputType, outputType, verticesOut;
    };
    template <class Shader>
    using Cache = std::map<std::string, Shader*, std::less<>>;
    /// The latest texts of one kind of shader, compiled; null where one does not.
    template <class Shader>
    using Fresh = std::map<std::string, std::unique_ptr<Shader>>;

    void follow(const std::string& name, const std::optional<std::string>& text);
    void compilePending();
    template <class Shader>
    void compile(const std::string& name, const Cache<Shader>& cache, std::string Row::*role,
                 Fresh<Shader>& fresh);
    template <class Shader>
    void takeOver(Cache<Shader>& cache, Fresh<Shader>& fresh);
    static void takeOver(VX_VertexShader& cached, VX_VertexShader& fresh);
    static void takeOver(VX_FragmentShader& cached, VX_FragmentShader& fresh);
    static void takeOver(VX_GeometryShader& cached, VX_GeometryShader& fresh);

    bool hasPending(const Row& row) const;
    bool rebuild(Row& row);
    bool link(VX_Program& program, const Row& row, const VX_Program* former);
    void install(Row& row, VX_Program& program, VX_Program* former);
    static VX_Program* programOf(const Row& row);
    void forgetEndedFilters();

    VX_GLFilterManager& m_Manager;
    std::vector<Row> m_Rows;
    /// Files whose latest text is not in the caches.
    std::map<std::string, FileWatch::News> m_Pending;
    /// Those of them that must not get there yet.
    std::set<std::string> m_Failing;
    Fresh<VX_VertexShader> m_Vertex;
    Fresh<VX_FragmentShader> m_Fragment;
    Fresh<VX_GeometryShader> m_Geometry;
    std::vector<std::string> m_Failures;
    FileWatch m_Watch;
};

} // namespace vx
