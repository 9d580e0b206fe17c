// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/shaders/VX_FragmentShader.h>
#include <VX_OpenGL64/shaders/VX_GLFilter.h>
#include <VX_OpenGL64/shaders/VX_GLFilterManager.h>
#include <VX_OpenGL64/shaders/VX_GeometryShader.h>
#include <VX_OpenGL64/shaders/VX_Program.h>
#include <VX_OpenGL64/shaders/VX_VertexShader.h>
#include <VX_OpenGL64/targets/VX_GLRenderTarget.h>
#include <VX_Platform/AppKit/NSAlert.h>
#include <VX_Platform/Foundation/NSString.h>
#include <tests/support/GLRecorder.h>
#include <tests/support/HeadlessContext.h>
#include <tests/support/LogCollector.h>
#include <tests/support/Pixels.h>

#include <epoxy/gl.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

using namespace vx::test;
using Lines = GLRecorder::Lines;

namespace {

const char* const kVertex = "void main() { gl_Position = ftransform(); gl_TexCoord[0] = gl_MultiTexCoord0; }";
const char* const kSwap = R"(#extension GL_ARB_texture_rectangle : require
uniform sampler2DRect source;
void main() { gl_FragColor = texture2DRect(source, gl_TexCoord[0].st).bgra; })";
const char* const kSwap2D = R"(
uniform sampler2D source;
void main() { gl_FragColor = texture2D(source, gl_TexCoord[0].st).bgra; })";
const char* const kGeometry = R"(#version 150 compatibility
layout(points) in;
layout(points, max_vertices = 1) out;
void main() { gl_Position = gl_in[0].gl_Position; EmitVertex(); })";

/// Two directories of shader files, gone with the object.
class ShaderFiles {
public:
    ShaderFiles() {
        std::filesystem::remove_all(root);
        for (const char* directory : {"first", "second"})
            std::filesystem::create_directories(root / directory);
        write("first/pass.vert", kVertex);
        write("second/pass.vert", "not read: the first directory shadows it");
        write("second/swap.frag", kSwap);
        write("second/swap2d.frag", kSwap2D);
        write("second/broken.any", "void main() { nonsense }");
        write("second/empty.vert", "");
        write("second/point.geom", kGeometry);
    }
    ~ShaderFiles() { std::filesystem::remove_all(root); }
    void write(const char* name, const char* bytes) { std::ofstream(root / name) << bytes; }
    void addTo(VX_GLFilterManager& manager) const {
        manager.AddResourcePath((root / "first").c_str());
        manager.AddResourcePath((root / "second").c_str());
    }

    const std::filesystem::path root = std::filesystem::path(testing::TempDir()) /
                                       testing::UnitTest::GetInstance()->current_test_info()->name();
};

/// Notes each call of the manager among the GL calls.
class NotingFilter : public VX_GLFilter {
public:
    NotingFilter(VX_GLFilterManager* manager, GLRecorder* recorder)
        : VX_GLFilter(manager), m_Recorder(recorder) {
        m_RenderTarget = new VX_GLRenderTarget;
    }
    const VX_GLShaderInformation* ShadersInformation() override {
        return noted("ShadersInformation", shaders);
    }
    const VX_GLGeometryShaderInformation* GeometryShadersInformation() override {
        return noted("GeometryShadersInformation", stages);
    }
    bool NeedFrameBuffer() override { return noted("NeedFrameBuffer", needsFrameBuffer); }
    int GetMinRTCount() override { return noted("GetMinRTCount", count); }
    bool IsRT2D() override {
        is2D = !is2D;
        return noted("IsRT2D", is2D);
    }
    unsigned int SetResolution(int width, int height) override {
        note("SetResolution " + std::to_string(width) + " " + std::to_string(height));
        return VX_GLFilter::SetResolution(width, height);
    }
    bool Setup() override { return noted("Setup", succeeds); }

    const VX_GLShaderInformation* shaders = nullptr;
    const VX_GLGeometryShaderInformation* stages = nullptr;
    bool needsFrameBuffer = true, is2D = false, succeeds = true;
    int count = 1;

private:
    template <class Value>
    Value noted(const char* line, Value value) {
        note(line);
        return value;
    }
    void note(const std::string& line) {
        if (m_Recorder)
            m_Recorder->note(line);
    }
    GLRecorder* m_Recorder;
};

