// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/shaders/VX_FragmentShader.h>
#include <VX_OpenGL64/shaders/VX_GLFilter.h>
#include <VX_OpenGL64/shaders/VX_GLFilterManager.h>
#include <VX_OpenGL64/shaders/VX_GeometryShader.h>
#include <VX_OpenGL64/shaders/VX_Program.h>
#include <VX_OpenGL64/shaders/VX_VertexShader.h>
#include <VX_OpenGL64/shaders/private/ShaderFailure.h>
#include <VX_OpenGL64/targets/VX_GLRenderTarget.h>
#include <VX_Platform/AppKit/NSAlert.h>
#include <VX_Platform/Foundation/NSString.h>
#include <VX_Platform/Foundation/VX_Diagnostics.h>
#include <VX_Platform/OpenGL/GLCapabilities.h>
#include <tests/support/GLTest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include <unistd.h>

using Values = std::vector<float>;

namespace {

const char* const kVertex = R"(attribute vec3 tangent;
void main() {
    gl_Position = ftransform();
    gl_TexCoord[0] = gl_MultiTexCoord0;
    gl_FrontColor = vec4(tangent, 1.0);
})";

const char* const kBroken = "void main() { nonsense }";

/// These two do not link.
const char* const kVaryingOfTwo = "varying vec2 v; void main() { v = vec2(0); gl_Position = gl_Vertex; }";
const char* const kVaryingOfFour = "varying vec4 v; void main() { gl_FragColor = v; }";

/// Makes a green square over the whole window of each point.
const char* const kGeometry = R"(#version 150 compatibility
layout(points) in;
layout(triangle_strip, max_vertices = 4) out;
void main() {
    for (int corner = 0; corner < 4; ++corner) {
        gl_Position = vec4(corner % 2 * 2 - 1, corner / 2 * 2 - 1, 0, 1);
        gl_FrontColor = vec4(0, 1, 0, 1);
        EmitVertex();
    }
})";
const char* const kUniforms = R"(uniform float f1, f1v[2];
uniform vec2 f2, f2v[2];
uniform vec3 f3, f3v[2];
uniform vec4 f4, f4v[2];
uniform int i1;
uniform mat3 m3;
uniform mat4 m4;
void main() {
    gl_FragColor = gl_Color + f1 + f1v[1] + f2.xyxy + f2v[1].xyxy + f3.xyzx + f3v[1].xyzx + f4 + f4v[1] + float(i1)
        + m3[2].xyzx + m4[3];
})";

template <class Shader>
struct Compiled : Shader {
    explicit Compiled(const char* text) { EXPECT_TRUE(this->loadAndCompile(text)); }
};
using Vertex = Compiled<VX_VertexShader>;
using Fragment = Compiled<VX_FragmentShader>;
using Geometry = Compiled<VX_GeometryShader>;

/// Compiles a good, a broken and a good text again; says what a failure wrote to the log or to the output.
template <class Shader>
std::string checkLifecycle(GLenum type, const char* good) {
    LogCollector log;
    testing::internal::CaptureStdout();
    unsigned first = 0, second = 0;
    {
        Compiled<Shader> shader(good);
        first = shader.shader();
        int made = 0;
        glGetShaderiv(first, GL_SHADER_TYPE, &made);
        EXPECT_EQ(GLenum(made), type);
        EXPECT_FALSE(shader.loadAndCompile(kBroken));
        EXPECT_EQ(shader.shader(), 0u);
        EXPECT_TRUE(glIsShader(first)) << "the shader held before is left alive";
        EXPECT_FALSE(glIsShader(first + 1)) << "the one that failed";
        EXPECT_TRUE(shader.loadAndCompile(good));
        second = shader.shader();
    }
    EXPECT_FALSE(glIsShader(second)) << "it ends with its object";
    glDeleteShader(first);
    const std::string printed = testing::internal::GetCapturedStdout();
    const std::string said = log.lines.empty() ? "out: " + printed : "log: " + log.lines[0];
    const std::size_t own = said.find("Failed: ") + 8;
    return said.size() > own + 5 ? said.substr(0, own) : "without the driver's words: " + said;
}

