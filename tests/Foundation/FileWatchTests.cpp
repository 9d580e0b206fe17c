// SPDX-License-Identifier: MIT
#include <VX_Platform/Foundation/private/FileWatch.h>
#include <tests/support/WaitFor.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include <sys/stat.h>
#include <unistd.h>

using namespace vx::test;

TEST(FileWatch, TellsTheLatestTextHoweverItCameThere) {
    const std::filesystem::path root =
        std::filesystem::path(testing::TempDir()) / ("vx_watch_" + std::to_string(getpid()));
    std::filesystem::remove_all(root);
    std::filesystem::create_directories(root);
    const std::filesystem::path file = root / "text";
    const auto write = [&](std::string_view text) { std::ofstream(file) << text; };
    vx::FileWatch watch;
    const auto next = [&]() -> std::string {
        if (!waitFor([&] { return watch.hasNews(); }))
            return "nothing";
        const auto news = watch.takeNews().at("name");
        return news.path == file ? news.text.value_or("unreadable") : news.path;
    };
    mkfifo((root / "pipe").c_str(), 0600); // reading it would never end
    watch.follow("name", {root / "none", root / "pipe", file}, "first");
    write("first");
    write("second");
    EXPECT_EQ(next(), "second") << "changed before the first look";
    write("sec0nd");
    EXPECT_EQ(next(), "sec0nd") << "in the same second, no longer and no shorter";
    std::ofstream(root / "other") << "renamed";
    std::filesystem::rename(root / "other", file);
    EXPECT_EQ(next(), "renamed");
    write("\xff");
    EXPECT_EQ(next(), "unreadable");
    std::filesystem::remove_all(root);
    std::this_thread::sleep_for(std::chrono::milliseconds(250));
    EXPECT_FALSE(watch.hasNews()) << "a file that is gone keeps its text";
    std::filesystem::create_directories(root);
    write("back");
    EXPECT_EQ(next(), "back");

    int saves = 0;
    for (; saves < 400 && !watch.hasNews(); ++saves) { // a hundred a second
        write("save " + std::to_string(saves));
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    EXPECT_TRUE(saves > 20 && saves < 400) << saves << ": rests at first, but not for ever";
    const std::string last = "save " + std::to_string(saves - 1);
    EXPECT_TRUE(waitFor([&] {
        const auto news = watch.takeNews();
        return news.contains("name") && news.at("name").text == last;
    }));
    std::filesystem::remove_all(root);
}
