// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/host/VX_CheckGLExtensions.h>
#include <VX_Platform/Foundation/NSMutableArray.h>
#include <VX_Platform/Foundation/NSString.h>
#include <tests/support/CommaLocale.h>
#include <tests/support/GLTest.h>

#include <map>

namespace {

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
    const VX_CheckGLExtensions check;
    const auto number = [](GLenum name) { return ": " + std::to_string(stateOf(name)[0]); };
    EXPECT_EQ(log.lines.size(), 4u);
    EXPECT_EQ(log.count("GL_MAX_SAMPLES_EXT" + number(GL_MAX_SAMPLES_EXT)), 1);
    EXPECT_EQ(log.count("GL_MAX_COLOR_ATTACHMENTS" + number(GL_MAX_COLOR_ATTACHMENTS_EXT)), 1);
}

TEST(VX_CheckGLExtensions, ReadsNumbersInAnyLocaleAndChecksATableOfWhatAHostRequires) {
    HeadlessContext gl(8, 8);
    LogCollector log;
    const CommaLocale locale;
    static std::map<GLenum, const char*> texts = {{GL_RENDERER, "Card"},
                                                  {GL_EXTENSIONS, "GL_AB GL_A_long GL_B"}};
    const auto former = std::exchange(
        epoxy_glGetString, [](GLenum name) { return reinterpret_cast<const GLubyte*>(texts[name]); });
    const std::tuple<const char*, const char*, float, int> drivers[] = {
        {"2.1.2", "1.20", 2.1f, 120}, {" 4.6 (Core)", "4.60 of it", 4.6f, 460}, {"none", nullptr, 0, 0}};
    for (const auto& [version, language, readVersion, readLanguage] : drivers) {
        texts[GL_VERSION] = version;
        texts[GL_SHADING_LANGUAGE_VERSION] = language;
        const VX_CheckGLExtensions check;
        EXPECT_EQ(check.m_GLVersion, readVersion);
        EXPECT_EQ(check.m_ShadingLanguageVersion, readLanguage);
    }

    VX_CheckGLExtensions check;
    const auto messages = NSInit(new NSMutableArray);
    // The first two are there, the third in 2.1 alone; without a name the version counts. All start wrong.
    glExtension table[] = {
        {"GL_A_long", 0, false}, {"GL_B", 9, false}, {"GL_C", 2.1f, false},        {"GL_D", 2.2f, true},
        {"GL_A", 0, true},       {"B", 0, true},     {"GL_AB GL_A_long", 0, true}, {"", 0, true},
        {nullptr, 2, false},     {nullptr, 0, true}};
    const std::tuple<int, const char*, std::string> rows[] = {{-1, "2.1.2", "11100000"},
                                                              {10, "1.5", "1100000000"},
                                                              {10, "2.1", "1110000010"},
                                                              {3, "2.1", "111"},
                                                              {0, "2", ""}};
    for (const auto& [count, version, supported] : rows) {
        texts[GL_VERSION] = version;
        std::string expected = std::string("Card ") + version, found;
        EXPECT_EQ(check.CheckGLExtensions(count, table, messages.get()), count == 3 || count == 0);
        for (std::size_t i = 0; i < supported.size(); ++i) {
            EXPECT_EQ(table[i].Supported, supported[i] == '1') << i;
            if (supported[i] == '0')
                expected += std::string(table[i].Name ? table[i].Name : "(null)") + " is not supported.";
        }
        for (NSObject* each : messages->objects())
            found += static_cast<NSString*>(each)->string();
        EXPECT_EQ(found, expected);
    }
    EXPECT_TRUE(check.CheckGLExtensions(-1, nullptr, nullptr));
    epoxy_glGetString = former;
}