const char* const kSwap = R"(#extension GL_ARB_texture_rectangle : require
uniform sampler2DRect source;
void main() { gl_FragColor = texture2DRect(source, gl_TexCoord[0].st).bgra; })";
const char* const kSwap2D =
    "uniform sampler2D source; void main() { gl_FragColor = texture2D(source, gl_TexCoord[0].st).bgra; }";

/// Two directories of shader files, gone with the object, and the manager that finds them.
struct Files {
    Files() {
        std::filesystem::remove_all(root);
        for (const char* directory : {"first", "second"}) {
            std::filesystem::create_directories(root / directory);
            manager.AddResourcePath((root / directory).c_str());
        }
        write("first/pass.vert", kVertex);
        write("second/pass.vert", "not read: the first directory shadows it");
        write("second/swap.frag", kSwap);
        write("second/square.geom", kGeometry);
    }
    ~Files() { std::filesystem::remove_all(root); }
    void write(const char* name, std::string_view bytes) { std::ofstream(root / name) << bytes; }

    const std::filesystem::path root =
        std::filesystem::path(testing::TempDir()) / ("vx_shaders_" + std::to_string(getpid()));
    VX_GLFilterManager manager;
};

/// Declares nothing of its own.
struct PlainFilter : VX_GLFilter {
    PlainFilter() : VX_GLFilter(nullptr) { m_RenderTarget = new VX_GLRenderTarget; }
};

/// Notes each call of the manager.
struct NotingFilter : PlainFilter {
    explicit NotingFilter(const VX_GLShaderInformation* shaders = nullptr,
                          const VX_GLGeometryShaderInformation* stages = nullptr, int count = 1)
        : shaders(shaders), stages(stages), count(count) {}
    const VX_GLShaderInformation* ShadersInformation() override { return noted("shaders", shaders); }
    const VX_GLGeometryShaderInformation* GeometryShadersInformation() override {
        return noted("stages", stages);
    }
    bool NeedFrameBuffer() override { return noted("frame?", needsFrameBuffer); }
    int GetMinRTCount() override { return noted("count", count); }
    bool IsRT2D() override { return noted("2D?", is2D = !is2D); }
    unsigned int SetResolution(int width, int height) override {
        return noted("size", VX_GLFilter::SetResolution(width, height));
    }
    bool Setup() override { return noted("setup", needsFrameBuffer); }
    template <class Value>
    Value noted(const std::string& name, Value value) {
        calls += name + " ";
        return value;
    }

    const VX_GLShaderInformation* shaders;
    const VX_GLGeometryShaderInformation* stages;
    int count;
    bool needsFrameBuffer = true, is2D = true;
    std::string calls;
};

VX_GLFilter* setUp(VX_GLFilterManager& manager, VX_GLFilter& filter, int width = 16, int height = 8) {
    return manager.SetupFilter(&filter, width, height, GL_RGBA8, GL_UNSIGNED_BYTE);
}

std::vector<unsigned> shadersOf(const VX_Program* program) {
    std::vector<unsigned> names(4);
    int count = 0;
    glGetAttachedShaders(program->m_Program, 4, &count, names.data());
    names.resize(std::size_t(count));
    return names;
}

std::vector<int> s_Parameters;

} // namespace

TEST(Shaders, LiveWithTheirObjectAndReportEachInItsOwnWay) {
    HeadlessContext gl(8, 8);
    EXPECT_EQ(checkLifecycle<VX_VertexShader>(GL_VERTEX_SHADER, kVertex),
              "log: VX_VertexShader::loadAndCompile Failed: ");
    EXPECT_EQ(checkLifecycle<VX_FragmentShader>(GL_FRAGMENT_SHADER, kUniforms),
              "log: VX_FragmentShader::loadAndCompile Failed: ");
    EXPECT_EQ(checkLifecycle<VX_GeometryShader>(GL_GEOMETRY_SHADER_EXT, kGeometry),
              "out: VX_GeometryShader::loadAndCompile Failed: ");
    EXPECT_EQ(ints(VX_GeometryShader().GetMaxVertices()), stateOf(GL_MAX_GEOMETRY_OUTPUT_VERTICES_EXT));
}

