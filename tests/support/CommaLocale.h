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
class CommaLocale {
public:
    CommaLocale() {
        const std::string command =
            "mkdir " + m_Folder + " && localedef -i de_DE -f UTF-8 " + m_Folder + "/de_DE";
        EXPECT_EQ(std::system(command.c_str()), 0) << "localedef makes the locale";
        setenv("LOCPATH", m_Folder.c_str(), 1);
        EXPECT_NE(std::setlocale(LC_ALL, "de_DE"), nullptr);
        EXPECT_EQ(std::atof("1,5"), 1.5);
    }
    ~CommaLocale() {
        std::setlocale(LC_ALL, "C");
        std::filesystem::remove_all(m_Folder);
    }
    CommaLocale(const CommaLocale&) = delete;
    CommaLocale& operator=(const CommaLocale&) = delete;

private:
    const std::string m_Folder = "/tmp/vx_locale_" + std::to_string(getpid());
};

} // namespace vx::test