// The lines that are the filter's, and of GL's those that name a texture's target or a program's part.
Lines outline(const Lines& lines) {
    Lines found;
    for (const std::string& line : lines) {
        if (!line.starts_with("gl") || line.starts_with("glFramebufferTexture2DEXT") ||
            line.starts_with("glCreate") || line.starts_with("glAttachShader") || line.starts_with("glLink"))
            found.push_back(line);
    }
    return found;
}

} // namespace

TEST(VX_GLFilterManager, SetsAFilterUpInAFixedOrder) {
    HeadlessContext gl(8, 8);
    ShaderFiles files;
    GLRecorder recorder;
    VX_GLFilterManager manager;
    files.addTo(manager);
    const VX_GLShaderInformation shaders[] = {
        {"pass.vert", "swap.frag"}, {"pass.vert", "swap2d.frag"}, {"pass.vert", nullptr}, {"none", "none"}};
    const VX_GLGeometryShaderInformation stages[] = {
        {"pass.vert", "swap.frag", "point.geom", GL_POINTS, GL_POINTS, 1},
        {"none", "none", nullptr, 0, 0, 0}};
    NotingFilter filter(&manager, &recorder);
    filter.shaders = shaders;
    filter.stages = stages;
    filter.count = 2;

    EXPECT_EQ(manager.SetupFilter(&filter, 16, 8, GL_RGBA8, GL_UNSIGNED_BYTE), &filter);
    ASSERT_EQ(filter.m_Programs.size(), 3u);
    const unsigned first = filter.m_Programs[0]->m_Program, second = filter.m_Programs[1]->m_Program,
                   third = filter.m_Programs[2]->m_Program;
    const unsigned vertex = manager.QueryVShader("pass.vert")->shader(),
                   swap = manager.QueryPShader("swap.frag")->shader(),
                   swap2D = manager.QueryPShader("swap2d.frag")->shader(),
                   point = manager.QueryGShader("point.geom")->shader();
    const auto attachment = [&](int index, GLenum target) {
        return call("glFramebufferTexture2DEXT", GL_FRAMEBUFFER_EXT, GL_COLOR_ATTACHMENT0_EXT + index, target,
                    filter.GetRTexture(index), 0);
    };
    EXPECT_EQ(outline(recorder.take()), (Lines{"NeedFrameBuffer",
                                               "SetResolution 16 8",
                                               "GetMinRTCount",
                                               "IsRT2D",
                                               attachment(0, GL_TEXTURE_2D),
                                               "IsRT2D",
                                               attachment(1, GL_TEXTURE_RECTANGLE_ARB),
                                               "ShadersInformation",
                                               call("glCreateShader", GL_VERTEX_SHADER),
                                               call("glCreateShader", GL_FRAGMENT_SHADER),
                                               call("glCreateProgram"),
                                               call("glAttachShader", first, vertex),
                                               call("glAttachShader", first, swap),
                                               call("glLinkProgram", first),
                                               call("glCreateShader", GL_FRAGMENT_SHADER),
                                               call("glCreateProgram"),
                                               call("glAttachShader", second, vertex),
                                               call("glAttachShader", second, swap2D),
                                               call("glLinkProgram", second),
                                               "GeometryShadersInformation",
                                               call("glCreateShader", GL_GEOMETRY_SHADER_EXT),
                                               call("glCreateProgram"),
                                               call("glAttachShader", third, vertex),
                                               call("glAttachShader", third, swap),
                                               call("glAttachShader", third, point),
                                               call("glLinkProgram", third),
                                               "Setup"}));

    NotingFilter other(&manager, &recorder); // all from the caches, and no render target
    other.shaders = shaders;
    other.needsFrameBuffer = other.succeeds = false;
    EXPECT_EQ(manager.SetupFilter(&other, 16, 8, GL_RGBA8, GL_UNSIGNED_BYTE), nullptr);
    EXPECT_EQ(other.m_Programs.size(), 2u);
    const Lines again = recorder.take();
    EXPECT_EQ(again.front(), "NeedFrameBuffer");
    EXPECT_EQ(again[1], "ShadersInformation");
    EXPECT_EQ(again.back(), "Setup");
    EXPECT_EQ(countOf(again, "glCreateShader"), 0);
}