TEST(VX_Program, AttachesLinksAndStartsAfresh) {
    HeadlessContext gl(8, 8);
    Vertex vertex(kVertex);
    Fragment fragment(kUniforms);
    auto* program = new VX_Program;
    const auto attachedAndLinked = [&](VX_VertexShader* first, VX_FragmentShader* second, bool deferLink) {
        EXPECT_TRUE(program->attachShader(first, second, deferLink));
        std::vector<int> values(2);
        glGetProgramiv(program->m_Program, GL_ATTACHED_SHADERS, &values[0]);
        glGetProgramiv(program->m_Program, GL_LINK_STATUS, &values[1]);
        return values;
    };
    EXPECT_EQ(attachedAndLinked(&vertex, &fragment, false), ints(2, 1));
    const unsigned first = program->m_Program;
    EXPECT_EQ(attachedAndLinked(nullptr, &fragment, true), ints(1, 0));
    EXPECT_TRUE(program->m_Program == first || !glIsProgram(first)) << "some drivers give the name again";
    EXPECT_EQ(attachedAndLinked(&vertex, nullptr, false), ints(1, 1));
    const unsigned last = program->m_Program;
    program->activeProgram();
    EXPECT_EQ(stateOf(GL_CURRENT_PROGRAM), ints(last));
    VX_Program().deactiveProgram();
    EXPECT_EQ(stateOf(GL_CURRENT_PROGRAM), ints(0)) << "whichever is current";
    delete program;
    EXPECT_FALSE(glIsProgram(last));
}

TEST(VX_Program, IsLostWithAFailedLinkAndItsShadersAreNot) {
    HeadlessContext gl(8, 8);
    Vertex vertex(kVaryingOfTwo);
    Fragment fragment(kVaryingOfFour);
    Geometry geometry(kGeometry);
    LogCollector log;
    VX_Program program;
    EXPECT_FALSE(program.attachShader(&vertex, &fragment, false));
    EXPECT_EQ(program.m_Program, 0u);
    for (unsigned name = 1; name < 9; ++name)
        EXPECT_FALSE(glIsProgram(name));
    EXPECT_TRUE(log.lines.at(0).starts_with("Link error: ") && log.lines[0].size() > 12u) << log.lines[0];
    EXPECT_TRUE(glIsShader(vertex.shader()) && glIsShader(fragment.shader()));
    EXPECT_FALSE(program.attachGeometryShader(&geometry, GL_POINTS, GL_TRIANGLE_STRIP, 4)) << "no program";
    EXPECT_TRUE(program.attachShader(&vertex, &fragment, true)) << "no link yet";
    EXPECT_FALSE(program.attachGeometryShader(nullptr, GL_POINTS, GL_TRIANGLE_STRIP, 4));
    EXPECT_EQ(log.lines.size(), 1u);
    EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
    program.freeProgram();
    EXPECT_FALSE(program.execLink()) << "there is no program to ask";
}

