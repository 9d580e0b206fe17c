// SPDX-License-Identifier: MIT
#include <tests/support/ScriptedPipeline.h>

#include <gtest/gtest.h>

TEST(Placeholder, Placeholder) {}