TEST(VX_GLFilterManager, ReplacesBothSidesOfASizeThatIsNotOne) {
    HeadlessContext gl(8, 8);
    GLRecorder recorder;
    VX_GLFilterManager manager;
    NotingFilter filter(&manager, &recorder);
    filter.count = -1;
    const auto sizeGiven = [&](int width, int height) {
        EXPECT_EQ(manager.SetupFilter(&filter, width, height, GL_RGBA8, GL_UNSIGNED_BYTE), &filter);
        return recorder.take()[1];
    };
    EXPECT_EQ(sizeGiven(0, 600), "SetResolution 0 0");
    EXPECT_TRUE(manager.SetResolution(64, 32));
    EXPECT_EQ(sizeGiven(0, 600), "SetResolution 64 32");
    EXPECT_EQ(sizeGiven(600, -1), "SetResolution 64 32");
    EXPECT_EQ(sizeGiven(1, 1), "SetResolution 1 1");
    EXPECT_TRUE(filter.m_RenderTarget->m_Textures.empty());
}

TEST(VX_GLFilterManager, GoesOnWithoutShadersThatFail) {
    HeadlessContext gl(8, 8);
    ShaderFiles files;
    VX_GLFilterManager manager;
    files.addTo(manager);
    const VX_GLShaderInformation shaders[] = {{"broken.any", "broken.any"}, {"empty.vert", "swap.frag"}, {}};
    const VX_GLGeometryShaderInformation stages[] = {
        {"pass.vert", "swap.frag", "broken.any", GL_POINTS, GL_POINTS, 1}, {}};
    NotingFilter filter(&manager, nullptr);
    filter.shaders = shaders;
    filter.stages = stages;
    LogCollector log;
    testing::internal::CaptureStdout();
    EXPECT_EQ(manager.SetupFilter(&filter, 8, 8, GL_RGBA8, GL_UNSIGNED_BYTE), &filter);
    EXPECT_FALSE(testing::internal::GetCapturedStdout().empty());

    Lines own; // without the drivers' own words
    for (const std::string& line : log.lines)
        own.push_back(line.substr(0, line.find(" Failed: 0:")));
    const Lines expected{"VX_VertexShader::loadAndCompile", "Failed vshader: broken.any",
                         "VX_FragmentShader::loadAndCompile", "Failed pshader: broken.any",
                         "Can't open shader file: empty.vert"};
    ASSERT_GE(own.size(), expected.size());
    EXPECT_EQ(Lines(own.begin(), own.begin() + 5), expected);
    EXPECT_EQ(manager.QueryVShader("broken.any"), nullptr) << "to be tried again by the next filter";
    EXPECT_EQ(manager.QueryGShader("broken.any"), nullptr);
    ASSERT_FALSE(filter.m_Programs.empty());
    int attached = 0;
    glGetProgramiv(filter.m_Programs.back()->m_Program, GL_ATTACHED_SHADERS, &attached);
    EXPECT_EQ(attached, 2) << "the failed geometry shader is left out";
}

TEST(VX_GLFilterManager, OwnsTheFirstShaderUnderAName) {
    HeadlessContext gl(8, 8);
    GLRecorder recorder;
    unsigned kept, zero, fragment, point, dropped;
    {
        VX_GLFilterManager manager;
        VX_VertexShader* first = manager.CreateVShader(kVertex);
        VX_VertexShader* second = manager.CreateVShader(kVertex);
        VX_VertexShader* last = manager.CreateVShader(kVertex);
        manager.RegisterVShader("b", first);
        manager.RegisterVShader("b", second);
        manager.RegisterVShader("a", last);
        EXPECT_EQ(manager.QueryVShader("b"), first);
        EXPECT_EQ(manager.QueryPShader("b"), nullptr) << "a cache for each kind";
        manager.RegisterPShader("b", manager.CreatePShader(kSwap));
        manager.RegisterGShader("b", manager.CreateGShader(kGeometry));
        kept = first->shader();
        zero = last->shader();
        dropped = second->shader();
        fragment = manager.QueryPShader("b")->shader();
        point = manager.QueryGShader("b")->shader();
        delete second;
        EXPECT_EQ(recorder.take().back(), call("glDeleteShader", dropped));
    }
    EXPECT_EQ(recorder.take(), (Lines{call("glDeleteShader", zero), call("glDeleteShader", kept),
                                      call("glDeleteShader", fragment)}));
    EXPECT_TRUE(glIsShader(point)) << "geometry shaders stay behind";
}