TEST(VX_Program, PassesUniformsAndAttributesOnByName) {
    HeadlessContext gl(8, 8);
    Vertex vertex(kVertex);
    Fragment fragment(kUniforms);
    VX_Program program;
    ASSERT_TRUE(program.attachShader(&vertex, &fragment, false));
    program.activeProgram();
    const float values[16] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16};
    program.set1f("f1", 1);
    program.set1f("none", 9);
    program.set2f("f2", 1, 2);
    program.set3f("f3", 1, 2, 3);
    program.set4f("f4", 1, 2, 3, 4);
    program.set1i("i1", 7);
    program.set1fv("f1v", 2, values);
    program.set2fv("f2v", 2, values);
    program.set3fv("f3v", 2, values);
    program.set4fv("f4v", 2, values);
    program.setMatrix3fv("m3", 1, 1, values);
    program.setMatrix4fv("m4", 1, 0, values);
    Values held; // of each as many as the digit in its name says, or its square
    std::istringstream names("f1 f2 f3 f4 i1 f1v[1] f2v[1] f3v[1] f4v[1] m3 m4");
    for (std::string name; names >> name;) {
        const int digit = name[1] - '0';
        float got[16] = {};
        glGetUniformfv(program.m_Program, glGetUniformLocation(program.m_Program, name.c_str()), got);
        held.insert(held.end(), got, got + (name[0] == 'm' ? digit * digit : digit));
    }
    EXPECT_EQ(held, (Values{1, 1, 2, 1, 2, 3, 1, 2, 3, 4, 7, 2, 3, 4, 4, 5, 6,  5,  6,  7,  8,  1,  4,
                            7, 2, 5, 8, 3, 6, 9, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16}));
    EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR)) << "types fit, and unknown names are ignored";

    const int location = program.getAttribLocation("tangent");
    EXPECT_EQ(location, glGetAttribLocation(program.m_Program, "tangent"));
    program.setVertexAttrib3fv("tangent", values);
    program.setVertexAttrib3fv(location + 2, values + 3);
    program.setVertexAttrib3fv(0, values); // compiles: neither null nor a name
    float current[8] = {};
    glGetVertexAttribfv(unsigned(location), GL_CURRENT_VERTEX_ATTRIB, current);
    glGetVertexAttribfv(unsigned(location) + 2, GL_CURRENT_VERTEX_ATTRIB, current + 4);
    EXPECT_EQ(Values(current, current + 8), (Values{1, 2, 3, 1, 4, 5, 6, 1}));
    program.setVertexAttrib3fv("none", values);
    EXPECT_EQ(glGetError(), GLenum(GL_INVALID_VALUE)) << "-1 goes to GL as the index";
}

TEST(VX_GLFilterManager, SetsAFilterUpInAFixedOrder) {
    HeadlessContext gl(8, 8);
    Files files;
    VX_GLFilterManager& manager = files.manager;
    vx::currentGLCapabilities().geometryShader4 = true;
    const auto former =
        std::exchange(epoxy_glProgramParameteriEXT, [](GLuint program, GLenum name, GLint value) {
            GLint isLinked = 0;
            glGetProgramiv(program, GL_LINK_STATUS, &isLinked);
            EXPECT_FALSE(isLinked);
            s_Parameters.insert(s_Parameters.end(), {int(name), value});
        });
    const VX_GLShaderInformation shaders[] = {
        {"pass.vert", "swap.frag"}, {"pass.vert", nullptr}, {"none", "none"}};
    const VX_GLGeometryShaderInformation stages[] = {
        {"pass.vert", "swap.frag", "square.geom", GL_POINTS, GL_TRIANGLE_STRIP, 4},
        {"none", "none", nullptr, 0, 0, 0}};
    NotingFilter filter(shaders, stages, 2);
    EXPECT_EQ(setUp(manager, filter), &filter);
    EXPECT_EQ(filter.calls, "frame? size count 2D? 2D? shaders stages setup ");
    EXPECT_EQ(s_Parameters, ints(GL_GEOMETRY_INPUT_TYPE_EXT, GL_POINTS, GL_GEOMETRY_OUTPUT_TYPE_EXT,
                                 GL_TRIANGLE_STRIP, GL_GEOMETRY_VERTICES_OUT_EXT, 4));
    NotingFilter other(shaders, stages); // all from the caches, and no render target
    other.needsFrameBuffer = false;
    EXPECT_EQ(setUp(manager, other), nullptr);
    EXPECT_EQ(other.calls, "frame? shaders stages setup ");
    epoxy_glProgramParameteriEXT = former;
    const unsigned vertex = manager.QueryVShader("pass.vert")->shader(),
                   swap = manager.QueryPShader("swap.frag")->shader(),
                   square = manager.QueryGShader("square.geom")->shader();
    for (const NotingFilter* each : {&filter, &other}) {
        ASSERT_EQ(each->m_Programs.size(), 2u);
        EXPECT_EQ(shadersOf(each->m_Programs[0]), (std::vector{vertex, swap}));
        EXPECT_EQ(shadersOf(each->m_Programs[1]), (std::vector{vertex, swap, square}));
    }

    PlainFilter plain;
    EXPECT_EQ(setUp(manager, plain), &plain);
    ASSERT_EQ(plain.m_RenderTarget->m_Textures.size(), 1u);
    glBindTexture(GL_TEXTURE_RECTANGLE_ARB, plain.GetRTexture(0));
    EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR)) << "a rectangle texture";
}

