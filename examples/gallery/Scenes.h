// SPDX-License-Identifier: MIT
#pragma once

#include <examples/gallery/Scene.h>

#include <span>
#include <string_view>

struct SceneEntry {
    const char* name;
    const char* title;
    Scene* (*make)();
    /// The second that its picture shows.
    double pictureTime;
    /// Whether a frame needs those before it.
    bool remembers = false;
    /// How many views it draws in windows beside the main one's.
    int sideViews = 0;
};

/// All scenes, in the order of the number keys.
std::span<const SceneEntry> scenes();
/// Its place in `scenes`, or -1.
int sceneNamed(std::string_view name);
