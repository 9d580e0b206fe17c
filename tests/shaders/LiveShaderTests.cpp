// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/shaders/VX_GLFilter.h>
#include <VX_OpenGL64/shaders/VX_GLFilterManager.h>
#include <VX_OpenGL64/shaders/VX_GeometryShader.h>
#include <VX_OpenGL64/shaders/VX_Program.h>
#include <tests/support/GLTest.h>
#include <tests/support/WaitFor.h>

#include <filesystem>
#include <fstream>

#include <unistd.h>

namespace {

const char* const kPlain =
    "attribute float side; void main() { gl_Position = vec4(gl_Vertex.xy, side, 1.0); }";

std::string painting(const std::string& color) {
    return "#version 120\nuniform vec4 tint[2];\nuniform float own = 1.0;\nvoid main() { gl_FragColor = " +
           color + "; }\n";
}

struct TwoRows : VX_GLFilter {
    TwoRows() : VX_GLFilter(nullptr) {}
    const VX_GLShaderInformation* ShadersInformation() override {
        static const VX_GLShaderInformation rows[] = {
            {"plain.vert", "first.frag"}, {"plain.vert", "second.frag"}, {nullptr, nullptr}};
        return rows;
    }
    bool NeedFrameBuffer() override { return false; }
};

/// A manager that watches a directory of its own, and a filter with a green and a red program.
struct LiveShaders : testing::Test {
    LiveShaders() {
        std::filesystem::create_directories(root);
        write("plain.vert", kPlain);
        write("first.frag", painting("tint[1] * own"));
        write("second.frag", painting("vec4(1, 0, 0, 1)"));
        manager.AddResourcePath((root / "later").c_str());
        manager.AddResourcePath(root.c_str());
        EXPECT_TRUE(manager.WatchShaderFiles(true));
    }
    ~LiveShaders() override { std::filesystem::remove_all(root); }

    void write(const std::string& name, std::string_view text) {
        std::ofstream(root / (name + ".new")) << text;
        std::filesystem::rename(root / (name + ".new"), root / name);
    }
    void setUp(VX_GLFilter& filter) { manager.SetupFilter(&filter, 8, 8, GL_RGBA8, GL_UNSIGNED_BYTE); }
    bool rebuilds() {
        return waitFor([this] { return manager.RebuildChangedPrograms(); });
    }
    /// What the program paints, as 0xRRGGBB.
    static unsigned paints(VX_Program* program) {
        program->activeProgram();
        glRectf(-1, -1, 1, 1);
        program->deactiveProgram();
        EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
        return pixelAt(4, 4) >> 8;
    }
    std::string failures() const {
        std::string all;
        for (const std::string& line : manager.RebuildFailures())
            all += line + "\n";
        return all;
    }

    HeadlessContext context{8, 8};
    const std::filesystem::path root =
        std::filesystem::path(testing::TempDir()) / ("vx_shaders_" + std::to_string(getpid()));
    VX_GLFilterManager manager;
    TwoRows filter;
};

} // namespace

TEST_F(LiveShaders, TakeAChangedTextIntoTheSameProgramWithWhatTheHostHasSet) {
    setUp(filter);
    VX_Program *const first = filter.m_Programs[0], *const second = filter.m_Programs[1];
    const float tint[] = {0, 0, 0, 0, 0, 1, 0, 1};
    first->activeProgram();
    first->set4fv("tint", 2, tint);
    first->deactiveProgram();
    EXPECT_EQ(paints(first), 0x00FF00u);
    EXPECT_FALSE(manager.RebuildChangedPrograms());

    const unsigned former = first->m_Program, other = second->m_Program;
    const int side = first->getAttribLocation("side");
    second->activeProgram();
    std::string text = painting("tint[1].grba * own");
    write("first.frag", text.replace(text.find("1.0"), 3, "0.6"));
    ASSERT_TRUE(rebuilds());
    GLint current = 0;
    glGetIntegerv(GL_CURRENT_PROGRAM, &current);
    EXPECT_EQ(unsigned(current), other) << "the host's stays";
    EXPECT_TRUE(filter.m_Programs[0] == first && first->m_Program != former && !glIsProgram(former));
    EXPECT_EQ(paints(first), 0x990000u) << "the tint was the host's, the factor is the new text's";
    EXPECT_EQ(second->m_Program, other) << "not of that file";

    std::string plain = kPlain;
    write("plain.vert", "attribute float more;" + plain.replace(plain.find("side,"), 4, "more + side"));
    ASSERT_TRUE(rebuilds());
    EXPECT_EQ(first->getAttribLocation("side"), side) << "where the host's meshes have it";
    EXPECT_NE(first->getAttribLocation("more"), -1);

    std::filesystem::create_directory(root / "later");
    write("later/first.frag", painting("vec4(0, 0, 1, 1)"));
    ASSERT_TRUE(rebuilds());
    EXPECT_EQ(paints(first), 0x0000FFu) << "of the directory that is searched first";
}