TEST(VX_GLFilterManager, FindsFilesByOrderOfAdditionOrAlerts) {
    ShaderFiles files;
    VX_GLFilterManager manager;
    files.addTo(manager);
    EXPECT_EQ(manager.QueryShaderPath("pass.vert"), files.root.string() + "/first/pass.vert");
    EXPECT_EQ(manager.LoadShaderFileToString("swap.frag"), kSwap);
    std::ofstream(files.root / "second/nul.vert") << std::string("begin\0end", 9);
    EXPECT_EQ(manager.LoadShaderFileToString("nul.vert"), "begin");

    Lines shown;
    NSAlert::setPresenter([&](NSAlert* alert) {
        shown = {alert->messageText()->string(), alert->defaultButton()->string(),
                 alert->informativeText()->string()};
        EXPECT_TRUE(!alert->alternateButton() && !alert->otherButton());
        return 1;
    });
    const std::string absolute = (files.root / "first/pass.vert").string();
    EXPECT_EQ(manager.QueryShaderPath(absolute), "") << "put behind each directory like any other name";
    EXPECT_EQ(shown, (Lines{"Can't load shader", "OK", absolute}));
    EXPECT_EQ(VX_GLFilterManager().QueryShaderPath("100%s.vert"), "");
    EXPECT_EQ(shown.back(), "100%s.vert");
    NSAlert::setPresenter({});
}

TEST(VX_GLFilterManagerDeathTest, EndsWithAFileThatIsMissingOrNotUTF8) {
    ShaderFiles files;
    VX_GLFilterManager manager;
    files.addTo(manager);
    files.write("first/latin.vert", "// \xE9");
    NSAlert::setPresenter([](NSAlert* alert) {
        NSLog("alert: %@ %@", alert->messageText(), alert->informativeText());
        return 1;
    });
    EXPECT_DEATH(manager.LoadShaderFileToString("gone.vert"),
                 "alert: Can't load shader gone.vert\n.*LoadShaderFileToString: .*\"gone.vert\"");
    NSAlert::setPresenter([](NSAlert*) {
        NSLog("an alert for a file that is there");
        std::exit(0);
        return 1;
    });
    EXPECT_DEATH(manager.LoadShaderFileToString("latin.vert"), "LoadShaderFileToString: .*latin.vert");
    NSAlert::setPresenter({});
}

TEST(VX_GLFilter, PassesARectangleAndA2DTargetThroughItsShaders) {
    HeadlessContext gl(16, 8);
    ShaderFiles files;
    VX_GLFilterManager manager;
    files.addTo(manager);
    const VX_GLShaderInformation shaders[] = {{"pass.vert", "swap.frag"}, {}};
    NotingFilter filter(&manager, nullptr);
    filter.shaders = shaders;
    filter.is2D = true; // the first texture is then a rectangle texture, the second 2D
    filter.count = 2;
    ASSERT_EQ(manager.SetupFilter(&filter, 16, 8, GL_RGBA8, GL_UNSIGNED_BYTE), &filter);
    ASSERT_NE(manager.MakeProgramForFilter(&filter, kVertex, kSwap2D), nullptr);
    ASSERT_EQ(filter.m_Programs.size(), 2u);

    for (const int attachment : {0, 1}) {
        filter.Bind(attachment);
        clearTo(1, 0.6f, 0);
        clearTo(0, 0.2f, 1, 8, 0, 8, 8); // the right half
    }
    filter.Unbind();
    for (const int pass : {0, 1}) {
        glClearColor(0, 0, 0, 0);
        glClear(GL_COLOR_BUFFER_BIT);
        filter.m_RenderTarget->SetDefaultProjection();
        VX_Program* program = filter.m_Programs[std::size_t(pass)];
        program->activeProgram();
        program->set1i("source", 0);
        pass == 0 ? filter.DrawFullScreen(0) : filter.DrawFullScreen2D(1);
        program->deactiveProgram();
        for (const int x : {0, 6, 9, 15}) // 0.6 and 0.2 are whole steps of 255
            EXPECT_EQ(pixelAt(x, 5), x < 8 ? 0x0099FFFFu : 0xFF3300FFu) << "pass " << pass << " x " << x;
    }
    EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
}
