// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/host/VX_CheckGLExtensions.h>
#include <VX_Platform/Foundation/NSMutableArray.h>
#include <VX_Platform/Foundation/NSString.h>
#include <tests/support/CommaLocale.h>
#include <tests/support/GLTest.h>

#include <map>

namespace {

std::map<GLenum, const char*> s_Texts = {{GL_RENDERER, "Card"},
                                         {GL_VERSION, "2.1.2 of it"},
                                         {GL_SHADING_LANGUAGE_VERSION, "1.20"},
                                         {GL_EXTENSIONS, "GL_AB GL_A_long GL_B"}};

/// A driver with those texts, while it lives.
struct PlayedDriver {
    PlayedDriver() : former(epoxy_glGetString) {
        epoxy_glGetString = [](GLenum name) { return reinterpret_cast<const GLubyte*>(s_Texts[name]); };
    }
    ~PlayedDriver() { epoxy_glGetString = former; }
    const PFNGLGETSTRINGPROC former;
};

std::vector<std::string> textsOf(NSMutableArray* array) {
    std::vector<std::string> texts;
    for (NSObject* each : array->objects())
        texts.push_back(static_cast<NSString*>(each)->string());
    return texts;
}

/// Ends the process; well when what is masked is missing and leaves no error behind.
void tellMaskedDriver() {
    setenv("MESA_EXTENSION_OVERRIDE", "-GL_EXT_framebuffer_multisample -GL_ARB_framebuffer_object", 1);
    HeadlessContext gl(8, 8);
    VX_CheckGLExtensions check;
    glExtension table[] = {{"GL_EXT_framebuffer_blit", 0, false},
                           {"GL_EXT_framebuffer_multisample", 0, true}};
    check.CheckGLExtensions(2, table, nullptr);
    std::_Exit(table[0].Supported && !table[1].Supported && !check.m_MaxSamples && !glGetError() ? 0 : 1);
}

} // namespace

TEST(VX_CheckGLExtensions, LogsTheDriversNumbersInFourLines) {
    GTEST_FLAG_SET(death_test_style, "threadsafe"); // the driver reads its mask once in a process
    EXPECT_EXIT(tellMaskedDriver(), testing::ExitedWithCode(0),
                "SHADING_LANGUAGE_VERSION: 1[0-9]0.*GL_MAX_SAMPLES_EXT: 0.*GL_MAX_COLOR_ATTACHMENTS: [0-9]+");
    HeadlessContext gl(8, 8);
    LogCollector log;
    const int samples = stateOf(GL_MAX_SAMPLES_EXT)[0];
    EXPECT_EQ(VX_CheckGLExtensions().m_MaxSamples, samples);
    const auto text = [](GLenum name) { return reinterpret_cast<const char*>(glGetString(name)); };
    ASSERT_EQ(log.lines.size(), 4u);
    EXPECT_EQ(log.lines[0], std::string(text(GL_RENDERER)) + " " + text(GL_VERSION));
    EXPECT_EQ(log.lines[2], "GL_MAX_SAMPLES_EXT: " + std::to_string(samples));
    EXPECT_EQ(log.lines[3],
              "GL_MAX_COLOR_ATTACHMENTS: " + std::to_string(stateOf(GL_MAX_COLOR_ATTACHMENTS_EXT)[0]));
}

TEST(VX_CheckGLExtensions, ReadsNumbersAsInTheCLocale) {
    HeadlessContext gl(8, 8);
    LogCollector log;
    const CommaLocale locale;
    const struct {
        const char *version, *language;
        float readVersion;
        int readLanguage;
    } rows[] = {{"2.1 Mesa", "1.20", 2.1f, 120},
                {"2.1.2", "1.50 of somebody", 2.1f, 150},
                {"4.6 (Compatibility Profile)", "4.60", 4.6f, 460},
                {"4.2", " 4.20", 4.2f, 419},
                {"none", nullptr, 0, 0}};
    for (const auto& row : rows) {
        const PlayedDriver driver;
        s_Texts[GL_VERSION] = row.version;
        s_Texts[GL_SHADING_LANGUAGE_VERSION] = row.language;
        const VX_CheckGLExtensions check;
        EXPECT_EQ(check.m_GLVersion, row.readVersion);
        EXPECT_EQ(check.m_ShadingLanguageVersion, row.readLanguage);
        EXPECT_EQ(log.count("SHADING_LANGUAGE_VERSION: " + std::to_string(row.readLanguage)), 1);
    }
}

TEST(VX_CheckGLExtensions, ChecksATableOfWhatAHostRequires) {
    HeadlessContext gl(8, 8);
    LogCollector log;
    const PlayedDriver driver;
    s_Texts[GL_VERSION] = "2.1.2 of it";
    VX_CheckGLExtensions check;
    const struct {
        glExtension record;
        bool in21, in15;
    } rows[] = {{{"GL_A_long", 0, false}, true, true},
                {{"GL_B", 9, false}, true, true},
                {{"GL_C", 2.1f, false}, true, false},
                {{"GL_D", 2.2f, true}, false, false},
                {{"GL_A", 0, true}, false, false},
                {{"B", 0, true}, false, false},
                {{"GL_AB GL_A_long", 0, true}, false, false},
                {{"", 0, true}, false, false},
                {{nullptr, 2, false}, true, false},
                {{nullptr, 0, true}, false, false}};
    std::vector<glExtension> table;
    for (const auto& row : rows)
        table.push_back(row.record);
    const auto messages = NSInit(new NSMutableArray);
    for (const int count : {-1, 8, 10, 8}) {
        const bool isOld = count == 10;
        s_Texts[GL_VERSION] = isOld ? "1.5" : "2.1.2 of it";
        std::vector<std::string> expected = {isOld ? "Card 1.5" : "Card 2.1.2 of it"};
        EXPECT_FALSE(check.CheckGLExtensions(count, table.data(), messages.get()));
        for (int i = 0; i < (count < 0 ? 8 : count); ++i) {
            const auto& [record, in21, in15] = rows[i];
            EXPECT_EQ(table[std::size_t(i)].Supported, isOld ? in15 : in21) << i;
            if (!(isOld ? in15 : in21))
                expected.push_back(std::string(record.Name ? record.Name : "(null)") + " is not supported.");
        }
        EXPECT_EQ(textsOf(messages.get()), expected);
    }
    for (const auto& [count, first] : {std::pair(0, 3), {-1, 8}, {2, 0}, {3, 0}}) {
        EXPECT_TRUE(check.CheckGLExtensions(count, &table[std::size_t(first)], messages.get()));
        EXPECT_EQ(messages->count(), 1);
    }
    EXPECT_TRUE(check.CheckGLExtensions(-1, nullptr, nullptr));
}