TEST_F(LiveShaders, KeepTheLastGoodProgramUntilAllThatItNeedsIsGoodAgain) {
    setUp(filter);
    VX_Program* const second = filter.m_Programs[1];
    for (const char* broken : {"void main() {\n    gl_FragColor = nonsense;\n}", "\xff\xfe", ""}) {
        write("second.frag", broken);
        ASSERT_TRUE(rebuilds());
        EXPECT_NE(failures().find("second.frag"), std::string::npos) << failures();
        EXPECT_EQ(paints(second), 0xFF0000u);
        TwoRows later;
        setUp(later);
        ASSERT_EQ(later.m_Programs.size(), 2u);
        EXPECT_EQ(paints(later.m_Programs[1]), 0xFF0000u) << "set up while the file was broken";
    }
    write("second.frag", "void main() {\n    gl_FragColor = nonsense;\n}");
    ASSERT_TRUE(rebuilds());
    EXPECT_NE(failures().find("second.frag:2: "), std::string::npos) << failures();
    EXPECT_NE(failures().find(" | gl_FragColor = nonsense;"), std::string::npos) << "the line is quoted";

    write("second.frag", "varying vec4 shade; void main() { gl_FragColor = shade; }");
    ASSERT_TRUE(rebuilds());
    EXPECT_NE(failures().find("plain.vert, second.frag do not link: "), std::string::npos) << failures();
    EXPECT_EQ(paints(second), 0xFF0000u);
    TwoRows meanwhile;
    setUp(meanwhile);
    EXPECT_EQ(meanwhile.m_Programs.size(), 2u) << "by the text that links";
    write("plain.vert",
          "varying vec4 shade; void main() { gl_Position = gl_Vertex; shade = vec4(0, 1, 1, 1); }");
    ASSERT_TRUE(rebuilds());
    EXPECT_EQ(failures(), "");
    EXPECT_EQ(paints(second), 0x00FFFFu);
    TwoRows later;
    setUp(later);
    EXPECT_EQ(paints(later.m_Programs[1]), 0x00FFFFu);
}

TEST_F(LiveShaders, GiveARowThatHadFailedItsPlace) {
    write("first.frag", "nonsense");
    setUp(filter);
    ASSERT_EQ(filter.m_Programs.size(), 2u) << "the first has its vertex shader alone";
    EXPECT_NE(failures().find("first.frag:1: "), std::string::npos);
    write("first.frag", "varying vec4 shade; void main() { gl_FragColor = shade; }");
    TwoRows unlinked;
    setUp(unlinked);
    ASSERT_EQ(unlinked.m_Programs.size(), 1u);
    VX_Program* const second = unlinked.m_Programs[0];
    {
        TwoRows ended;
        setUp(ended);
    }
    delete filter.m_Programs.back();
    filter.m_Programs.pop_back();
    rebuilds();
    write("second.frag", painting("vec4(1, 1, 0, 1)"));
    write("first.frag", painting("vec4(0, 0, 1, 1)"));
    EXPECT_TRUE(waitFor([&] { // they may come one after the other
        manager.RebuildChangedPrograms();
        return failures().empty() && paints(second) == 0xFFFF00u;
    }));
    EXPECT_EQ(filter.m_Programs.size(), 1u) << "what the host has taken away stays away";
    ASSERT_EQ(unlinked.m_Programs.size(), 2u);
    EXPECT_EQ(unlinked.m_Programs[1], second);
    EXPECT_EQ(paints(unlinked.m_Programs[0]), 0x0000FFu);
    EXPECT_EQ(paints(filter.m_Programs[0]), 0x0000FFu);
    EXPECT_EQ(failures(), "");
}
