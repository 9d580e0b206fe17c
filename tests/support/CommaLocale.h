// SPDX-License-Identifier: MIT
#pragma once

#include <clocale>
#include <cstdlib>
#include <filesystem>
#include <string>

#include <gtest/gtest.h>
#include <unistd.h>

namespace vx::test {

/// While it lives, the process has a locale whose numbers have a comma.
struct CommaLocale {
    CommaLocale() {
        const auto command = "mkdir " + folder + " && localedef -i de_DE -f UTF-8 " + folder + "/de_DE";
        EXPECT_EQ(std::system(command.c_str()), 0) << "localedef makes the locale";
        setenv("LOCPATH", folder.c_str(), 1);
        EXPECT_TRUE(std::setlocale(LC_ALL, "de_DE") && std::atof("1,5") == 1.5);
    }
    ~CommaLocale() {
        std::setlocale(LC_ALL, "C");
        std::filesystem::remove_all(folder);
    }
    const std::string folder = "/tmp/vx_locale_" + std::to_string(getpid());
};

} // namespace vx::test