TEST(VX_GLFilterManager, ReplacesBothSidesOfASizeThatIsNotOne) {
    HeadlessContext gl(8, 8);
    VX_GLFilterManager manager;
    manager.SetResolution(64, 32);
    PlainFilter filter;
    for (const auto& [width, height, used] : {std::tuple(0, 600, 64), {600, -1, 64}, {1, 1, 1}}) {
        EXPECT_EQ(setUp(manager, filter, width, height), &filter);
        EXPECT_EQ(filter.m_RenderTarget->m_Width, used);
    }
}

TEST(VX_GLFilterManager, GoesOnWithoutShadersThatFailAndTriesThemAgain) {
    HeadlessContext gl(8, 8);
    Files files;
    for (const char* name : {"first/a.vert", "first/a.frag", "first/a.geom"})
        files.write(name, kBroken);
    files.write("first/empty.vert", "");
    files.write("first/two.vert", kVaryingOfTwo);
    files.write("first/four.frag", kVaryingOfFour);
    const VX_GLShaderInformation shaders[] = {
        {"a.vert", "a.frag"}, {"empty.vert", "swap.frag"}, {"two.vert", "four.frag"}, {}};
    const VX_GLGeometryShaderInformation stages[] = {
        {"pass.vert", "swap.frag", "a.geom", GL_POINTS, GL_TRIANGLE_STRIP, 4}, {}};
    NotingFilter filter(shaders, stages), next(shaders, stages);
    LogCollector log;
    testing::internal::CaptureStdout();
    EXPECT_EQ(setUp(files.manager, filter), &filter);
    EXPECT_GT(lseek(STDOUT_FILENO, 0, SEEK_CUR), 0) << "the geometry shader's line waits in a buffer";
    testing::internal::GetCapturedStdout();
    for (const char* own :
         {"Failed vshader: a.vert", "Failed pshader: a.frag", "Can't open shader file: empty.vert"})
        EXPECT_EQ(log.count(own), 1) << own;
    EXPECT_EQ(log.count("a.geom") + log.count("two.vert") + log.count("nonsense"), 0);
    const auto told = [&](const std::string& place, const std::string& behind) {
        const std::vector<std::string>& all = files.manager.Failures();
        return std::count_if(all.begin(), all.end(), [&](const std::string& line) {
            return line.starts_with(place) && line.ends_with(behind);
        });
    };
    for (const char* name : {"a.vert", "a.frag", "a.geom"})
        EXPECT_GE(told(files.root / "first" / (name + std::string(":1: ")), std::string(" | ") + kBroken), 1);
    EXPECT_EQ(told("two.vert, four.frag do not link: ", ""), 1);
    ASSERT_FALSE(filter.m_Programs.empty());
    EXPECT_EQ(shadersOf(filter.m_Programs.back()).size(), 2u) << "without its geometry stage";

    files.write("first/a.vert", kVertex);
    files.write("first/a.frag", kSwap);
    files.write("first/a.geom", kGeometry);
    setUp(files.manager, next);
    EXPECT_EQ(shadersOf(next.m_Programs.front()).size(), 2u);
    EXPECT_EQ(shadersOf(next.m_Programs.back()).size(), 3u);
    EXPECT_FALSE(files.manager.Failures().empty()) << "the two that do not link";

    HeadlessContext apart(8, 8);
    NotingFilter other;
    VX_SetDiagnostics(true);
    setUp(files.manager, other);
    VX_SetDiagnostics(false);
    EXPECT_EQ(log.count("shares nothing"), 1);
    EXPECT_EQ(files.manager.Failures().size(), 1u);
}

