// SPDX-License-Identifier: MIT
#include <VX_Platform/drawing/TextLayout.h>

#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <string>
#include <thread>
#include <vector>

using namespace vx;

namespace {

TextLayout sans(std::string_view text, double size) {
    return {text, {"Sans"}, size};
}

} // namespace

TEST(TextLayout, WrapsAndCutsToTheRoomItHas) {
    TextLayout text = sans("one two three four five six seven " + std::string(30, 'w'), 20);
    const double line = text.size().height;
    text.wrapAt(150);
    EXPECT_LE(text.size().width, 150);
    EXPECT_GE(text.size().height, 4 * line - 2);
    text.limitHeight(2.5 * line);
    EXPECT_NEAR(text.size().height, 2 * line, 2);

    TextLayout single = sans("one\ntwo three four five six", 20);
    single.keepToOneLine(100, TextLayout::Ellipsis::middle);
    EXPECT_LE(single.size().width, 100);
    EXPECT_NEAR(single.size().height, line, 2);
}

TEST(TextLayout, SurvivesBrokenTextAndSizes) {
    EXPECT_GT(sans("a\xff\xc3z", 20).size().width, sans("az", 20).size().width);
    for (const double size : {std::nan(""), -5.0, 0.0, HUGE_VAL}) {
        TextLayout text = sans("x", size);
        text.wrapAt(size);
        text.limitHeight(size);
        EXPECT_GE(text.size().height, 1) << size;
    }
}

TEST(FontMap, ServesEachThreadAndKnowsWhatIsInstalled) {
    const double width = sans("Some words", 20).size().width;
    std::atomic<int> right{0};
    std::vector<std::jthread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([&, mine = &FontMap::current()] {
            for (int turn = 0; turn < 20; ++turn)
                right += &FontMap::current() != mine && sans("Some words", 20).size().width == width;
        });
    threads.clear();
    EXPECT_EQ(right, 80);

    EXPECT_FALSE(FontMap::hasFamily("No Such Family") || FontMap::hasFamily(""));
    const vx::FontFace heavy = FontMap::resolve("arial black", 400);
    EXPECT_TRUE(FontMap::hasFamily(heavy.family)) << heavy.family;
    EXPECT_GT(TextLayout("Heavy", heavy, 40).size().width, sans("Heavy", 40).size().width);
}
