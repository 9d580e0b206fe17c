// SPDX-License-Identifier: MIT
#pragma once

// What nearly every test with a context needs.
#include <tests/support/HeadlessContext.h>
#include <tests/support/LogCollector.h>
#include <tests/support/Pixels.h>

#include <epoxy/gl.h>
#include <gtest/gtest.h>

using namespace vx::test;