TEST(ShaderFailure, NamesTheLineInTheWordsOfEachDriver) {
    const auto located = vx::locateFailures("f.vert", "one\n  two\n",
                                            "0:2(7): error: no\n0(1) : error C1\nERROR: 0:9: 'x'\nend\n");
    EXPECT_EQ(located, (std::vector<std::string>{"f.vert:2: error: no | two", "f.vert:1: error C1 | one",
                                                 "f.vert:9: 'x'", "f.vert: end"}));
}

TEST(VX_GLFilterManager, OwnsTheFirstShaderUnderAName) {
    HeadlessContext gl(8, 8);
    unsigned vertex, fragment, point;
    {
        VX_GLFilterManager manager;
        Vertex second(kVertex);
        VX_VertexShader* first = manager.CreateVShader(kVertex);
        manager.RegisterVShader("b", first);
        manager.RegisterVShader("b", &second);
        EXPECT_EQ(manager.QueryVShader("b"), first);
        EXPECT_EQ(manager.QueryPShader("b"), nullptr) << "a cache for each kind";
        manager.RegisterPShader("b", manager.CreatePShader(kSwap));
        manager.RegisterGShader("b", manager.CreateGShader(kGeometry));
        vertex = first->shader();
        fragment = manager.QueryPShader("b")->shader();
        point = manager.QueryGShader("b")->shader();
    }
    EXPECT_FALSE(glIsShader(vertex) || glIsShader(fragment));
    EXPECT_TRUE(glIsShader(point)) << "geometry shaders stay behind";
}

TEST(VX_GLFilterManager, FindsFilesByOrderOfAdditionOrAlertsAndEnds) {
    Files files;
    EXPECT_EQ(files.manager.QueryShaderPath("pass.vert"), files.root.string() + "/first/pass.vert");
    EXPECT_EQ(files.manager.LoadShaderFileToString("swap.frag"), kSwap);
    files.write("second/nul.vert", {"begin\0end", 9});
    EXPECT_EQ(files.manager.LoadShaderFileToString("nul.vert"), "begin");
    std::vector<std::string> shown;
    NSAlert::setPresenter([&](NSAlert* alert) {
        shown = {alert->messageText()->string(), alert->defaultButton()->string(),
                 alert->informativeText()->string()};
        return 1;
    });
    const std::string absolute = (files.root / "first/pass.vert").string();
    for (const std::string& name : {absolute, std::string("100%s.vert")}) { // put behind each directory
        EXPECT_EQ(files.manager.QueryShaderPath(name), "");
        EXPECT_EQ(shown, (std::vector<std::string>{"Can't load shader", "OK", name}));
    }
    NSAlert::setPresenter([](NSAlert* alert) {
        NSLog("alert: %@", alert->informativeText());
        return 1;
    });
    EXPECT_DEATH(files.manager.LoadShaderFileToString("gone.vert"),
                 "alert: gone.vert\n.*LoadShaderFileToString: .*\"gone.vert\" in .*/first/, .*/second/");
    files.write("first/latin.vert", "// \xE9");
    EXPECT_DEATH(files.manager.LoadShaderFileToString("latin.vert"), "LoadShaderFileToString: .*latin.vert");
    NSAlert::setPresenter({});
}

TEST(VX_GLFilter, RebuildsItsTargetWithEachResolution) {
    HeadlessContext gl(8, 8);
    PlainFilter filter;
    EXPECT_EQ(filter.SetResolution(16, 8), unsigned(GL_FRAMEBUFFER_COMPLETE_EXT));
    const unsigned texture = filter.CreateRT(GL_RGBA8, GL_UNSIGNED_BYTE, -1, -1);
    EXPECT_EQ(ints(filter.GetRTexture(-1), filter.GetRTexture(0), filter.GetRTexture(1)),
              ints(0, texture, 0));
    filter.SetResolution(16, 8);
    EXPECT_EQ(filter.GetRTexture(0), 0u);
    EXPECT_FALSE(glIsTexture(texture));
    VX_GLFilter bare(nullptr);
    EXPECT_DEATH(bare.Bind(0), "VX_GLFilter::Bind: the filter's m_RenderTarget is null");
}

TEST(VX_GLFilter, KeepsOnlyProgramsThatLinkAndEndsWithThem) {
    HeadlessContext gl(8, 8);
    Vertex vertex(kVaryingOfTwo);
    Fragment mismatched(kVaryingOfFour);
    Geometry geometry(R"(#version 150 compatibility
layout(points) in;
layout(points, max_vertices = 1) out;
in vec4 v[];
void main() { gl_Position = v[0]; EmitVertex(); })");
    auto* filter = new PlainFilter;
    LogCollector log;
    EXPECT_EQ(filter->CreateProgram(&vertex, &mismatched, nullptr, 0, 0, 0), nullptr);
    EXPECT_EQ(log.lines.back(), "Failed: CreateProgram");
    EXPECT_EQ(filter->CreateProgram(&vertex, nullptr, &geometry, GL_POINTS, GL_POINTS, 1), nullptr);
    EXPECT_EQ(log.lines.back(), "Failed: CreateProgram because geometry shader wasn't attached");
    EXPECT_TRUE(filter->m_Programs.empty());
    VX_Program* program = filter->CreateProgram(&vertex, nullptr, nullptr, 0, 0, 0);
    ASSERT_EQ(filter->m_Programs, (std::vector<VX_Program*>{program}));
    filter->m_Programs.push_back(nullptr);
    filter->SetResolution(8, 8);
    const unsigned name = program->m_Program, frame = filter->m_RenderTarget->m_FrameBuffer;
    delete filter;
    EXPECT_FALSE(glIsProgram(name) || glIsFramebufferEXT(frame));
}

TEST(VX_GLFilter, PassesARectangleAndA2DTargetThroughItsShaders) {
    HeadlessContext gl(16, 8);
    Files files;
    const VX_GLShaderInformation shaders[] = {{"pass.vert", "swap.frag"}, {}};
    NotingFilter filter(shaders, nullptr, 2); // the first texture is a rectangle texture, the second 2D
    ASSERT_EQ(setUp(files.manager, filter), &filter);
    ASSERT_NE(files.manager.MakeProgramForFilter(&filter, kVertex, kSwap2D), nullptr);
    ASSERT_EQ(filter.m_Programs.size(), 2u);
    unsigned both[] = {GL_COLOR_ATTACHMENT0_EXT, GL_COLOR_ATTACHMENT1_EXT};
    filter.Binds(2, both);
    clearTo(1, 0.6f, 0);
    for (const int attachment : {0, 1}) {
        filter.Bind(attachment);
        clearTo(0, 0.2f, 1, 8, 0, 8, 8); // the right half
    }
    filter.Unbind();
    for (const int pass : {0, 1}) {
        clearTo(0, 0, 0);
        filter.m_RenderTarget->SetDefaultProjection();
        VX_Program* program = filter.m_Programs[std::size_t(pass)];
        program->activeProgram();
        program->set1i("source", 0);
        pass == 0 ? filter.DrawFullScreen(0) : filter.DrawFullScreen2D(1);
        for (const int x : {0, 6, 9, 15}) // 0.6 and 0.2 are whole steps of 255
            EXPECT_EQ(pixelAt(x, 5), x < 8 ? 0x0099FFFFu : 0xFF3300FFu) << "pass " << pass << " x " << x;
    }
    EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
}
